#include "platform/linux/panel/X11KeyboardFocus.h"

#include <array>
#include <utility>

#include "platform/linux/x11/EventType.h"
#include "platform/linux/x11/KeyCodes.h"
#include "platform/linux/x11/X11Connection.h"

namespace pellar {
namespace {

constexpr std::array<std::uint32_t, 3> endingKeysyms{0xff1b, 0xff0d, 0xff8d};  // Escape, Return, Enter

XcbReply<xcb_get_input_focus_reply_t> focusOf(xcb_connection_t* connection) {
  return XcbReply<xcb_get_input_focus_reply_t>(
      xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

bool isWindow(xcb_window_t focus) {
  return focus != XCB_INPUT_FOCUS_NONE && focus != XCB_INPUT_FOCUS_POINTER_ROOT;
}

// The window with this one in it that a window manager takes care of, or else the root.
xcb_window_t managedWindowAround(const X11Connection& connection, xcb_window_t window) {
  auto* const xcb = connection.xcb();
  const xcb_atom_t state = connection.atoms().wmState;
  while (isWindow(window) && window != connection.root()) {
    const auto property = xcb_get_property(xcb, 0, window, state, XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
    const auto tree = xcb_query_tree(xcb, window);
    const XcbReply<xcb_get_property_reply_t> managed(xcb_get_property_reply(xcb, property, nullptr));
    const XcbReply<xcb_query_tree_reply_t> around(xcb_query_tree_reply(xcb, tree, nullptr));
    if (managed && managed->type != XCB_ATOM_NONE) return window;
    if (!around) break;
    window = around->parent;
  }
  return connection.root();
}

}  // namespace

X11KeyboardFocus::X11KeyboardFocus(X11Connection& connection, MainLoop& loop)
    : connection_(connection),
      watch_(connection.xcb(), loop),
      events_(connection.onEvent([this](const xcb_generic_event_t& event) { handle(event); })) {}

void X11KeyboardFocus::makeWindow(xcb_window_t parent) {
  auto* const xcb = connection_.xcb();
  window_ = xcb_generate_id(xcb);
  const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                                   XCB_EVENT_MASK_FOCUS_CHANGE |
                                                   XCB_EVENT_MASK_STRUCTURE_NOTIFY};
  xcb_create_window(xcb, 0, window_, parent, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
  xcb_map_window(xcb, window_);
  endingKeys_.clear();
  for (const std::uint32_t keysym : endingKeysyms) endingKeys_.merge(keyCodesOf(xcb, keysym));
  // This grabs nothing but what is typed into the window itself: it makes the server wait behind these keys.
  for (const xcb_keycode_t key : endingKeys_)
    xcb_grab_key(xcb, 0, window_, XCB_MOD_MASK_ANY, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC);
  watch_.begin();
}

// A window manager that knows the time only from the events it sees has seen nothing of the user's press. It
// would give another window the keyboard as of a time before ours, which the server ignores.
void X11KeyboardFocus::tellTime() {
  auto* const xcb = connection_.xcb();
  const xcb_atom_t name = connection_.atoms().pellarTimestamp;
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, connection_.root(), name, XCB_ATOM_CARDINAL, 32, 0,
                      nullptr);
  xcb_delete_property(xcb, connection_.root(), name);
}

void X11KeyboardFocus::take(xcb_window_t receiver, xcb_timestamp_t time) {
  giveBack();
  auto* const xcb = connection_.xcb();
  takenAt_ = time == XCB_CURRENT_TIME ? connection_.serverTime() : time;
  receiver_ = receiver;
  if (const auto before = focusOf(xcb)) {
    before_ = before->focus;
    revertBefore_ = before->revert_to;
  }
  makeWindow(managedWindowAround(connection_, before_));
  xcb_set_input_focus(xcb, XCB_INPUT_FOCUS_PARENT, window_, takenAt_);
  tellTime();
  const auto now = focusOf(xcb);
  if (!now || now->focus != window_) taken();
}

void X11KeyboardFocus::giveBack() {
  if (window_ == XCB_WINDOW_NONE) return;
  // At the time of the taking, so that the server ignores it when the keyboard was given to somebody since.
  // The window may be gone by now; the server then gives the focus to what it stood in.
  const XcbReply<xcb_generic_error_t> gone(xcb_request_check(
      connection_.xcb(), xcb_set_input_focus_checked(connection_.xcb(), revertBefore_, before_, takenAt_)));
  end();
}

void X11KeyboardFocus::keyIsDone(xcb_keycode_t key) {
  if (waitedFor_ == key) letKeysGo();
}

void X11KeyboardFocus::letKeysGo() {
  if (!std::exchange(waitedFor_, std::nullopt)) return;
  // Only the end of the grab hands on what waits: until the key comes up all would be given to our window.
  xcb_ungrab_keyboard(connection_.xcb(), XCB_CURRENT_TIME);
  connection_.flush();
}

void X11KeyboardFocus::end() {
  watch_.end();
  letKeysGo();
  xcb_destroy_window(connection_.xcb(), std::exchange(window_, XCB_WINDOW_NONE));
  connection_.flush();
}

void X11KeyboardFocus::taken() {
  end();
  if (onTaken) onTaken();
}

void X11KeyboardFocus::sendOn(const xcb_key_press_event_t& key) {
  if (eventType(key) == XCB_KEY_PRESS && endingKeys_.contains(key.detail)) waitedFor_ = key.detail;
  xcb_key_press_event_t sent = key;
  sent.event = receiver_;
  sent.child = XCB_WINDOW_NONE;
  xcb_send_event(connection_.xcb(), 0, receiver_, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&sent));
}

void X11KeyboardFocus::handle(const xcb_generic_event_t& event) {
  if (window_ == XCB_WINDOW_NONE) return;
  switch (eventType(event)) {
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE: {
      const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
      if (key.event == window_) sendOn(key);
      return;
    }
    case XCB_FOCUS_OUT: {
      const auto& out = reinterpret_cast<const xcb_focus_out_event_t&>(event);
      // While another program grabs the keyboard (a window manager's key, a screen locker) the focus stays.
      const bool moved = out.mode == XCB_NOTIFY_MODE_NORMAL || out.mode == XCB_NOTIFY_MODE_WHILE_GRABBED;
      if (out.event == window_ && moved && out.detail != XCB_NOTIFY_DETAIL_POINTER) taken();
      return;
    }
    case XCB_DESTROY_NOTIFY:
      if (reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window != window_) return;
      window_ = XCB_WINDOW_NONE;
      watch_.end();
      if (onTaken) onTaken();
      return;
    default:
      return;
  }
}

}  // namespace pellar
