#pragma once

#include <functional>
#include <string>

#include "platform/Menu.h"
#include "platform/Subscription.h"

namespace pellar {

// What stands in the menu bar for the program.
struct StatusItemLook {
  std::string imageName;   // a vector template image among the program's resources, which the system tints
  double imageHeight = 0;  // points; the width keeps its proportion
  std::string title;       // UTF-8; shown where there is no such image, or it cannot be read
};

// The system's menu bar, or what takes its place. Main thread only.
class StatusBar {
 public:
  virtual ~StatusBar() = default;

  // Puts an item there until the subscription is dropped. Each time its menu is about to open, `menu` is
  // asked what to show; the handler of what is chosen runs once the menu is closed. While it is open the main
  // loop runs, perhaps nested.
  [[nodiscard]] virtual Subscription addItem(const StatusItemLook& look, std::function<Menu()> menu) = 0;

  // Opens the menu of the item at the pointer, for a user who cannot get at the item. Returns at once or when
  // the menu is closed. Nothing happens without an item, and while the menu is open.
  virtual void openMenu() = 0;
};

}  // namespace pellar
