#pragma once

#include <optional>

#include "core/Geometry.h"
#include "platform/ScreenList.h"

namespace pellar::Screens {

// The display that a panel beside `rect` belongs to: the one that holds most of it, the earlier of two that
// hold as much; for a rectangle on no display the one that holds its centre, else the main one. Absent only
// when there is no display at all.
[[nodiscard]] std::optional<Screen> containing(const ScreenRect& rect, const ScreenList& screens);

}  // namespace pellar::Screens
