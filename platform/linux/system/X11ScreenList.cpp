#include "platform/linux/system/X11ScreenList.h"

#include "platform/linux/system/ReservedRoom.h"

namespace pellar {
std::vector<Screen> X11ScreenList::screens() const {
  update();
  return screens_;
}

void X11ScreenList::update() const {
  if (readVersion_ == mirror_.screensVersion()) return;
  readVersion_ = mirror_.screensVersion();
  monitors_.clear();
  screens_.clear();
  const auto& all = density_.map().monitors();
  const double height = all.front().points().height;
  const auto flipped = [height](const AxRect& rect) {
    return ScreenRect{rect.x, height - rect.maxY(), rect.width, rect.height};
  };
  for (const MonitorMap& each : all) {
    if (each.pixels().area() <= 0) continue;
    monitors_.push_back({each.pixels(), visible(each.pixels()), each.scale()});
    screens_.push_back({flipped(each.points()), flipped(each.toPoints(monitors_.back().visible))});
  }
}

std::optional<Screen> X11ScreenList::mainScreen() const {
  const auto all = screens();
  if (all.empty()) return std::nullopt;
  const Screen& first = all.front();
  const X11Window* active = mirror_.find(mirror_.activeWindow());
  if (active == nullptr) return first;
  const AxRect window = density_.map().toPoints(active->frame());
  const ScreenRect frame{window.x, first.frame.height - window.maxY(), window.width, window.height};
  const Screen* const most = screenHoldingMost(frame, all);
  return most != nullptr ? *most : first;
}

RootRect X11ScreenList::visible(const RootRect& monitor) const {
  const RootRect root = density_.root();
  RootRect area = monitor;
  for (const auto& [id, window] : mirror_.windows()) {
    if (!connection_.owns(id)) takeReservedRoom(area, window, monitor, root);
  }
  // One rectangle for all monitors says more than the windows do only when there is one monitor.
  if (monitor == root && mirror_.workArea()) {
    RootRect workArea = *mirror_.workArea();
    if (workArea.y > area.y && ownReserves_.contains(workArea.y)) {
      workArea.height += workArea.y - area.y;
      workArea.y = area.y;
    }
    if (const auto common = area.intersection(workArea)) area = *common;
  }
  return area;
}

}  // namespace pellar
