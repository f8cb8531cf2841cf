#include "platform/linux/x11/X11Density.h"

#include <xcb/randr.h>

#include <algorithm>
#include <utility>

#include "core/Log.h"
#include "platform/linux/x11/EventType.h"
#include "platform/linux/x11/X11Mirror.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/XcbReply.h"

namespace pellar {
namespace {

// The first event of RandR; absent when the server has no RandR.
std::optional<int> firstRandrEvent(const X11Connection& connection) {
  const auto* extension = xcb_get_extension_data(connection.xcb(), &xcb_randr_id);
  if (extension == nullptr || extension->present == 0) return std::nullopt;
  return extension->first_event;
}

std::string nameOf(const X11Connection& connection, xcb_get_atom_name_cookie_t cookie) {
  const XcbReply<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(connection.xcb(), cookie, nullptr));
  if (!reply) return {};
  return {xcb_get_atom_name_name(reply.get()),
          static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

// The monitors that show a part of the X screen, each with its name.
std::vector<X11Density::Monitor> shownMonitors(const X11Connection& connection, const RootRect& root) {
  std::vector<X11Density::Monitor> result;
  // Monitors came with 1.5.
  const XcbReply<xcb_randr_query_version_reply_t> version(xcb_randr_query_version_reply(
      connection.xcb(), xcb_randr_query_version(connection.xcb(), 1, 5), nullptr));
  if (!version || (version->major_version == 1 && version->minor_version < 5)) return result;
  const XcbReply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
      connection.xcb(), xcb_randr_get_monitors(connection.xcb(), connection.root(), 1), nullptr));
  if (!reply) return result;
  std::vector<xcb_get_atom_name_cookie_t> names;
  for (auto it = xcb_randr_get_monitors_monitors_iterator(reply.get()); it.rem > 0;
       xcb_randr_monitor_info_next(&it))
    names.push_back(xcb_get_atom_name(connection.xcb(), it.data->name));
  auto name = names.begin();
  for (auto it = xcb_randr_get_monitors_monitors_iterator(reply.get()); it.rem > 0;
       xcb_randr_monitor_info_next(&it)) {
    X11Density::Monitor monitor{nameOf(connection, *name++),
                                {static_cast<double>(it.data->x), static_cast<double>(it.data->y),
                                 static_cast<double>(it.data->width), static_cast<double>(it.data->height)}};
    // Monitors that show the same are one screen.
    const bool isKnown =
        std::ranges::find(result, monitor.pixels, &X11Density::Monitor::pixels) != result.end();
    if (monitor.pixels.intersects(root) && !isKnown) result.push_back(std::move(monitor));
  }
  return result;
}

}  // namespace

X11Density::X11Density(X11Connection& connection, X11Mirror& mirror)
    : connection_(connection), mirror_(mirror) {
  const auto firstEvent = firstRandrEvent(connection_);
  if (firstEvent) {
    xcb_randr_select_input(connection_.xcb(), connection_.root(),
                           XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE);
  }
  events_ = connection_.onEvent([this, firstEvent](const xcb_generic_event_t& event) {
    const int type = eventType(event);
    if (firstEvent &&
        (type == *firstEvent + XCB_RANDR_SCREEN_CHANGE_NOTIFY || type == *firstEvent + XCB_RANDR_NOTIFY)) {
      noteChange();
    } else if (type == XCB_CONFIGURE_NOTIFY) {
      const auto& notify = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
      if (notify.window == connection_.root()) noteChange();
    } else if (type == XCB_PROPERTY_NOTIFY) {
      const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
      if (notify.window == connection_.root() && notify.atom == XCB_ATOM_RESOURCE_MANAGER) noteChange();
    }
  });
}

void X11Density::noteChange() {
  stale_ = true;
  mirror_.noteScreensChanged();
}

X11Density::Reading X11Density::read(const X11Connection& connection) {
  constexpr std::uint32_t mostWords = 65536;
  const auto resources = xcb_get_property(connection.xcb(), 0, connection.root(), XCB_ATOM_RESOURCE_MANAGER,
                                          XCB_ATOM_STRING, 0, mostWords);
  const XcbReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
      connection.xcb(), xcb_get_geometry(connection.xcb(), connection.root()), nullptr));
  ScaleStatements statements = ScaleStatements::ofEnvironment();
  const auto stated = owned(xcb_get_property_reply(connection.xcb(), resources, nullptr));
  statements.resources = bytes(stated.get()).value_or(std::string());
  Reading reading;
  if (!geometry) return reading;
  reading.root = {0, 0, static_cast<double>(geometry->width), static_cast<double>(geometry->height)};
  if (firstRandrEvent(connection)) reading.monitors = shownMonitors(connection, reading.root);
  if (reading.monitors.empty()) reading.monitors.push_back({{}, reading.root});
  const DesktopScale scale(statements);
  for (std::size_t i = 0; i < reading.monitors.size(); ++i)
    reading.monitors[i].scale = scale.of(reading.monitors[i].name, i);
  reading.nonsense = scale.nonsense();
  return reading;
}

std::vector<X11Density::Monitor> X11Density::monitorsOf(const X11Connection& connection) {
  return read(connection).monitors;
}

void X11Density::update() const {
  if (!std::exchange(stale_, false)) return;
  auto reading = read(connection_);
  if (reading.nonsense && reading.nonsense != reading_.nonsense)
    Log::write("a setting of the desktop's scale is not understood and not used: " + *reading.nonsense);
  reading_ = std::move(reading);
  // Root coordinates are Accessibility coordinates, which begin at the first screen.
  std::stable_partition(reading_.monitors.begin(), reading_.monitors.end(),
                        [](const Monitor& each) { return each.pixels.x == 0 && each.pixels.y == 0; });
  std::vector<PointMap::Monitor> monitors;
  for (const Monitor& each : reading_.monitors) monitors.push_back({each.pixels, each.scale});
  map_ = PointMap(monitors);
}

const PointMap& X11Density::map() const {
  update();
  return map_;
}

RootRect X11Density::root() const {
  update();
  return reading_.root;
}

const MonitorMap& X11Density::ofPanel(const AxRect& frame) const {
  const PointMap& map = this->map();
  if (map.isUniform()) return map.monitors().front();
  if (const X11Window* active = mirror_.find(mirror_.activeWindow())) {
    const MonitorMap& theirs = map.holding(active->frame());
    if (theirs.toPoints(active->frame()).grown(1).intersects(frame)) return theirs;
  }
  return map.holding(frame);
}

}  // namespace pellar
