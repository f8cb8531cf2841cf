#include "platform/linux/x11/X11Mirror.h"

#include <algorithm>
#include <array>

#include "core/Log.h"
#include "platform/linux/x11/EventType.h"

namespace pellar {
namespace {

// What tells whose a window is, rather than what it shows.
bool identifies(X11Property property) {
  return property == X11Property::wmClass || property == X11Property::clientMachine ||
         property == X11Property::pid || property == X11Property::transientFor;
}

bool reservesRoom(X11Property property) {
  return property == X11Property::strut || property == X11Property::strutPartial;
}

bool sameToTheUser(const X11Window& a, const X11Window& b) {
  return a.title() == b.title() && a.frame() == b.frame() && a.iconic == b.iconic && a.hidden == b.hidden &&
         a.desktop == b.desktop && a.fullscreen == b.fullscreen &&
         a.maximizedVertically == b.maximizedVertically &&
         a.maximizedHorizontally == b.maximizedHorizontally && a.standard() == b.standard() &&
         a.kind == b.kind && a.transientFor == b.transientFor && a.group == b.group;
}

}  // namespace

X11Mirror::X11Mirror(X11Connection& connection)
    : connection_(connection),
      loader_(connection),
      events_(connection.onEvent([this](const xcb_generic_event_t& event) { handle(event); })) {
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_.xcb(), connection_.root(), XCB_CW_EVENT_MASK, &events);
  readStale();
}

void X11Mirror::noteScreensChanged() {
  changes_.screens = true;
  ++screensVersion_;
}

const X11Window* X11Mirror::find(xcb_window_t id) const {
  const auto found = windows_.find(id);
  return found == windows_.end() ? nullptr : &found->second;
}

std::uint32_t X11Mirror::makerOf(xcb_window_t id) const {
  return id & ~xcb_get_setup(connection_.xcb())->resource_id_mask;
}

bool X11Mirror::isOnShownDesktop(const X11Window& window) const {
  return !currentDesktop_ || !window.desktop || window.desktop == everyDesktop ||
         window.desktop == currentDesktop_;
}

bool X11Mirror::isMinimized(const X11Window& window) const {
  return window.hidden || (window.iconic && isOnShownDesktop(window));
}

void X11Mirror::handle(const xcb_generic_event_t& event) {
  switch (eventType(event)) {
    case XCB_CONFIGURE_NOTIFY:
      handleConfigure(reinterpret_cast<const xcb_configure_notify_event_t&>(event));
      break;
    case XCB_PROPERTY_NOTIFY:
      handleProperty(reinterpret_cast<const xcb_property_notify_event_t&>(event));
      break;
    case XCB_REPARENT_NOTIFY: {
      const auto& notify = reinterpret_cast<const xcb_reparent_notify_event_t&>(event);
      const auto [first, last] = owners_.equal_range(notify.window);
      for (auto owner = first; owner != last; ++owner) staleLinks_.insert(owner->second);
      break;
    }
    case XCB_UNMAP_NOTIFY:
      // Its program took it from the screen while no window manager looked after it.
      if (leftBehind_.contains(reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window))
        rootStale_ = true;
      break;
    case XCB_DESTROY_NOTIFY: {
      const auto& notify = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
      const auto [first, last] = owners_.equal_range(notify.window);
      for (auto owner = first; owner != last; ++owner) {
        if (owner->second != notify.window) staleLinks_.insert(owner->second);
      }
      forget(notify.window);
      break;
    }
    default:
      break;
  }
}

void X11Mirror::handleConfigure(const xcb_configure_notify_event_t& event) {
  const auto own = windows_.find(event.window);
  if (own != windows_.end()) ++own->second.placeReports;
  // A window manager's own report speaks of the root's coordinates; the links already say the same.
  if (isSynthetic(event)) return;
  const X11Geometry geometry{event.x, event.y, event.width, event.height, event.border_width};
  const auto [first, last] = owners_.equal_range(event.window);
  for (auto owner = first; owner != last; ++owner) {
    const auto found = windows_.find(owner->second);
    if (found == windows_.end()) continue;
    for (auto& link : found->second.links) {
      if (link.id != event.window || link.geometry == geometry) continue;
      const RootRect before = found->second.frame();
      link.geometry = geometry;
      if (!(found->second.frame() == before)) changes_.windows.insert(found->first);
    }
  }
}

void X11Mirror::handleProperty(const xcb_property_notify_event_t& event) {
  const X11Atoms& atoms = connection_.atoms();
  if (event.window == connection_.root()) {
    rootStale_ = rootStale_ || event.atom == atoms.netClientList || event.atom == atoms.netActiveWindow ||
                 event.atom == atoms.netCurrentDesktop || event.atom == atoms.netWorkArea ||
                 event.atom == atoms.netSupportingWmCheck;
    return;
  }
  if (!windows_.contains(event.window)) return;
  if (const auto property = x11PropertyOf(event.atom, atoms))
    staleProperties_.emplace(event.window, *property);
}

bool X11Mirror::isStale() const {
  return rootStale_ || !staleProperties_.empty() || !staleLinks_.empty();
}

bool X11Mirror::readStale() {
  if (!isStale()) return false;
  readProperties();
  readLinks();
  if (std::exchange(rootStale_, false)) readRoot();
  return true;
}

void X11Mirror::readProperties() {
  const auto stale = std::exchange(staleProperties_, {});
  std::vector<xcb_get_property_cookie_t> cookies;
  cookies.reserve(stale.size());
  for (const auto& [id, property] : stale) cookies.push_back(requestX11Property(connection_, id, property));
  auto cookie = cookies.begin();
  for (const auto& [id, property] : stale) {
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_.xcb(), *cookie++, nullptr));
    const auto found = windows_.find(id);
    // No reply at all: the window is gone and keeps what was last known of it until it is forgotten.
    if (!reply || found == windows_.end()) continue;
    const X11Window before = found->second;
    applyX11Property(found->second, property, reply.get(), connection_.atoms());
    if (property == X11Property::transientFor)
      found->second.heldBelow = found->second.transientFor && before.calledNormal && before.standard();
    if (!sameToTheUser(before, found->second)) changes_.windows.insert(id);
    if (identifies(property)) changes_.membership = true;
    if (reservesRoom(property)) noteScreensChanged();
  }
}

void X11Mirror::readLinks() {
  const auto stale = std::exchange(staleLinks_, {});
  std::vector<X11Window*> windows;
  for (const xcb_window_t id : stale) {
    const auto found = windows_.find(id);
    if (found == windows_.end()) continue;
    unlink(found->second);
    windows.push_back(&found->second);
  }
  if (windows.empty()) return;
  loader_.loadLinks(windows);
  for (X11Window* window : windows) {
    const xcb_window_t id = window->id;
    changes_.windows.insert(id);
    if (window->links.empty()) {
      forget(id);
    } else {
      link(*window);
    }
  }
}

void X11Mirror::readRoot() {
  const X11Atoms& atoms = connection_.atoms();
  const std::array names{atoms.netClientList, atoms.netActiveWindow, atoms.netCurrentDesktop,
                         atoms.netWorkArea, atoms.netSupportingWmCheck};
  std::array<xcb_get_property_cookie_t, names.size()> cookies{};
  std::ranges::transform(names, cookies.begin(), [this](xcb_atom_t name) {
    return xcb_get_property(connection_.xcb(), 0, connection_.root(), name, XCB_GET_PROPERTY_TYPE_ANY, 0,
                            65536);
  });
  std::array<std::vector<std::uint32_t>, names.size()> values;
  std::ranges::transform(cookies, values.begin(), [this](xcb_get_property_cookie_t cookie) {
    return numbers(owned(xcb_get_property_reply(connection_.xcb(), cookie, nullptr)).get());
  });
  const auto& [clients, activeWindows, desktops, workAreas, windowManagers] = values;
  std::vector<xcb_window_t> listed;
  std::unordered_set<xcb_window_t> seen;
  for (const std::uint32_t id : clients) {
    if (id != XCB_WINDOW_NONE && seen.insert(id).second) listed.push_back(id);
  }
  // Some window managers add a second number; only the first is the window. The root stands for none.
  xcb_window_t active = activeWindows.empty() ? 0 : activeWindows.front();
  if (active == connection_.root()) active = XCB_WINDOW_NONE;
  if (active != activeWindow_) changes_.activeWindow = true;
  if (listed != listed_) changes_.membership = true;
  listed_ = std::move(listed);
  activeWindow_ = active;
  const xcb_window_t check = windowManagers.empty() ? 0 : windowManagers.front();
  const bool hasWindowManager = check != XCB_WINDOW_NONE && (check == check_ || isWindowManager(check));
  check_ = hasWindowManager ? check : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
  if (!hasWindowManager && std::exchange(hadWindowManager_, false)) {
    Log::write("no window manager says which windows there are (_NET_CLIENT_LIST): no tabs until one does");
  }
  hadWindowManager_ = hadWindowManager_ || hasWindowManager;
  const auto desktop = desktops.empty() ? std::nullopt : std::optional(desktops.front());
  if (desktop != currentDesktop_) changes_.desktop = true;
  currentDesktop_ = desktop;
  std::optional<RootRect> area;
  const std::size_t start = std::size_t{currentDesktop_.value_or(0)} * 4;
  if (workAreas.size() >= start + 4) {
    area = RootRect{static_cast<double>(static_cast<std::int32_t>(workAreas[start])),
                    static_cast<double>(static_cast<std::int32_t>(workAreas[start + 1])),
                    static_cast<double>(workAreas[start + 2]), static_cast<double>(workAreas[start + 3])};
  }
  if (area != workArea_) noteScreensChanged();
  workArea_ = area;
  reconcile();
}

// One that ended without a word leaves the property behind; its window is gone.
bool X11Mirror::isWindowManager(xcb_window_t check) const {
  const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      connection_.xcb(),
      xcb_get_property(connection_.xcb(), 0, check, connection_.atoms().netSupportingWmCheck,
                       XCB_GET_PROPERTY_TYPE_ANY, 0, 1),
      nullptr));
  return numbers(reply.get()) == std::vector<std::uint32_t>{check};
}

void X11Mirror::reconcile() {
  std::unordered_set<xcb_window_t> wanted(listed_.begin(), listed_.end());
  std::vector<xcb_window_t> missing;
  for (const xcb_window_t id : listed_) {
    if (!windows_.contains(id)) missing.push_back(id);
  }
  // A window manager may activate a window before it lists it.
  if (activeWindow_ != XCB_WINDOW_NONE && wanted.insert(activeWindow_).second &&
      !windows_.contains(activeWindow_)) {
    missing.push_back(activeWindow_);
  }
  std::vector<xcb_window_t> leaving;
  for (const auto& [id, window] : windows_) {
    if (!wanted.contains(id)) leaving.push_back(id);
  }
  leftBehind_ = leftBehindOf(leaving);
  std::erase_if(leaving, [this](xcb_window_t id) { return leftBehind_.contains(id); });
  for (const xcb_window_t id : leaving) {
    loader_.release(id);
    forget(id);
  }
  if (!missing.empty()) {
    for (X11Window& window : loader_.load(missing)) {
      const xcb_window_t id = window.id;
      if (window.strut || window.strutPartial) noteScreensChanged();
      link(windows_.insert_or_assign(id, std::move(window)).first->second);
      changes_.windows.insert(id);
      changes_.membership = true;
    }
  }
  const std::unordered_set<xcb_window_t> listed(listed_.begin(), listed_.end());
  std::erase_if(clientList_, [&](xcb_window_t id) {
    return !windows_.contains(id) || (!listed.contains(id) && !leftBehind_.contains(id));
  });
  // Another window manager may list them in another order.
  const std::unordered_set<xcb_window_t> known(clientList_.begin(), clientList_.end());
  for (const xcb_window_t id : listed_) {
    if (windows_.contains(id) && !known.contains(id)) clientList_.push_back(id);
  }
}

// A program takes its window from the screen before the window manager lets go of it. One that is still
// there, and not inside another program's window now, has lost its window manager.
std::unordered_set<xcb_window_t> X11Mirror::leftBehindOf(const std::vector<xcb_window_t>& leaving) const {
  std::vector<std::pair<xcb_window_t, xcb_get_window_attributes_cookie_t>> asked;
  for (const xcb_window_t id : leaving) {
    const X11Window& window = windows_.at(id);
    const bool embedded = std::ranges::any_of(
        window.links, [&](const auto& link) { return link.id != id && windows_.contains(link.id); });
    if (embedded || std::ranges::find(clientList_, id) == clientList_.end()) continue;
    asked.emplace_back(id, xcb_get_window_attributes(connection_.xcb(), id));
  }
  std::unordered_set<xcb_window_t> result;
  for (const auto& [id, cookie] : asked) {
    const XcbReply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(connection_.xcb(), cookie, nullptr));
    if (reply && reply->map_state != XCB_MAP_STATE_UNMAPPED) result.insert(id);
  }
  return result;
}

void X11Mirror::link(const X11Window& window) {
  for (const auto& each : window.links) owners_.emplace(each.id, window.id);
}

void X11Mirror::unlink(const X11Window& window) {
  for (const auto& each : window.links) {
    const auto [first, last] = owners_.equal_range(each.id);
    const auto own =
        std::find_if(first, last, [&window](const auto& owner) { return owner.second == window.id; });
    if (own != last) owners_.erase(own);
  }
}

void X11Mirror::forget(xcb_window_t id) {
  const auto found = windows_.find(id);
  if (found == windows_.end()) return;
  if (found->second.strut || found->second.strutPartial) noteScreensChanged();
  unlink(found->second);
  windows_.erase(found);
  std::erase(clientList_, id);
  leftBehind_.erase(id);
  staleLinks_.erase(id);
  changes_.windows.insert(id);
  changes_.membership = true;
}

}  // namespace pellar
