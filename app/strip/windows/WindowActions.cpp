#include "app/strip/windows/WindowActions.h"

#include <utility>

#include "app/strip/place/StripGeometry.h"
#include "app/tracking/AX.h"
#include "platform/MainLoop.h"
#include "platform/ScreenList.h"
#include "platform/Workspace.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// Within which a window that was zoomed answers, also on a busy system.
constexpr std::chrono::nanoseconds answerTime = 1s;

}  // namespace

WindowActions::WindowActions(const Platform& platform, std::shared_ptr<WindowTracker> tracker,
                             std::shared_ptr<const TrackedPicture> picture)
    : platform_(platform), tracker_(std::move(tracker)), picture_(picture), windows_(platform, picture) {}

void WindowActions::lookAgain() {
  tracker_->refresh();
}

void WindowActions::raise(const OfficeWindow& window) {
  auto& accessibility = platform_.accessibility;
  if (window.minimized) accessibility.set(window.element, "AXMinimized", false);
  accessibility.perform(window.element, "AXRaise");
  platform_.workspace.activate(window.pid);
  tracker_->scheduleRefresh();
}

void WindowActions::minimize(const OfficeWindow& window) {
  platform_.accessibility.set(window.element, "AXMinimized", true);
  tracker_->scheduleRefresh();
}

void WindowActions::close(const OfficeWindow& window) {
  if (AX::pressCloseButton(platform_.accessibility, window.element)) tracker_->scheduleRefresh();
}

void WindowActions::close(const WindowList& windows) {
  for (const auto& each : windows) AX::pressCloseButton(platform_.accessibility, each->element);
  tracker_->scheduleRefresh();
}

void WindowActions::zoom(OfficeWindow& window) {
  const AxRect area = StripGeometry::tileArea(window.frame, platform_.screens.screens());
  const auto stored = zoomed_.find(window.id());
  if (stored != zoomed_.end() && isZoomed(window, stored->second, area)) {
    const AxRect before = stored->second.before;
    zoomed_.erase(stored);
    tracker_->setFrame(window, before);
  } else {
    const AxRect before = window.frame;
    tracker_->setFrame(window, area);
    zoomed_.insert_or_assign(window.id(),
                             Zoomed{window.element, before, area, window.frame, platform_.mainLoop.uptime()});
  }
  tracker_->scheduleRefresh();
}

bool WindowActions::isZoomed(const OfficeWindow& window, const Zoomed& zoomed, const AxRect& area) {
  // A new window may come under the number of one that is gone.
  if (zoomed.window != window.element) return false;
  if (StripGeometry::fills(window.frame, area)) return true;
  // A window that grows in steps, as a terminal does, or only so far, fills the area as well as it can.
  if (zoomed.area != area || StripGeometry::fills(window.frame, zoomed.before)) return false;
  return StripGeometry::fills(window.frame, zoomed.after);
}

void WindowActions::pictureChanged() {
  for (const auto& window : picture_->windows) {
    const auto found = zoomed_.find(window->id());
    if (found == zoomed_.end() || found->second.window != window->element) continue;
    Zoomed& zoomed = found->second;
    if (platform_.mainLoop.uptime() - zoomed.at > answerTime) continue;
    // One that stands elsewhere was moved there.
    const AxRect grown = AxRect::of(window->frame.origin(), zoomed.area.size());
    if (StripGeometry::fills(grown, zoomed.area)) zoomed.after = window->frame;
  }
}

void WindowActions::tile(OfficeWindow& window, Tile tile) {
  const AxRect area = StripGeometry::tileArea(window.frame, platform_.screens.screens());
  tracker_->setFrame(window, tileFrame(tile, area));
  raise(window);
}

}  // namespace pellar
