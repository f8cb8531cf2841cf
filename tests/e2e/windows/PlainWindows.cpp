#include "tests/e2e/windows/PlainWindows.h"

#include <unistd.h>
#include <xcb/xcb_icccm.h>

#include <array>
#include <chrono>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "tests/e2e/XReply.h"

namespace pellar::e2e {

namespace {

// Titles travel as hexadecimal digits, so that any byte can be in one.
std::string fromHex(const std::string& digits) {
  std::string bytes;
  for (std::size_t at = 0; at + 1 < digits.size(); at += 2) {
    bytes += static_cast<char>(std::stoi(digits.substr(at, 2), nullptr, 16));
  }
  return bytes;
}

std::uint32_t nextBackground() {
  static std::uint32_t count = 0;
  static constexpr std::array<std::uint32_t, 5> shades{0xf4f1e8, 0xe8eef4, 0xeaf4e8, 0xf4e8ee, 0xefeaf6};
  return shades[count++ % shades.size()];
}

}  // namespace

PlainWindows::PlainWindows(std::string className)
    : className_(std::move(className)), connection_(xcb_connect(nullptr, nullptr)) {
  if (xcb_connection_has_error(connection_) != 0) throw std::runtime_error("no display");
  screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
}

PlainWindows::~PlainWindows() {
  xcb_disconnect(connection_);
}

xcb_atom_t PlainWindows::atom(const std::string& name) const {
  const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
      connection_, xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
      nullptr));
  if (!reply) throw std::runtime_error("the X server is gone");
  return reply->atom;
}

void PlainWindows::setText(xcb_window_t window, const std::string& property, const std::string& value) {
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property), atom("UTF8_STRING"), 8,
                      static_cast<std::uint32_t>(value.size()), value.data());
}

void PlainWindows::setNumbers(xcb_window_t window, const std::string& property, xcb_atom_t type,
                              const std::uint32_t* values, std::uint32_t count) {
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32, count, values);
}

xcb_window_t PlainWindows::open(std::int16_t x, std::int16_t y, std::uint16_t width, std::uint16_t height,
                                std::uint32_t shadow, const std::string& title, xcb_window_t parent) {
  const xcb_window_t window = xcb_generate_id(connection_);
  const std::uint32_t background = nextBackground();
  const std::array<std::uint32_t, 2> values{background,
                                            XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_KEY_PRESS};
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen_->root, x, y, width, height, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values.data());
  windows_[window] = {};

  setClass(window, className_);
  setText(window, "_NET_WM_NAME", title);
  xcb_icccm_set_wm_name(connection_, window, XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(title.size()),
                        title.data());
  std::array<char, 256> host{};
  gethostname(host.data(), host.size() - 1);
  xcb_icccm_set_wm_client_machine(connection_, window, XCB_ATOM_STRING, 8,
                                  static_cast<std::uint32_t>(std::strlen(host.data())), host.data());
  const auto pid = static_cast<std::uint32_t>(getpid());
  setNumbers(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, &pid, 1);
  const xcb_atom_t deletion = atom("WM_DELETE_WINDOW");
  setNumbers(window, "WM_PROTOCOLS", XCB_ATOM_ATOM, &deletion, 1);

  xcb_size_hints_t hints{};
  xcb_icccm_size_hints_set_position(&hints, 1, x, y);
  xcb_icccm_size_hints_set_size(&hints, 1, width, height);
  xcb_icccm_set_wm_normal_hints(connection_, window, &hints);
  xcb_icccm_wm_hints_t manners{};
  xcb_icccm_wm_hints_set_input(&manners, 1);
  xcb_icccm_set_wm_hints(connection_, window, &manners);
  if (shadow > 0) setShadow(window, shadow);
  if (parent != XCB_NONE) {
    setType(window, "DIALOG");
    xcb_icccm_set_wm_transient_for(connection_, window, parent);
  }
  xcb_map_window(connection_, window);
  return window;
}

void PlainWindows::setClass(xcb_window_t window, const std::string& name) {
  const std::string names = name + '\0' + name + '\0';
  xcb_icccm_set_wm_class(connection_, window, static_cast<std::uint32_t>(names.size()), names.data());
}

void PlainWindows::setType(xcb_window_t window, const std::string& name) {
  const xcb_atom_t type = atom("_NET_WM_WINDOW_TYPE_" + name);
  setNumbers(window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, &type, 1);
}

void PlainWindows::keepOffTaskbar(xcb_window_t window) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = atom("_NET_WM_STATE");
  message.data.data32[0] = 1;
  message.data.data32[1] = atom("_NET_WM_STATE_SKIP_TASKBAR");
  message.data.data32[3] = 1;
  xcb_send_event(connection_, 0, screen_->root,
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&message));
}

void PlainWindows::ask(xcb_window_t window) {
  const XReply<xcb_get_geometry_reply_t> size(
      xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
  const XReply<xcb_translate_coordinates_reply_t> corner(xcb_translate_coordinates_reply(
      connection_, xcb_translate_coordinates(connection_, window, screen_->root, 0, 0), nullptr));
  if (!size || !corner) return;
  constexpr int width = 260;
  constexpr int height = 120;
  open(static_cast<std::int16_t>(corner->dst_x + (size->width - width) / 2),
       static_cast<std::int16_t>(corner->dst_y + (size->height - height) / 2), width, height, 0,
       "Save changes?", window);
}

void PlainWindows::fixSize(xcb_window_t window) {
  const XReply<xcb_get_geometry_reply_t> now(
      xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
  if (!now) return;
  xcb_size_hints_t hints{};
  xcb_icccm_size_hints_set_min_size(&hints, now->width, now->height);
  xcb_icccm_size_hints_set_max_size(&hints, now->width, now->height);
  xcb_icccm_set_wm_normal_hints(connection_, window, &hints);
}

std::array<std::uint32_t, 2> PlainWindows::frameCorner(xcb_window_t window, int x, int y) const {
  const XReply<xcb_get_property_reply_t> extents(xcb_get_property_reply(
      connection_,
      xcb_get_property(connection_, 0, window, atom("_NET_FRAME_EXTENTS"), XCB_ATOM_CARDINAL, 0, 4),
      nullptr));
  std::array<std::uint32_t, 2> corner{static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y)};
  if (!extents || extents->value_len != 4) return corner;
  const auto* margins = static_cast<const std::uint32_t*>(xcb_get_property_value(extents.get()));
  return {corner[0] - margins[0], corner[1] - margins[2]};
}

// From now on the window goes to this corner of its frame whenever somebody moves it elsewhere.
void PlainWindows::makeStubborn(xcb_window_t window, int x, int y) {
  windows_[window].home = {static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y)};
  xcb_configure_window(connection_, window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y,
                       windows_[window].home->data());
}

// What a program that decorates itself tells: no decoration wanted, and how wide its own shadow is.
void PlainWindows::setShadow(xcb_window_t window, std::uint32_t margin) {
  const std::array<std::uint32_t, 5> undecorated{2, 0, 0, 0, 0};
  setNumbers(window, "_MOTIF_WM_HINTS", atom("_MOTIF_WM_HINTS"), undecorated.data(), 5);
  const std::array<std::uint32_t, 4> shadow{margin, margin, margin, margin};
  setNumbers(window, "_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL, shadow.data(), 4);
}

void PlainWindows::storm(xcb_window_t window, int count, int perSecond) {
  const auto step = std::chrono::microseconds(1000000 / perSecond);
  auto next = std::chrono::steady_clock::now();
  for (int number = 1; number <= count; ++number) {
    setText(window, "_NET_WM_NAME", "Step " + std::to_string(number));
    xcb_flush(connection_);
    next += step;
    std::this_thread::sleep_until(next);
  }
}

// Windows that are gone as soon as they are there.
void PlainWindows::churn(int count) {
  for (int number = 0; number < count; ++number) {
    const auto window = open(200, 300, 400, 300, 0, "Brief " + std::to_string(number));
    xcb_flush(connection_);
    setText(window, "_NET_WM_NAME", "Briefer");
    xcb_destroy_window(connection_, window);
    windows_.erase(window);
    xcb_flush(connection_);
  }
}

void PlainWindows::publishTheme(xcb_window_t window, const std::string& theme) {
  std::string settings;
  const auto number = [&](std::size_t value, unsigned size) {
    for (unsigned i = 0; i < size; ++i) settings += static_cast<char>((value >> (8 * i)) & 0xffU);
  };
  const auto text = [&](const std::string& value) {
    settings += value;
    while (settings.size() % 4 != 0) settings += '\0';
  };
  const std::string name = "Net/ThemeName";
  number(0, 4);  // the least significant byte first
  number(1, 4);
  number(1, 4);  // one setting,
  number(1, 1);  // a text
  number(0, 1);
  number(name.size(), 2);
  text(name);
  number(1, 4);
  number(theme.size(), 4);
  text(theme);
  const auto property = atom("_XSETTINGS_SETTINGS");
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, property, 8,
                      static_cast<std::uint32_t>(settings.size()), settings.data());
  xcb_set_selection_owner(connection_, window, atom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
}

std::string PlainWindows::run(const std::string& line) {
  std::istringstream input(line);
  std::string command;
  input >> command;
  if (command == "open") {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    std::uint32_t shadow = 0;
    std::string title;
    input >> x >> y >> width >> height >> shadow >> title;
    const auto window =
        open(static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), static_cast<std::uint16_t>(width),
             static_cast<std::uint16_t>(height), shadow, fromHex(title));
    xcb_flush(connection_);
    return std::to_string(window);
  }
  if (command == "churn") {
    int count = 0;
    input >> count;
    churn(count);
    return "done";
  }

  xcb_window_t window = XCB_NONE;
  input >> window;
  if (!windows_.contains(window)) return "unknown";
  if (command == "title") {
    std::string title;
    input >> title;
    setText(window, "_NET_WM_NAME", fromHex(title));
  } else if (command == "destroy") {
    xcb_destroy_window(connection_, window);
    windows_.erase(window);
  } else if (command == "theme") {
    std::string theme;
    input >> theme;
    publishTheme(window, theme);
  } else if (command == "fixed") {
    fixSize(window);
  } else if (command == "aspect") {
    int width = 0;
    int height = 0;
    input >> width >> height;
    xcb_size_hints_t hints{};
    xcb_icccm_size_hints_set_aspect(&hints, width, height, width, height);
    xcb_icccm_set_wm_normal_hints(connection_, window, &hints);
  } else if (command == "stubborn") {
    int x = 0;
    int y = 0;
    input >> x >> y;
    makeStubborn(window, x, y);
  } else if (command == "dialog") {
    xcb_window_t parent = XCB_NONE;
    input >> parent;
    setType(window, "DIALOG");
    xcb_icccm_set_wm_transient_for(connection_, window, parent);
  } else if (command == "transient") {
    xcb_window_t parent = XCB_NONE;
    input >> parent;
    xcb_icccm_set_wm_transient_for(connection_, window, parent);
  } else if (command == "type") {
    std::string name;
    input >> name;
    setType(window, name);
  } else if (command == "class") {
    std::string name;
    input >> name;
    setClass(window, name);
  } else if (command == "off-taskbar") {
    keepOffTaskbar(window);
  } else if (command == "asks") {
    windows_[window].asks = true;
  } else if (command == "group") {
    xcb_window_t leader = XCB_NONE;
    input >> leader;
    xcb_icccm_wm_hints_t hints{};
    xcb_icccm_wm_hints_set_input(&hints, 1);
    xcb_icccm_wm_hints_set_window_group(&hints, leader);
    xcb_icccm_set_wm_hints(connection_, window, &hints);
  } else if (command == "storm") {
    int count = 0;
    int perSecond = 0;
    input >> count >> perSecond;
    storm(window, count, perSecond);
  } else {
    return "unknown command";
  }
  // An answer means that the server has done it.
  const XReply<xcb_get_input_focus_reply_t> fence(
      xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  return "done";
}

void PlainWindows::answer(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7f;
  if (type == XCB_CLIENT_MESSAGE) {
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.data.data32[0] != atom("WM_DELETE_WINDOW")) return;
    if (windows_[message.window].asks) {
      ask(message.window);
    } else {
      xcb_destroy_window(connection_, message.window);
      windows_.erase(message.window);
    }
  } else if (type == XCB_KEY_PRESS) {
    noteKey(reinterpret_cast<const xcb_key_press_event_t&>(event));
  } else if (type == XCB_CONFIGURE_NOTIFY) {
    const auto& configured = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
    // Only the window manager's own reports are about the place on the root.
    const bool aboutTheRoot = (event.response_type & 0x80) != 0;
    const auto found = windows_.find(configured.window);
    if (!aboutTheRoot || found == windows_.end() || !found->second.home) return;
    const auto corner = frameCorner(configured.window, configured.x, configured.y);
    if (*found->second.home == corner) return;
    xcb_configure_window(connection_, configured.window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y,
                         found->second.home->data());
  }
}

// Tells what keys a window received: for each press the key's first symbol and the modifiers, in hexadecimal
// digits, as "ff09+4 ".
void PlainWindows::noteKey(const xcb_key_press_event_t& press) {
  const auto found = windows_.find(press.event);
  if (found == windows_.end()) return;
  const XReply<xcb_get_keyboard_mapping_reply_t> map(xcb_get_keyboard_mapping_reply(
      connection_, xcb_get_keyboard_mapping(connection_, press.detail, 1), nullptr));
  if (!map || map->keysyms_per_keycode == 0) return;
  std::ostringstream key;
  key << std::hex << xcb_get_keyboard_mapping_keysyms(map.get())[0] << '+' << press.state << ' ';
  found->second.keys += key.str();
  setText(press.event, "E2E_KEYS", found->second.keys);
}

bool PlainWindows::answerEvents() {
  while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) answer(*event);
  xcb_flush(connection_);
  return xcb_connection_has_error(connection_) == 0;
}

}  // namespace pellar::e2e
