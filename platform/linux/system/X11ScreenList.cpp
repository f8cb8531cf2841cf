#include "platform/linux/system/X11ScreenList.h"

#include <xcb/randr.h>

#include <algorithm>

namespace pellar {
namespace {

// What one edge reserves: how deep, and from where to where along the edge.
struct Reserve {
  double depth = 0;
  double first = 0;
  double last = 0;
};

struct Reserves {
  Reserve left;
  Reserve right;
  Reserve top;
  Reserve bottom;
};

std::optional<Reserves> reservesOf(const X11Window& window, const AxRect& root) {
  if (const auto& parts = window.strutPartial) {
    const auto at = [&parts](std::size_t index) { return static_cast<double>((*parts)[index]); };
    return Reserves{{at(0), at(4), at(5) + 1},
                    {at(1), at(6), at(7) + 1},
                    {at(2), at(8), at(9) + 1},
                    {at(3), at(10), at(11) + 1}};
  }
  if (const auto& edges = window.strut) {
    const auto at = [&edges](std::size_t index) { return static_cast<double>((*edges)[index]); };
    return Reserves{
        {at(0), 0, root.height}, {at(1), 0, root.height}, {at(2), 0, root.width}, {at(3), 0, root.width}};
  }
  return std::nullopt;
}

// Takes `band` away from one side of `area`, unless nothing of the monitor would be left: a panel between two
// monitors reserves the room of the whole monitor behind it.
void take(AxRect& area, const AxRect& monitor, const std::optional<AxRect>& band, bool vertical) {
  if (!band) return;
  if (vertical) {
    if (band->height >= monitor.height) return;
    const double top = band->y <= monitor.y ? std::max(area.y, band->maxY()) : area.y;
    const double bottom = band->y <= monitor.y ? area.maxY() : std::min(area.maxY(), band->y);
    area.y = top;
    area.height = std::max(0.0, bottom - top);
  } else {
    if (band->width >= monitor.width) return;
    const double left = band->x <= monitor.x ? std::max(area.x, band->maxX()) : area.x;
    const double right = band->x <= monitor.x ? area.maxX() : std::min(area.maxX(), band->x);
    area.x = left;
    area.width = std::max(0.0, right - left);
  }
}

}  // namespace

X11ScreenList::X11ScreenList(X11Connection& connection, X11Mirror& mirror, MainLoop& loop)
    : connection_(connection), mirror_(mirror), loop_(loop) {
  const auto* extension = xcb_get_extension_data(connection_.xcb(), &xcb_randr_id);
  if (extension == nullptr || extension->present == 0) return;
  const XcbReply<xcb_randr_query_version_reply_t> version(xcb_randr_query_version_reply(
      connection_.xcb(), xcb_randr_query_version(connection_.xcb(), 1, 5), nullptr));
  hasMonitors_ = version && (version->major_version > 1 || version->minor_version >= 5);
  xcb_randr_select_input(connection_.xcb(), connection_.root(),
                         XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE);
  events_ = connection_.onEvent([this, first = extension->first_event](const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7f;
    if (type == first + XCB_RANDR_SCREEN_CHANGE_NOTIFY || type == first + XCB_RANDR_NOTIFY) {
      mirror_.noteScreensChanged();
    }
  });
}

std::vector<Screen> X11ScreenList::screens() const {
  if (readVersion_ == mirror_.screensVersion()) return screens_;
  readVersion_ = mirror_.screensVersion();
  const XcbReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
      connection_.xcb(), xcb_get_geometry(connection_.xcb(), connection_.root()), nullptr));
  screens_.clear();
  if (!geometry) return screens_;
  const AxRect root{0, 0, static_cast<double>(geometry->width), static_cast<double>(geometry->height)};
  auto all = monitors(root);
  if (all.empty()) all.push_back(root);
  // Root coordinates are Accessibility coordinates, which begin at the first screen.
  std::stable_partition(all.begin(), all.end(),
                        [](const AxRect& each) { return each.x == 0 && each.y == 0; });
  const double height = all.front().height;
  const auto flipped = [height](const AxRect& rect) {
    return ScreenRect{rect.x, height - rect.maxY(), rect.width, rect.height};
  };
  for (const AxRect& monitor : all) screens_.push_back({flipped(monitor), flipped(visible(monitor, root))});
  return screens_;
}

std::optional<Screen> X11ScreenList::mainScreen() const {
  const auto all = screens();
  if (all.empty()) return std::nullopt;
  const Screen* best = &all.front();
  const X11Window* active = mirror_.find(mirror_.activeWindow());
  if (active == nullptr) return *best;
  const AxRect window = active->frame();
  const ScreenRect frame{window.x, best->frame.height - window.maxY(), window.width, window.height};
  double bestArea = 0;
  for (const Screen& screen : all) {
    const auto common = screen.frame.intersection(frame);
    if (!common || common->area() <= bestArea) continue;
    best = &screen;
    bestArea = common->area();
  }
  return *best;
}

std::vector<AxRect> X11ScreenList::monitors(const AxRect& root) const {
  std::vector<AxRect> result;
  if (!hasMonitors_) return result;
  const XcbReply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
      connection_.xcb(), xcb_randr_get_monitors(connection_.xcb(), connection_.root(), 1), nullptr));
  if (!reply) return result;
  for (auto it = xcb_randr_get_monitors_monitors_iterator(reply.get()); it.rem > 0;
       xcb_randr_monitor_info_next(&it)) {
    const AxRect monitor{static_cast<double>(it.data->x), static_cast<double>(it.data->y),
                         static_cast<double>(it.data->width), static_cast<double>(it.data->height)};
    // Monitors that show the same are one screen.
    if (monitor.intersects(root) && std::find(result.begin(), result.end(), monitor) == result.end()) {
      result.push_back(monitor);
    }
  }
  return result;
}

AxRect X11ScreenList::visible(const AxRect& monitor, const AxRect& root) const {
  AxRect area = monitor;
  for (const auto& [id, window] : mirror_.windows()) {
    const auto reserves = reservesOf(window, root);
    if (!reserves || connection_.owns(id)) continue;
    const auto& [left, right, top, bottom] = *reserves;
    const auto band = [&monitor](double x, double y, double width, double height) {
      return monitor.intersection({x, y, width, height});
    };
    take(area, monitor, band(0, left.first, left.depth, left.last - left.first), false);
    take(area, monitor, band(root.width - right.depth, right.first, right.depth, right.last - right.first),
         false);
    take(area, monitor, band(top.first, 0, top.last - top.first, top.depth), true);
    take(area, monitor,
         band(bottom.first, root.height - bottom.depth, bottom.last - bottom.first, bottom.depth), true);
  }
  // One rectangle for all monitors says more than the windows do only when there is one monitor.
  if (monitor == root && mirror_.workArea()) {
    AxRect workArea = *mirror_.workArea();
    if (workArea.y > area.y && ownReserves_.contains(workArea.y)) {
      workArea.height += workArea.y - area.y;
      workArea.y = area.y;
    }
    if (const auto common = area.intersection(workArea)) area = *common;
  }
  return area;
}

}  // namespace pellar
