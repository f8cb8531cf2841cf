#include "platform/linux/input/X11EventMonitors.h"

#include <xcb/xinput.h>

#include <QGuiApplication>
#include <QWindow>
#include <map>
#include <utility>
#include <vector>

#include "core/Log.h"
#include "platform/MainLoop.h"
#include "platform/linux/x11/EventType.h"

namespace pellar {

struct X11EventMonitors::Listeners {
  explicit Listeners(X11EventMonitors* monitors) : owner(monitors) {}
  X11EventMonitors* owner;  // null once it is gone
  int lastKey = 0;
  std::map<int, std::function<void()>> global;
  std::map<int, std::function<void()>> released;
};

X11EventMonitors::X11EventMonitors(X11Connection& connection, MainLoop& loop)
    : connection_(connection),
      loop_(loop),
      windowManager_(connection, loop),
      listeners_(std::make_shared<Listeners>(this)) {
  const auto* extension = xcb_get_extension_data(connection_.xcb(), &xcb_input_id);
  if (extension == nullptr || extension->present == 0) return;
  const XcbReply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
      connection_.xcb(), xcb_input_xi_query_version(connection_.xcb(), 2, 2), nullptr));
  // Before 2.1 a grab (of an open menu, say) hides the presses.
  if (!version || version->major_version < 2 || (version->major_version == 2 && version->minor_version < 1))
    return;
  opcode_ = extension->major_opcode;
  events_ = connection_.onEvent([this](const xcb_generic_event_t& event) { handle(event); });
}

X11EventMonitors::~X11EventMonitors() {
  listeners_->owner = nullptr;
}

Subscription X11EventMonitors::onGlobalMouseDown(std::function<void()> callback) {
  const int key = ++listeners_->lastKey;
  listeners_->global.emplace(key, std::move(callback));
  if (listeners_->global.size() == 1) select();
  return Subscription([weak = std::weak_ptr(listeners_), key] {
    const auto listeners = weak.lock();
    if (!listeners) return;
    listeners->global.erase(key);
    if (listeners->global.empty() && listeners->owner != nullptr) listeners->owner->select();
  });
}

Subscription X11EventMonitors::onceButtonsAreUp(std::function<void()> callback) {
  if (opcode_ == 0 || !isButtonHeld()) return {};
  const int key = ++listeners_->lastKey;
  listeners_->released.emplace(key, std::move(callback));
  Subscription subscription([weak = std::weak_ptr(listeners_), key] {
    const auto listeners = weak.lock();
    if (!listeners || listeners->released.erase(key) == 0) return;
    if (listeners->released.empty() && listeners->owner != nullptr) listeners->owner->select();
  });
  if (listeners_->released.size() == 1) {
    select();
    // The release may have come before anybody listened.
    if (!isButtonHeld()) subscription.cancel();
  }
  return subscription;
}

void X11EventMonitors::select() {
  if (opcode_ == 0) return;
  struct {
    xcb_input_event_mask_t head;
    std::uint32_t mask;
  } request{};
  request.head.deviceid = XCB_INPUT_DEVICE_ALL_MASTER;
  request.head.mask_len = 1;
  if (!listeners_->global.empty()) request.mask |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
  if (!listeners_->released.empty()) request.mask |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
  // Waited for, so that the very next event counts.
  const XcbReply<xcb_generic_error_t> error(xcb_request_check(
      connection_.xcb(),
      xcb_input_xi_select_events_checked(connection_.xcb(), connection_.root(), 1, &request.head)));
  if (error && !connection_.lost()) Log::write("clicks in other programs cannot be watched on this X server");
}

void X11EventMonitors::handle(const xcb_generic_event_t& event) {
  if (eventType(event) != XCB_GE_GENERIC) return;
  const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
  if (generic.extension != opcode_) return;
  if (generic.event_type == XCB_INPUT_RAW_BUTTON_RELEASE) handleRelease();
  if (generic.event_type != XCB_INPUT_RAW_BUTTON_PRESS) return;
  const auto button = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event).detail;
  constexpr std::uint32_t left = 1;
  constexpr std::uint32_t right = 3;
  if (button != left && button != right) return;
  handlePress();
}

void X11EventMonitors::handlePress() {
  std::vector<int> keys;
  for (const auto& [key, callback] : listeners_->global) keys.push_back(key);
  loop_.post([weak = std::weak_ptr(listeners_), keys = std::move(keys)] {
    const auto here = weak.lock();
    // A raw event does not say where; that is asked when the callbacks' turn comes.
    if (!here || here->owner == nullptr || here->owner->pointerIsInOwnWindow()) return;
    here->owner->windowManager_.afterwards([weak, keys] {
      for (const int key : keys) {
        const auto listeners = weak.lock();
        if (!listeners || listeners->owner == nullptr || !listeners->global.contains(key)) continue;
        const auto call = listeners->global.find(key)->second;
        call();
      }
    });
  });
}

void X11EventMonitors::handleRelease() {
  for (const auto& [key, callback] : listeners_->released) {
    loop_.post([weak = std::weak_ptr(listeners_), key = key] {
      const auto listeners = weak.lock();
      if (!listeners || listeners->owner == nullptr || !listeners->released.contains(key)) return;
      // It was one of several buttons, or has been pressed again.
      if (listeners->owner->isButtonHeld()) return;
      const auto call = listeners->released.extract(key).mapped();
      if (listeners->released.empty()) listeners->owner->select();
      call();
    });
  }
}

bool X11EventMonitors::isButtonHeld() const {
  constexpr int buttons = XCB_KEY_BUT_MASK_BUTTON_1 | XCB_KEY_BUT_MASK_BUTTON_2 | XCB_KEY_BUT_MASK_BUTTON_3;
  const auto pointer = connection_.pointer();
  return pointer && (pointer->mask & buttons) != 0;
}

bool X11EventMonitors::pointerIsInOwnWindow() const {
  const auto pointer = connection_.pointer();
  if (!pointer || pointer->child == XCB_WINDOW_NONE) return false;
  if (connection_.owns(pointer->child)) return true;
  for (QWindow* window : QGuiApplication::topLevelWindows()) {
    if (window->handle() != nullptr && window->winId() == pointer->child) return true;
  }
  return false;
}

}  // namespace pellar
