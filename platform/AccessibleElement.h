#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/Geometry.h"

namespace pellar {

enum class AccessibleRole : std::uint8_t {
  group,
  tabGroup,
  tab,
  button,
  checkBox,
  searchField,  // the host's native field, whose text it knows
  list,         // the host's native list
  row,
  text
};

// What the user may have an element do.
enum class AccessibleAction : std::uint8_t { press, showMenu };

// One thing that a user sees in a view, as it is told to a user who cannot see it: a value, made from the
// view's state of this moment.
struct AccessibleElement {
  // Which one it is in its view: the same for as long as it stands for the same thing. Any bytes.
  std::string id = {};
  AccessibleRole role = AccessibleRole::group;
  // The word that the user sees, or what the sign in its place means. UTF-8 as read, possibly invalid.
  std::string name = {};
  std::string help = {};  // what more is to be said of it; empty for nothing
  ViewRect frame = {};    // where a click meets it; may lie outside of the view, out of sight
  std::optional<bool> selected = std::nullopt;  // absent where nothing can be
  std::optional<bool> checked = std::nullopt;   // absent where nothing can be
  bool focused = false;                         // it has the keys that are typed
  bool canBePressed = false;
  bool hasMenu = false;
  std::vector<AccessibleElement> children = {};  // in reading order
  friend bool operator==(const AccessibleElement&, const AccessibleElement&) = default;

  // The element of that id in here; null when there is none.
  [[nodiscard]] const AccessibleElement* find(const std::string& wanted) const {
    if (id == wanted) return this;
    for (const AccessibleElement& child : children)
      if (const auto* const found = child.find(wanted)) return found;
    return nullptr;
  }
};

}  // namespace pellar
