#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "tests/e2e/Desktop.h"
#include "tests/e2e/Process.h"

namespace pellar::e2e {

// The menus that Pellar has open, as somebody before the screen works them.
class PopUpMenu {
 public:
  PopUpMenu(Desktop& desktop, const Process& pellar) : desktop_(desktop), pellar_(pellar.pid()) {}

  // The open menus, a submenu after the one it hangs from.
  [[nodiscard]] std::vector<xcb_window_t> windows();
  // Returns when that many are on the screen and have the mouse and the keyboard, or none is and has.
  void waitUntilOpen(std::size_t count = 1);
  void waitUntilClosed() { waitUntilOpen(0); }
  [[nodiscard]] Box box(std::size_t index = 0);

  // Steps down to the item that is `place` below the top, counting only items that can be chosen; the first
  // is 1.
  void stepTo(int place);
  // The same and Return.
  void choose(int place);
  // Opens the submenu of that item, whose first item is then marked.
  void openSubmenu(int place);
  // Chooses an item of the last menu with the mouse.
  void click(int place);

  // The marked row of the last menu, in pixels of the root; absent while none is marked.
  [[nodiscard]] std::optional<Box> marked();

 private:
  Desktop& desktop_;
  pid_t pellar_;
};

}  // namespace pellar::e2e
