#pragma once

#include "platform/mac/MacPlatform.h"
#include "tests/contract/World.h"

namespace pellar::contract {

// The Mac that the tests run on, as far as it needs nobody in front of it: its ports and its run loop. It has
// no hands, since moving other applications' windows takes a permission that only a user can give.
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
  void movePointer(ScreenPoint point) override;
  void pressLeft(ScreenPoint point) override;
  void releaseLeft() override;
  void clickRight(ScreenPoint point) override;
  void clickMiddle(ScreenPoint point) override;
  void type(std::string_view text) override;
  void pressEscape() override;
  void press(Key key) override;
  void turnWheel(ScreenPoint point, int notches) override;
  void pressTab(const HeldKeys& held) override;
  int tabsReceived(WorldWindow window) override;
  void workNextMenu(std::optional<int> place) override;
  void answerNextQuestion(std::optional<std::string> text) override;
  std::string pasted() override;
  Color colorAt(ScreenPoint point) override;

 private:
  MacPlatform mac_;
  Platform platform_ = mac_.platform();
};

}  // namespace pellar::contract
