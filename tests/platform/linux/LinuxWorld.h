#pragma once

#include <map>
#include <memory>
#include <vector>

#include "platform/linux/LinuxPlatform.h"
#include "tests/contract/World.h"
#include "tests/platform/linux/SharedDesktop.h"

namespace pellar::contract {

// A real X server with a real window manager as a world of the contract tests. Other applications are
// processes.
class LinuxWorld final : public World {
 public:
  LinuxWorld();
  ~LinuxWorld() override;

  Platform& platform() override { return platform_; }
  bool wait(const std::function<bool()>& condition,
            std::chrono::milliseconds deadline = std::chrono::seconds(10)) override;

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
  [[nodiscard]] std::string pasted() override;
  [[nodiscard]] Color colorAt(ScreenPoint point) override;

  // What only a test of the X11 adapter asks for.
  [[nodiscard]] e2e::Desktop& desktop() { return desktop_; }
  [[nodiscard]] e2e::Application& application(ProcessId pid) { return *applications_.at(pid); }
  [[nodiscard]] e2e::Window window(WorldWindow window) const {
    return windows_.at(static_cast<std::size_t>(window)).window;
  }
  [[nodiscard]] X11Connection& connection() { return linux_->connection(); }
  [[nodiscard]] bool lost() const { return lost_; }

 private:
  struct Opened {
    ProcessId owner;
    e2e::Window window;
  };
  [[nodiscard]] const Opened& at(WorldWindow window) const {
    return windows_.at(static_cast<std::size_t>(window));
  }
  // A point of the screen as the server counts.
  [[nodiscard]] e2e::Box rootPoint(ScreenPoint point) const;
  void click(ScreenPoint point, int button);
  // Does that as soon as the window that the toolkit is busy with has the keyboard.
  void whenBusy(std::function<bool()> isBusy, std::function<void()> deed);

  e2e::Desktop& desktop_;
  bool lost_ = false;
  std::unique_ptr<LinuxPlatform> linux_;
  Platform platform_;
  std::map<ProcessId, std::unique_ptr<e2e::Application>> applications_;
  std::vector<Opened> windows_;
};

}  // namespace pellar::contract
