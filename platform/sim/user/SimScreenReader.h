#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/AccessibleElement.h"
#include "platform/Subscription.h"
#include "platform/sim/input/SimEventMonitors.h"
#include "platform/sim/panel/SimPanels.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

// A user who cannot see the panels: hears what they tell, and has things done by their names. An element is
// known by its name, or by its name behind those of what it is in: "Plan > Close".
class SimScreenReader {
 public:
  SimScreenReader(SimMainLoop& loop, SimPanels& panels, const SimEventMonitors& monitors)
      : loop_(loop), panels_(panels), monitors_(monitors) {}

  // Listens to changes from now on; and no longer.
  void start();
  void stop() { listening_.cancel(); }
  // What was told since the last call: "tab Plan selected", "+ tab Notes", "- group Recent files".
  [[nodiscard]] std::vector<std::string> heard();

  // What is there now, panel by panel, the one in front first: "tab Plan selected". With `in`, just what that
  // element holds.
  [[nodiscard]] std::vector<std::string> reads() const;
  [[nodiscard]] std::vector<std::string> reads(std::string_view in) const;
  // Throws when there is no such element, with what there is.
  [[nodiscard]] AccessibleElement element(std::string_view name) const;
  [[nodiscard]] bool finds(std::string_view name) const;

  // Each returns when the main loop is idle again. They throw like element(), and when nothing can be done.
  void press(std::string_view name) { perform(AccessibleAction::press, name); }
  void showMenu(std::string_view name) { perform(AccessibleAction::showMenu, name); }

 private:
  struct Found {
    SimPanel* panel = nullptr;
    AccessibleElement element;
  };

  // Everything, the panels' elements side by side.
  [[nodiscard]] AccessibleElement everything() const;
  [[nodiscard]] Found find(std::string_view name) const;
  void perform(AccessibleAction action, std::string_view name);
  void listen();

  SimMainLoop& loop_;
  SimPanels& panels_;
  const SimEventMonitors& monitors_;
  AccessibleElement told_;
  std::vector<std::string> heard_;
  Subscription listening_;
};

}  // namespace pellar
