#pragma once

#include <memory>
#include <optional>

#include "app/tracking/OfficeWindow.h"
#include "core/TrackedApp.h"
#include "platform/Accessibility.h"

namespace pellar {

// The tracker's picture as the strip last took it over. What acts on its windows shares it, because menus,
// questions and scripts run nested loops in which the next picture replaces this one: nothing of it is held
// by reference across them. Main thread only.
struct TrackedPicture {
  std::optional<TrackedApp> app;
  WindowList windows;  // in tab order
  std::shared_ptr<OfficeWindow> front;

  // The window of a tab; null when there is none.
  [[nodiscard]] std::shared_ptr<OfficeWindow> window(WindowId id) const;
  // The record that stands for the same window now; null while it has no tab.
  [[nodiscard]] std::shared_ptr<OfficeWindow> present(const OfficeWindow& window) const;
};

}  // namespace pellar
