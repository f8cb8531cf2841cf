#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/AccessibleElement.h"

namespace pellar {

// What an assistive technology is told when one description takes the place of another.
struct AccessibleChange {
  enum class Kind : std::uint8_t { vanished, appeared, name, help, selected, checked, focused };

  Kind kind = Kind::name;
  // From the whole to the element, without the whole: an id is one of its view, and a parent's is another.
  std::vector<std::string> path;
  // As it is now; as it was of one that vanished.
  AccessibleElement element;
};

// Those that vanished come before those that appeared, and both before what became of the rest. Nothing is
// said of what is inside an element that vanished or appeared, nor of places. Children that changed their
// order all vanish and appear.
[[nodiscard]] std::vector<AccessibleChange> accessibleChanges(const AccessibleElement& before,
                                                              const AccessibleElement& now);

}  // namespace pellar
