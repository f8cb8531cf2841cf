#include "app/strip/windows/PushDown.h"

#include <utility>

#include "app/strip/place/StripGeometry.h"
#include "app/tracking/AX.h"
#include "platform/EventMonitors.h"
#include "platform/ScreenList.h"

namespace pellar {

PushDown::PushDown(const Platform& platform, std::shared_ptr<WindowTracker> tracker)
    : platform_(platform), tracker_(std::move(tracker)) {}

void PushDown::ifNeeded(OfficeWindow& window) {
  const auto target = StripGeometry::pushedDown(window.frame, platform_.screens.screens());
  if (!target || waitsForRelease() || waitsForRest(window)) return;
  const Size size = window.frame.size();
  // A change of size is announced, and so brings the next report, which would ask again without an end. A
  // position that is refused is not.
  if (refusedHere(window) && !moves(window, *target)) return;
  tracker_->setFrame(window, *target);
  if (!StripGeometry::isBelow(window.frame, target->y)) {
    giveBack(window, size);
    return;
  }
  tracker_->scheduleRefresh();
}

bool PushDown::waitsForRelease() {
  if (!release_.active()) {
    release_ = platform_.eventMonitors.onceButtonsAreUp([this] {
      release_.cancel();
      tracker_->scheduleRefresh();
    });
  }
  return release_.active();
}

bool PushDown::waitsForRest(const OfficeWindow& window) {
  rest_ = platform_.accessibility.onceAtRest(window.element, [this] {
    rest_.cancel();
    tracker_->scheduleRefresh();
  });
  return rest_.active();
}

bool PushDown::refusedHere(const OfficeWindow& window) const {
  return refusal_ && refusal_->window == window.element && refusal_->origin == window.frame.origin();
}

bool PushDown::moves(OfficeWindow& window, const AxRect& target) {
  platform_.accessibility.set(window.element, "AXPosition", target.origin());
  if (const auto frame = AX::frame(platform_.accessibility, window.element)) window.frame = *frame;
  return StripGeometry::isBelow(window.frame, target.y);
}

void PushDown::giveBack(OfficeWindow& window, Size size) {
  if (window.frame.size() == size) return;
  tracker_->setFrame(window, AxRect::of(window.frame.origin(), size));
  refusal_ = Refusal{window.element, window.frame.origin()};
}

}  // namespace pellar
