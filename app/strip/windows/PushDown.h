#pragma once

#include <memory>
#include <optional>

#include "app/tracking/WindowTracker.h"
#include "core/Geometry.h"
#include "platform/Platform.h"

namespace pellar {

// Moves windows down that leave no room for the strip above them. Main thread only.
class PushDown {
 public:
  // What `platform` refers to outlives this.
  PushDown(const Platform& platform, std::shared_ptr<WindowTracker> tracker);

  // Makes room above a window, if need be, and then asks for a refresh. False when there is room already, and
  // when the window refuses to move: it keeps its size then and is asked again with the next report.
  bool ifNeeded(OfficeWindow& window);

 private:
  [[nodiscard]] bool refusedHere(const OfficeWindow& window) const;
  [[nodiscard]] bool moves(OfficeWindow& window, const AxRect& target);
  void giveBack(OfficeWindow& window, Size size);

  // A window that gave up height without moving, and where it stood.
  struct Refusal {
    Element window;
    AxPoint origin;
  };

  Platform platform_;
  std::shared_ptr<WindowTracker> tracker_;
  std::optional<Refusal> refusal_;  // the last one
};

}  // namespace pellar
