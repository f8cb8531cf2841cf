#pragma once

#include <memory>
#include <optional>

#include "app/tracking/WindowTracker.h"
#include "core/Geometry.h"
#include "platform/Platform.h"
#include "platform/Subscription.h"

namespace pellar {

// Moves windows down that leave no room for the strip above them. Main thread only.
class PushDown {
 public:
  // What `platform` refers to outlives this.
  PushDown(const Platform& platform, std::shared_ptr<WindowTracker> tracker);

  // Makes room above a window, if need be, and then asks for a refresh. Not when the window refuses to move:
  // it keeps its size then and is asked again with the next report; and not while a mouse button is held, for
  // the user may be moving it, or the system moves the window in several steps, of which it would take ours
  // for one: a refresh after that asks again.
  void ifNeeded(OfficeWindow& window);

 private:
  [[nodiscard]] bool waitsForRelease();
  [[nodiscard]] bool waitsForRest(const OfficeWindow& window);
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
  Subscription release_;            // of the mouse button, while one is waited for
  Subscription rest_;               // of the window that was to be moved last, while it is waited for
};

}  // namespace pellar
