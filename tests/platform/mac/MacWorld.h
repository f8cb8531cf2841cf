#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Subscription.h"
#include "platform/mac/MacPlatform.h"
#include "tests/contract/World.h"
#include "tests/platform/mac/PostedEvents.h"
#include "tests/platform/mac/ProgramProcess.h"

namespace pellar::contract {

// The Mac that the tests run on: its ports and its run loop, the tests' own applications, and posted events
// for a user's hands. Other applications' windows and posted events take the Accessibility permission, which
// main.mm asks for before a test that needs it.
class MacWorld final : public World {
 public:
  Platform& platform() override { return platform_; }
  bool wait(const std::function<bool()>& condition, std::chrono::milliseconds deadline) override;

  ProcessId launch(const std::string& name) override;
  void terminate(ProcessId application) override;
  WorldWindow open(ProcessId application, const std::string& title, const AxRect& frame) override;
  void retitle(WorldWindow window, const std::string& title) override;
  void moveTo(WorldWindow window, AxPoint origin) override;
  void minimise(WorldWindow window) override;
  void restore(WorldWindow window) override;
  void destroy(WorldWindow window) override;
  void focus(WorldWindow window) override;
  void movePointer(ScreenPoint point) override { events_.movePointer(point); }
  void pressLeft(ScreenPoint point) override { events_.pressLeft(point); }
  void releaseLeft() override { events_.releaseLeft(); }
  void clickRight(ScreenPoint point) override { events_.clickRight(point); }
  void clickMiddle(ScreenPoint point) override { events_.clickMiddle(point); }
  void type(std::string_view text) override { events_.type(text); }
  void pressEscape() override;
  void press(Key key) override;
  void turnWheel(ScreenPoint point, int notches) override { events_.turnWheel(point, notches); }
  void pressTab(const HeldKeys& held) override;
  int tabsReceived(WorldWindow window) override;
  void workNextMenu(std::optional<int> place) override;
  void answerNextQuestion(std::optional<std::string> text) override;
  std::string pasted() override;
  Color colorAt(ScreenPoint point) override;

  // What only a Mac's applications do. One that starts cold answers nothing for so long, and is not waited
  // for.
  ProcessId launchCold(const std::string& name, std::chrono::seconds duration);
  // It answers nothing for so long.
  void hang(ProcessId application, int seconds);
  // It has this file, by its absolute path.
  void represent(WorldWindow window, const std::string& path);
  // Its document has changes that are not saved, which its File menu knows when it is looked at.
  void edit(WorldWindow window);
  // How often its File menu saved it.
  [[nodiscard]] int saves(WorldWindow window);

 private:
  void bringToFront(ProcessId application);
  std::string tell(WorldWindow window, const std::string& command, const std::string& rest = "");

  MacPlatform mac_;
  Platform platform_ = mac_.platform();
  PostedEvents events_;
  std::map<ProcessId, std::unique_ptr<ProgramProcess>> programs_;
  std::vector<ProcessId> owners_;  // of the windows, by their numbers
  Subscription deed_;              // what the user does next; first to go
};

}  // namespace pellar::contract
