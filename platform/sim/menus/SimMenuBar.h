#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/sim/faults/SimQuirks.h"

namespace pellar {

// What a test says of one item of an application's menu.
struct SimMenuItem {
  std::string title;
  std::function<void()> onPress = {};  // what the application does
  bool enabled = true;
  std::vector<SimMenuItem> submenu = {};  // an item with one only opens it
};

// One menu of the menu bar.
struct SimMenuTitle {
  std::string title;
  std::vector<SimMenuItem> items;
};

struct SimMenuElement;
using SimMenuPointer = std::shared_ptr<SimMenuElement>;

// One object of a simulated menu bar, which holds titles; each of these holds its menu, and that the items,
// of which some hold a submenu in the same way.
struct SimMenuElement {
  enum class Role : std::uint8_t { bar, title, menu, item };

  Role role = Role::item;
  std::uint64_t serial = 0;
  ProcessId pid = 0;
  std::optional<std::string> title;  // the bar and the menus have none
  bool enabled = true;               // whether a press does anything
  bool validated = true;             // as of the last validation
  std::vector<SimMenuPointer> children;
  std::function<void()> onPress;
  int presses = 0;  // how often it was pressed, with or without success
  bool exists = true;

  // Quirks.
  NameSet refusedAttributes;   // reads of these are absent
  NameSet mistypedAttributes;  // reads of these give a value of another type
  bool refusesPress = false;   // the action reports an error
  // The action is done, and reported as not complete once the time-out is over: AXUIElement.h, "accessible
  // applications often need to perform some sort of modal processing inside their action callbacks".
  bool unansweredPress = false;

  // Whether there are items below it, which a press shows.
  [[nodiscard]] bool opensMenu() const {
    return role == Role::title || (role == Role::item && !children.empty());
  }
  // The object titled so among the children, or among those of its menu; throws when there is none.
  [[nodiscard]] SimMenuElement& child(std::string_view named) const;
};

// A menu bar whose objects take their serials from `nextSerial`.
SimMenuPointer makeSimMenuBar(ProcessId pid, const std::vector<SimMenuTitle>& titles,
                              std::uint64_t& nextSerial);

// What happens to everything in a menu when it opens: each item is enabled or disabled as it should be.
void validate(SimMenuElement& element);

// Takes a menu bar and everything in it away; elements of it that are still held become dead.
void dismantle(SimMenuElement& element);

}  // namespace pellar
