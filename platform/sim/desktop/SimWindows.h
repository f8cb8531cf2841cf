#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Windows.h"
#include "platform/sim/applications/SimDesktop.h"
#include "platform/sim/desktop/SimPlainWindow.h"
#include "platform/sim/panel/SimPanels.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

// Every ordinary window of the program, and which of them has the keyboard. When the last one closes, this
// program stays the frontmost application all the same, as a real one without a Dock icon does
// (github.com/duqaXxX/seedeep/pull/20, where -deactivate did nothing): no window receives the keys until the
// user clicks or another application is activated.
class SimWindows final : public Windows {
 public:
  SimWindows(SimMainLoop& loop, SimDesktop& desktop, SimPanels& panels)
      : loop_(loop), desktop_(desktop), panels_(panels) {}

  [[nodiscard]] std::unique_ptr<PlainWindow> makeWindow(const WindowDescription& description) override;

  // The titles of the windows on the screen, in the order they were made.
  [[nodiscard]] std::vector<std::string> visible() const;
  // Whether there is such a window, on the screen or not.
  [[nodiscard]] bool exists(const std::string& title) const;
  // The window of that title, on the screen or not. Throws when there is none.
  [[nodiscard]] SimPlainWindow& titled(const std::string& title) const;
  // The window that receives the keys; null while another application is in front.
  [[nodiscard]] SimPlainWindow* key() const;
  // How many windows were made so far.
  [[nodiscard]] int made() const { return made_; }
  // How often the program closed one, also one that was not on the screen.
  [[nodiscard]] int closed() const { return closed_; }

  // For SimPlainWindow.
  void join(SimPlainWindow& window) { all_.push_back(&window); }
  void leave(SimPlainWindow& window);
  void makeKey(SimPlainWindow& window);
  void resignKey(SimPlainWindow& window);
  void noteClosing() { ++closed_; }
  [[nodiscard]] SimMainLoop& loop() const { return loop_; }
  [[nodiscard]] bool hidden() const { return desktop_.pellarHidden(); }

 private:
  SimMainLoop& loop_;
  SimDesktop& desktop_;
  SimPanels& panels_;
  std::vector<SimPlainWindow*> all_;
  SimPlainWindow* key_ = nullptr;
  int made_ = 0;
  int closed_ = 0;
};

}  // namespace pellar
