#pragma once

#include <optional>
#include <span>
#include <string>

#include "app/strip/tabs/StripLayout.h"
#include "app/strip/tabs/TabItem.h"
#include "platform/AccessibleElement.h"

namespace pellar {

// What a strip shows at one moment, for assistive technologies. `tabs` are as many as the layout has.
[[nodiscard]] AccessibleElement describeStrip(const StripLayout& layout, std::span<const TabItem> tabs,
                                              bool autoSaveOn);

// What a click on one of its elements meets, and where.
struct StripTarget {
  StripHit hit;
  ViewRect frame;
};
// Absent for an id that is not on this strip, or that a click does nothing to. The search field is the search
// tool in another shape.
[[nodiscard]] std::optional<StripTarget> stripTarget(const std::string& id, const StripLayout& layout,
                                                     std::span<const TabItem> tabs);

}  // namespace pellar
