#include "platform/linux/x11/X11Connection.h"

#include <poll.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "core/Log.h"
#include "platform/linux/x11/EventType.h"
#include "platform/linux/x11/ServerSync.h"

namespace pellar {
namespace {

constexpr std::pair<const char*, xcb_atom_t X11Atoms::*> atomNames[] = {
    {"UTF8_STRING", &X11Atoms::utf8String},
    {"WM_STATE", &X11Atoms::wmState},
    {"WM_CHANGE_STATE", &X11Atoms::wmChangeState},
    {"_NET_SUPPORTED", &X11Atoms::netSupported},
    {"_NET_SUPPORTING_WM_CHECK", &X11Atoms::netSupportingWmCheck},
    {"_NET_CLIENT_LIST", &X11Atoms::netClientList},
    {"_NET_CLIENT_LIST_STACKING", &X11Atoms::netClientListStacking},
    {"_NET_ACTIVE_WINDOW", &X11Atoms::netActiveWindow},
    {"_NET_CURRENT_DESKTOP", &X11Atoms::netCurrentDesktop},
    {"_NET_WORKAREA", &X11Atoms::netWorkArea},
    {"_NET_CLOSE_WINDOW", &X11Atoms::netCloseWindow},
    {"_NET_MOVERESIZE_WINDOW", &X11Atoms::netMoveResizeWindow},
    {"_NET_WM_NAME", &X11Atoms::netWmName},
    {"_NET_WM_PID", &X11Atoms::netWmPid},
    {"_NET_WM_DESKTOP", &X11Atoms::netWmDesktop},
    {"_NET_FRAME_EXTENTS", &X11Atoms::netFrameExtents},
    {"_NET_REQUEST_FRAME_EXTENTS", &X11Atoms::netRequestFrameExtents},
    {"_GTK_FRAME_EXTENTS", &X11Atoms::gtkFrameExtents},
    {"_GTK_UNIQUE_BUS_NAME", &X11Atoms::gtkUniqueBusName},
    {"_GTK_MENUBAR_OBJECT_PATH", &X11Atoms::gtkMenuBarPath},
    {"_GTK_WINDOW_OBJECT_PATH", &X11Atoms::gtkWindowPath},
    {"_GTK_APPLICATION_OBJECT_PATH", &X11Atoms::gtkApplicationPath},
    {"_UNITY_OBJECT_PATH", &X11Atoms::unityObjectPath},
    {"_NET_WM_STRUT", &X11Atoms::netWmStrut},
    {"_NET_WM_STRUT_PARTIAL", &X11Atoms::netWmStrutPartial},
    {"_NET_WM_STATE", &X11Atoms::netWmState},
    {"_NET_WM_STATE_HIDDEN", &X11Atoms::stateHidden},
    {"_NET_WM_STATE_FULLSCREEN", &X11Atoms::stateFullscreen},
    {"_NET_WM_STATE_MAXIMIZED_VERT", &X11Atoms::stateMaximizedVert},
    {"_NET_WM_STATE_MAXIMIZED_HORZ", &X11Atoms::stateMaximizedHorz},
    {"_NET_WM_STATE_SKIP_TASKBAR", &X11Atoms::stateSkipTaskbar},
    {"_NET_WM_WINDOW_TYPE", &X11Atoms::netWmWindowType},
    {"_NET_WM_WINDOW_TYPE_UTILITY", &X11Atoms::typeUtility},
    {"_NET_WM_WINDOW_TYPE_NORMAL", &X11Atoms::typeNormal},
    {"_NET_WM_WINDOW_TYPE_DIALOG", &X11Atoms::typeDialog},
    {"_NET_WM_WINDOW_TYPE_DOCK", &X11Atoms::typeDock},
    {"_NET_WM_WINDOW_TYPE_DESKTOP", &X11Atoms::typeDesktop},
    {"XdndAware", &X11Atoms::xdndAware},
    {"XdndPosition", &X11Atoms::xdndPosition},
    {"XdndStatus", &X11Atoms::xdndStatus},
    {"XdndLeave", &X11Atoms::xdndLeave},
    {"XdndDrop", &X11Atoms::xdndDrop},
    {"XdndFinished", &X11Atoms::xdndFinished},
    {"_PELLAR_TIMESTAMP", &X11Atoms::pellarTimestamp},
};

constexpr auto waylandSentence =
    "Pellar needs an X11 session: Wayland shows no program the windows of others.";

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

// Whether this is an X server inside a Wayland session, which shows only the X programs' windows.
bool isInsideWayland(xcb_connection_t* connection) {
  if (!isSet("WAYLAND_DISPLAY")) return false;
  constexpr char extension[] = "XWAYLAND";
  const auto reply = owned(xcb_query_extension_reply(
      connection, xcb_query_extension(connection, sizeof extension - 1, extension), nullptr));
  return reply && reply->present != 0;
}

}  // namespace

std::variant<std::unique_ptr<X11Connection>, X11Failure> X11Connection::open() {
  if (!isSet("DISPLAY")) {
    if (isSet("WAYLAND_DISPLAY")) return X11Failure{waylandSentence};
    return X11Failure{"Pellar needs an X11 display, and DISPLAY is not set."};
  }
  int screenNumber = 0;
  xcb_connection_t* connection = xcb_connect(nullptr, &screenNumber);
  xcb_screen_t* screen = nullptr;
  if (xcb_connection_has_error(connection) == 0) {
    auto it = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screenNumber > 0 && it.rem > 1; --screenNumber) xcb_screen_next(&it);
    screen = it.data;
  }
  if (screen == nullptr) {
    xcb_disconnect(connection);
    return X11Failure{"Pellar cannot connect to the display \"" + std::string(std::getenv("DISPLAY")) +
                      "\"."};
  }
  if (isInsideWayland(connection)) {
    xcb_disconnect(connection);
    return X11Failure{waylandSentence};
  }
  return std::unique_ptr<X11Connection>(new X11Connection(connection, screen));
}

X11Connection::X11Connection(xcb_connection_t* connection, xcb_screen_t* screen)
    : connection_(connection), screen_(screen), ownWindow_(xcb_generate_id(connection)) {
  internAtoms();
  const std::uint32_t values[] = {1, XCB_EVENT_MASK_PROPERTY_CHANGE};
  xcb_create_window(connection_, 0, ownWindow_, root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
}

X11Connection::~X11Connection() {
  xcb_disconnect(connection_);
}

void X11Connection::internAtoms() {
  std::vector<xcb_intern_atom_cookie_t> cookies;
  for (const auto& [name, member] : atomNames) {
    cookies.push_back(xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name));
  }
  auto cookie = cookies.begin();
  for (const auto& [name, member] : atomNames) {
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, *cookie++, nullptr));
    if (reply) atoms_.*member = reply->atom;
  }
}

Subscription X11Connection::onEvent(std::function<void(const xcb_generic_event_t&)> handler) {
  handlers_->push_back({std::move(handler), false});
  auto entry = std::prev(handlers_->end());
  return Subscription([handlers = std::weak_ptr(handlers_), entry] {
    // Taken out by dispatch, which may be running this very handler.
    if (handlers.lock()) entry->ended = true;
  });
}

void X11Connection::dispatch(const xcb_generic_event_t& event) {
  const int type = eventType(event);
  if (type == 0) {
    noteError(event);
    return;
  }
  if (type == XCB_PROPERTY_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    lastTime_ = notify.time;
    if (notify.window == ownWindow_) return;
  }
  ++dispatchDepth_;
  for (auto& handler : *handlers_) {
    if (!handler.ended) handler.call(event);
  }
  if (--dispatchDepth_ == 0) handlers_->remove_if([](const Handler& handler) { return handler.ended; });
}

void X11Connection::noteError(const xcb_generic_event_t& event) {
  const auto& error = reinterpret_cast<const xcb_generic_error_t&>(event);
  // Windows of others die between any two requests, and a dying window refuses what a living one takes.
  if (error.error_code == XCB_WINDOW || error.error_code == XCB_DRAWABLE || error.error_code == XCB_MATCH)
    return;
  if (reportedErrors_.emplace(error.error_code, error.major_code).second) {
    Log::write("the X server refused a request and Pellar goes on without it (error " +
               std::to_string(error.error_code) + ", request " + std::to_string(error.major_code) + ")");
  }
}

X11Connection::Arrived X11Connection::dispatchArrived(bool upToPress) {
  constexpr int limit = 1000;
  auto arrived = Arrived::nothing;
  for (int count = 0; count < limit; ++count) {
    XcbReply<xcb_generic_event_t> event;
    if (!unseen_.empty()) {
      event = std::move(unseen_.front());
      unseen_.pop_front();
    } else {
      event.reset(xcb_poll_for_event(connection_));
    }
    if (!event) break;
    arrived = Arrived::events;
    dispatch(*event);
    if (upToPress && eventType(*event) == XCB_BUTTON_PRESS) return Arrived::press;
  }
  return arrived;
}

bool X11Connection::waitForInput(std::chrono::milliseconds time) {
  if (hasUnseenEvents()) return true;
  if (lost()) return false;
  pollfd descriptor{fileDescriptor(), POLLIN, 0};
  return poll(&descriptor, 1, static_cast<int>(std::max<std::int64_t>(time.count(), 0))) > 0;
}

void X11Connection::flush() {
  if (beforeFlush_) beforeFlush_();
  xcb_flush(connection_);
}

bool X11Connection::owns(xcb_window_t window) const {
  const xcb_setup_t* setup = xcb_get_setup(connection_);
  return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

bool X11Connection::hasUnseenEvents() {
  if (unseen_.empty()) {
    if (auto* event = xcb_poll_for_queued_event(connection_)) unseen_.emplace_back(event);
  }
  return !unseen_.empty();
}

xcb_timestamp_t X11Connection::serverTime() {
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, ownWindow_, atoms_.pellarTimestamp,
                      XCB_ATOM_CARDINAL, 32, 0, nullptr);
  syncWithServer(connection_);
  dispatchArrived();
  return lastTime_;
}

XcbReply<xcb_query_pointer_reply_t> X11Connection::pointer() const {
  return XcbReply<xcb_query_pointer_reply_t>(
      xcb_query_pointer_reply(connection_, xcb_query_pointer(connection_, root()), nullptr));
}

void X11Connection::sendToWindowManager(xcb_window_t window, xcb_atom_t type,
                                        const std::array<std::uint32_t, 5>& data) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = type;
  std::copy(data.begin(), data.end(), message.data.data32);
  xcb_send_event(connection_, 0, root(),
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&message));
}

}  // namespace pellar
