#pragma once

#include <optional>
#include <string>

#include "platform/Accessibility.h"
#include "platform/Canvas.h"

namespace pellar {

// One tab as drawn.
struct TabItem {
  WindowId id = 0;           // what every callback reports
  std::string label;         // UTF-8 as read, possibly invalid
  std::optional<Color> tag;  // bar under the label; absent means untagged
  bool active = false;       // the focused window's tab
  friend bool operator==(const TabItem&, const TabItem&) = default;
};

}  // namespace pellar
