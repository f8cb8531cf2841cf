#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/Canvas.h"

namespace pellar {

// A menu item that runs a closure.
struct ClosureItem {
  std::string title;              // UTF-8, shown as it is: an ampersand or an underscore marks no key
  std::function<void()> handler;  // empty does nothing
  bool enabled = true;
  bool checked = false;
  std::optional<Color> swatch = std::nullopt;  // a filled circle of 12 x 12 points before the title
  bool prominent = false;                      // the title is bold and in the accent colour
};

struct MenuSeparator {};

struct Submenu;

using MenuItem = std::variant<ClosureItem, MenuSeparator, Submenu>;

// The items of a menu, top to bottom. A value: built anew each time it is shown.
using Menu = std::vector<MenuItem>;

struct Submenu {
  std::string title;
  Menu items;
};

}  // namespace pellar
