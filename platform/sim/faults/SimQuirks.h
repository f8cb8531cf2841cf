#pragma once

#include <chrono>
#include <functional>
#include <limits>
#include <optional>
#include <set>
#include <string>

#include "core/Geometry.h"

namespace pellar {

using NameSet = std::set<std::string, std::less<>>;

// How one simulated window differs from a well-behaved one.
struct SimWindowQuirks {
  NameSet refusedAttributes;   // reads of these are absent
  NameSet mistypedAttributes;  // reads of these give a value of another type
  bool refusesMoves = false;   // writes of "AXPosition" change nothing
  bool refusesSizes = false;   // writes of "AXSize" change nothing
  bool refusesMinimise = false;
  bool asksBeforeClosing = false;  // a press of the close button leaves the window open
  bool hasCloseButton = true;
  bool listedTwice = false;  // "AXWindows" names it two times
  Size minimumSize{1, 1};
  Size maximumSize{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
  Size sizeIncrement{0, 0};                 // sizes are the minimum plus a multiple of this; 0 takes any
  std::optional<AxRect> confinedTo;         // its top left corner stays in here
  std::chrono::milliseconds frameDelay{0};  // how long after a write the frame changes
};

// What a program that is still launching refuses: the observer itself, each registration with it, or reads as
// well (kAXErrorCannotComplete: github.com/pilyang/vim-action/issues/71, three of three cold starts;
// github.com/typester/yashiki/issues/180, one retry was not enough).
enum class SimRefusal { nothing, observers, registrations, everything };

// How one simulated application differs from a well-behaved one.
struct SimApplicationQuirks {
  SimRefusal refuses = SimRefusal::nothing;
  NameSet refusedNotifications;
  // It never tells these. Some programs never say that a window of theirs has gone
  // (github.com/Hammerspoon/hammerspoon/issues/3753, github.com/nikitabobko/AeroSpace/issues/1615,
  // github.com/ejbills/DockDoor/issues/1455).
  NameSet untoldNotifications;
  bool listsWindowsByCreation = false;  // "AXWindows" in order of creation, not front to back
  bool namesNoFocusedWindow = false;    // "AXFocusedWindow" is absent
  // A window made the main one by hand does not get the keys with it, so it is not the focused one
  // (AXAttributeConstants.h, kAXMainAttribute: "Main does not necessarily imply that the window has key
  // focus").
  bool mainIsNotKey = false;
  std::chrono::milliseconds answerTime{0};  // what each round trip to it takes
  bool hung = false;                        // answers nothing until it is resumed
  // The items of its menus say whether they are enabled as of when the user last opened the menu: macOS
  // validates them only then, and a closed menu gives what was left behind (MongLong0214/logic-pro-mcp#941,
  // #921). Not so of every program, so the others validate when they are asked.
  bool validatesOpenMenusOnly = false;
};

}  // namespace pellar
