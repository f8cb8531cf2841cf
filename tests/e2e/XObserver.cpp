#include "tests/e2e/XObserver.h"

#include <poll.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "tests/e2e/Keys.h"
#include "tests/e2e/XReply.h"

namespace pellar::e2e {

namespace {

using Clock = std::chrono::steady_clock;

// How long a condition that no event announces (a file, another process) goes unlooked at.
constexpr std::chrono::milliseconds lookAgain{20};

XReply<xcb_get_property_reply_t> property(xcb_connection_t* connection, xcb_window_t window,
                                          xcb_atom_t name) {
  const auto cookie = xcb_get_property(connection, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, 1 << 20);
  return XReply<xcb_get_property_reply_t>(xcb_get_property_reply(connection, cookie, nullptr));
}

std::optional<Margins> margins(const std::vector<std::uint32_t>& values) {
  if (values.size() < 4) return std::nullopt;
  return Margins{static_cast<int>(values[0]), static_cast<int>(values[1]), static_cast<int>(values[2]),
                 static_cast<int>(values[3])};
}

}  // namespace

std::string describe(const Box& box) {
  return std::to_string(box.x) + "," + std::to_string(box.y) + " " + std::to_string(box.width) + "x" +
         std::to_string(box.height);
}

XObserver::XObserver(const std::string& display) : connection_(xcb_connect(display.c_str(), nullptr)) {
  if (xcb_connection_has_error(connection_) != 0)
    throw std::runtime_error("cannot observe display " + display);
  root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &events);
  const std::uint32_t ownEvents = XCB_EVENT_MASK_PROPERTY_CHANGE;
  own_ = xcb_generate_id(connection_);
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, own_, root_, -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &ownEvents);
  fence();
}

XObserver::~XObserver() {
  xcb_disconnect(connection_);
}

xcb_atom_t XObserver::atom(const std::string& name) const {
  if (const auto known = atoms_.find(name); known != atoms_.end()) return known->second;
  const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
  if (!reply) throw std::runtime_error("the X server is gone");
  return atoms_[name] = reply->atom;
}

void XObserver::noteDesktop() {
  everActive_.insert(activeWindow());
  for (const auto window : clients()) everListed_.insert(window);
}

void XObserver::takeEvents() {
  bool desktopChanged = false;
  while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
    const int type = event->response_type & 0x7f;
    if (type == XCB_SELECTION_NOTIFY) selectionAnswered_ = true;
    if (type != XCB_PROPERTY_NOTIFY) continue;
    const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
    lastTime_ = change->time;
    desktopChanged = desktopChanged || change->window == root_;
  }
  if (desktopChanged) noteDesktop();
}

void XObserver::waitUntil(const std::string& what, const std::function<bool()>& condition,
                          std::chrono::milliseconds deadline) {
  const auto end = Clock::now() + deadline;
  for (;;) {
    takeEvents();
    if (condition()) return;
    if (xcb_connection_has_error(connection_) != 0)
      throw std::runtime_error("X server lost; waited for " + what);
    if (Clock::now() >= end) throw DeadlineMissed("waited in vain: " + what);
    pollfd entry{xcb_get_file_descriptor(connection_), POLLIN, 0};
    poll(&entry, 1, static_cast<int>(lookAgain.count()));
  }
}

void XObserver::waitUntilWindowsAreManaged() {
  // A window manager may announce itself before it looks after windows, and lose one that appears in between.
  const xcb_window_t probe = xcb_generate_id(connection_);
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, probe, root_, 0, 0, 100, 100, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
  const auto listed = [&] {
    const auto all = clients();
    return std::find(all.begin(), all.end(), probe) != all.end();
  };
  constexpr std::chrono::milliseconds oneTry{300};
  const auto end = Clock::now() + patience;
  for (bool managed = false; !managed;) {
    xcb_map_window(connection_, probe);
    xcb_flush(connection_);
    try {
      waitUntil("the window manager manages windows", listed, oneTry);
      managed = true;
    } catch (const DeadlineMissed&) {
      if (Clock::now() > end) throw;
      xcb_unmap_window(connection_, probe);
    }
  }
  xcb_destroy_window(connection_, probe);
  xcb_flush(connection_);
  waitUntil("the desktop is empty", [&] { return clients().empty(); });
}

void XObserver::fence() {
  xcb_flush(connection_);
  const XReply<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  takeEvents();
}

std::vector<std::uint32_t> XObserver::numbers(xcb_window_t window, const std::string& name) const {
  const auto reply = property(connection_, window, atom(name));
  if (!reply || reply->format != 32) return {};
  const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {values, values + reply->value_len};
}

std::string XObserver::text(xcb_window_t window, const std::string& name) const {
  const auto reply = property(connection_, window, atom(name));
  if (!reply || reply->format != 8) return {};
  return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

bool XObserver::windowManagerReady() const {
  const auto check = numbers(root_, "_NET_SUPPORTING_WM_CHECK");
  return !check.empty() && numbers(check[0], "_NET_SUPPORTING_WM_CHECK") == check &&
         !numbers(root_, "_NET_SUPPORTED").empty();
}

xcb_window_t XObserver::activeWindow() const {
  // Some window managers write a second value behind the window.
  const auto values = numbers(root_, "_NET_ACTIVE_WINDOW");
  return values.empty() ? XCB_NONE : values.front();
}

std::vector<xcb_window_t> XObserver::clients() const {
  return numbers(root_, "_NET_CLIENT_LIST");
}

std::optional<xcb_window_t> XObserver::clientTitled(const std::string& titlePart) const {
  for (const auto window : clients()) {
    auto title = text(window, "_NET_WM_NAME");
    if (title.empty()) title = text(window, "WM_NAME");
    if (title.find(titlePart) != std::string::npos) return window;
  }
  return std::nullopt;
}

bool XObserver::hasState(xcb_window_t window, const std::string& state) const {
  const auto states = numbers(window, "_NET_WM_STATE");
  return std::find(states.begin(), states.end(), atom(state)) != states.end();
}

int XObserver::managedState(xcb_window_t window) const {
  const auto values = numbers(window, "WM_STATE");
  return values.empty() ? 0 : static_cast<int>(values.front());
}

std::vector<xcb_window_t> XObserver::childrenOf(xcb_window_t window) const {
  const XReply<xcb_query_tree_reply_t> reply(
      xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
  if (!reply) return {};
  const auto* first = xcb_query_tree_children(reply.get());
  return {first, first + xcb_query_tree_children_length(reply.get())};
}

std::size_t XObserver::viewableTopLevels() const {
  const auto all = topLevels();
  return static_cast<std::size_t>(
      std::ranges::count_if(all, [this](xcb_window_t window) { return isViewable(window); }));
}

xcb_window_t XObserver::topLevelAt(int x, int y) const {
  const XReply<xcb_translate_coordinates_reply_t> reply(xcb_translate_coordinates_reply(
      connection_,
      xcb_translate_coordinates(connection_, root_, root_, static_cast<std::int16_t>(x),
                                static_cast<std::int16_t>(y)),
      nullptr));
  return reply ? reply->child : xcb_window_t{XCB_WINDOW_NONE};
}

std::optional<xcb_window_t> XObserver::topLevelOf(xcb_window_t window) const {
  for (;;) {
    const XReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
    if (!tree) return std::nullopt;
    if (tree->parent == root_) return window;
    window = tree->parent;
  }
}

std::optional<std::size_t> XObserver::heightInStack(xcb_window_t window) const {
  const auto top = topLevelOf(window);
  if (!top) return std::nullopt;
  const auto all = topLevels();
  const auto found = std::ranges::find(all, *top);
  return found == all.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - all.begin()));
}

bool XObserver::isViewable(xcb_window_t window) const {
  const XReply<xcb_get_window_attributes_reply_t> reply(
      xcb_get_window_attributes_reply(connection_, xcb_get_window_attributes(connection_, window), nullptr));
  return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::optional<Box> XObserver::box(xcb_window_t window) const {
  const auto geometryCookie = xcb_get_geometry(connection_, window);
  const auto placeCookie = xcb_translate_coordinates(connection_, window, root_, 0, 0);
  const XReply<xcb_get_geometry_reply_t> geometry(
      xcb_get_geometry_reply(connection_, geometryCookie, nullptr));
  const XReply<xcb_translate_coordinates_reply_t> place(
      xcb_translate_coordinates_reply(connection_, placeCookie, nullptr));
  if (!geometry || !place) return std::nullopt;
  return Box{place->dst_x, place->dst_y, geometry->width, geometry->height};
}

std::optional<Box> XObserver::frame(xcb_window_t window) const {
  auto result = box(window);
  if (!result) return std::nullopt;
  if (const auto shadow = margins(numbers(window, "_GTK_FRAME_EXTENTS"))) {
    result->x += shadow->left;
    result->y += shadow->top;
    result->width -= shadow->left + shadow->right;
    result->height -= shadow->top + shadow->bottom;
  } else if (const auto decoration = margins(numbers(window, "_NET_FRAME_EXTENTS"))) {
    result->x -= decoration->left;
    result->y -= decoration->top;
    result->width += decoration->left + decoration->right;
    result->height += decoration->top + decoration->bottom;
  } else if (const auto top = topLevelOf(window)) {
    // A window manager that says nothing of its frames.
    return box(*top);
  }
  return result;
}

std::optional<Picture> XObserver::picture(xcb_window_t window) const {
  const XReply<xcb_get_geometry_reply_t> geometry(
      xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
  if (!geometry) return std::nullopt;
  const auto cookie = xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0, geometry->width,
                                    geometry->height, ~0U);
  const XReply<xcb_get_image_reply_t> image(xcb_get_image_reply(connection_, cookie, nullptr));
  if (!image) return std::nullopt;
  Picture result{geometry->width, geometry->height, {}};
  result.pixels.resize(static_cast<std::size_t>(result.width) * static_cast<std::size_t>(result.height));
  const auto bytes = static_cast<std::size_t>(xcb_get_image_data_length(image.get()));
  if (bytes < result.pixels.size() * 4) return std::nullopt;
  std::memcpy(result.pixels.data(), xcb_get_image_data(image.get()), result.pixels.size() * 4);
  for (auto& pixel : result.pixels) pixel &= 0xffffff;
  return result;
}

xcb_timestamp_t XObserver::serverTime() {
  xcb_change_property(connection_, XCB_PROP_MODE_APPEND, own_, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0,
                      nullptr);
  fence();  // the answer comes after the notice of the change
  return lastTime_;
}

void XObserver::sendToRoot(xcb_window_t window, const std::string& message,
                           const std::vector<std::uint32_t>& data) const {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window;
  event.type = atom(message);
  std::copy_n(data.begin(), std::min<std::size_t>(data.size(), 5), event.data.data32);
  xcb_send_event(connection_, 0, root_,
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&event));
  xcb_flush(connection_);
}

void XObserver::configure(xcb_window_t window, std::uint16_t mask,
                          const std::vector<std::uint32_t>& values) const {
  xcb_configure_window(connection_, window, mask, values.data());
  xcb_flush(connection_);
}

void XObserver::movePointer(int x, int y) {
  xcb_test_fake_input(connection_, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, root_,
                      static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
  fence();
}

void XObserver::press(int button) {
  pressAfter(0, button);
}

void XObserver::pressAfter(std::uint32_t milliseconds, int button) {
  xcb_test_fake_input(connection_, XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button), milliseconds,
                      XCB_NONE, 0, 0, 0);
  fence();
}

void XObserver::release(int button) {
  xcb_test_fake_input(connection_, XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button), XCB_CURRENT_TIME,
                      XCB_NONE, 0, 0, 0);
  fence();
}

void XObserver::click(int x, int y, int button) {
  movePointer(x, y);
  press(button);
  release(button);
}

void XObserver::doubleClick(int x, int y) {
  click(x, y);
  pressAfter(80, 1);
  release(1);
}

std::optional<xcb_keycode_t> XObserver::keycode(std::uint32_t keysym, bool shifted) const {
  const auto* setup = xcb_get_setup(connection_);
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const XReply<xcb_get_keyboard_mapping_reply_t> mapping(xcb_get_keyboard_mapping_reply(
      connection_, xcb_get_keyboard_mapping(connection_, setup->min_keycode, count), nullptr));
  if (!mapping) return std::nullopt;
  const auto* keysyms = xcb_get_keyboard_mapping_keysyms(mapping.get());
  for (int index = 0; index < count; ++index)
    if (keysyms[index * mapping->keysyms_per_keycode + (shifted ? 1 : 0)] == keysym)
      return static_cast<xcb_keycode_t>(setup->min_keycode + index);
  return std::nullopt;
}

void XObserver::pressKey(xcb_keycode_t code, bool down) {
  xcb_test_fake_input(connection_, down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, code, XCB_CURRENT_TIME, XCB_NONE,
                      0, 0, 0);
  fence();
}

void XObserver::key(std::uint32_t keysym, bool down) {
  if (const auto code = keycode(keysym)) pressKey(*code, down);
}

void XObserver::strike(std::uint32_t keysym) {
  key(keysym, true);
  key(keysym, false);
}

void XObserver::type(const std::string& text) {
  for (const char letter : text) {
    const auto symbol = static_cast<std::uint32_t>(static_cast<unsigned char>(letter));
    const auto plain = keycode(symbol);
    const auto code = plain ? plain : keycode(symbol, /*shifted=*/true);
    if (!code) throw std::runtime_error("no key of this keyboard types " + std::string(1, letter));
    if (!plain) key(shiftKey, true);
    pressKey(*code, true);
    pressKey(*code, false);
    if (!plain) key(shiftKey, false);
  }
}

xcb_window_t XObserver::focus() const {
  const XReply<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  return reply ? reply->focus : static_cast<xcb_window_t>(XCB_NONE);
}

Box XObserver::pointer() const {
  const XReply<xcb_query_pointer_reply_t> reply(
      xcb_query_pointer_reply(connection_, xcb_query_pointer(connection_, root_), nullptr));
  return reply ? Box{reply->root_x, reply->root_y, 0, 0} : Box{};
}

template <class Reply, class Cookie>
bool XObserver::isRefused(Cookie tried, Reply* (*answerTo)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                          xcb_void_cookie_t (*letGo)(xcb_connection_t*, xcb_timestamp_t)) {
  const XReply<Reply> answer(answerTo(connection_, tried, nullptr));
  const bool got = answer && answer->status == XCB_GRAB_STATUS_SUCCESS;
  if (got) letGo(connection_, XCB_CURRENT_TIME);
  xcb_ungrab_server(connection_);
  fence();
  return !got;
}

bool XObserver::keyboardIsGrabbed() {
  // Meanwhile nobody else is served, so that no program finds its own grab refused.
  xcb_grab_server(connection_);
  return isRefused(
      xcb_grab_keyboard(connection_, 0, root_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
      &xcb_grab_keyboard_reply, &xcb_ungrab_keyboard);
}

bool XObserver::pointerIsGrabbed() {
  xcb_grab_server(connection_);
  return isRefused(xcb_grab_pointer(connection_, 0, root_, 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                    XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
                   &xcb_grab_pointer_reply, &xcb_ungrab_pointer);
}

std::string XObserver::clipboard() {
  const std::string property = "E2E_CLIPBOARD";
  fence();
  selectionAnswered_ = false;
  xcb_delete_property(connection_, own_, atom(property));
  xcb_convert_selection(connection_, own_, atom("CLIPBOARD"), atom("UTF8_STRING"), atom(property),
                        XCB_CURRENT_TIME);
  fence();
  waitUntil("the clipboard answers", [this] { return selectionAnswered_; });
  return text(own_, property);
}

}  // namespace pellar::e2e
