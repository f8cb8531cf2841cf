#include "platform/mac/input/MacEventTaps.h"

#include <ApplicationServices/ApplicationServices.h>

#include <chrono>
#include <optional>
#include <utility>

#include "platform/mac/applications/AccessibilityChanges.h"
#include "platform/mac/system/CFRef.h"

namespace pellar {
namespace {

// From the news that a permission changed until the process can see it of its own.
constexpr std::chrono::milliseconds permissionDelay{500};

std::optional<TapEvent> tapEvent(CGEventType type, CGEventRef event) {
  switch (type) {
    // The system takes a tap out whose callback was slow, or while the user must be heard first, and tells it
    // so with an event that was not asked for (CGEventTypes.h).
    case kCGEventTapDisabledByTimeout:
      return TapEvent{.type = TapEvent::Type::disabledByTimeout};
    case kCGEventTapDisabledByUserInput:
      return TapEvent{.type = TapEvent::Type::disabledByUserInput};
    case kCGEventKeyDown:
      return TapEvent{
          .type = TapEvent::Type::keyDown,
          .keyCode = static_cast<std::uint16_t>(CGEventGetIntegerValueField(event, kCGKeyboardEventKeycode)),
          .flags = CGEventGetFlags(event)};
    default:
      return std::nullopt;
  }
}

// While a program has secure input on (a password field), the system shows key presses to no tap at all; they
// reach the application, and there is nothing to put back to work.
//
// The user may take the permission back while the tap is there. The system then goes on showing it key
// presses but takes none of them back until it disables the tap; a tap put back to work each time would leave
// the session without a keyboard (github.com/JitouchApp/Jitouch/pull/6, github.com/cjpais/Handy/issues/1281).
// So it works just as long as the process is trusted.
class MacEventTap final : public EventTap {
 public:
  static std::unique_ptr<MacEventTap> make(MainLoop& loop, EventTaps::Handler handler) {
    std::unique_ptr<MacEventTap> made(new MacEventTap(loop, std::move(handler)));
    made->port_ = CFRef<CFMachPortRef>::adopt(
        CGEventTapCreate(kCGSessionEventTap, kCGHeadInsertEventTap, kCGEventTapOptionDefault,
                         CGEventMaskBit(kCGEventKeyDown), &received, made.get()));
    if (!made->port_) return nullptr;
    made->source_ = CFRef<CFRunLoopSourceRef>::adopt(
        CFMachPortCreateRunLoopSource(kCFAllocatorDefault, made->port_.get(), 0));
    if (!made->source_) return nullptr;
    CFRunLoopAddSource(CFRunLoopGetMain(), made->source_.get(), kCFRunLoopCommonModes);
    CGEventTapEnable(made->port_.get(), true);
    made->followPermission();
    return made;
  }

  ~MacEventTap() override {
    if (!port_) return;
    // In this order: a tap that is still enabled while the loop does not read its port holds up the session's
    // keys.
    CGEventTapEnable(port_.get(), false);
    if (source_) CFRunLoopRemoveSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
    CFMachPortInvalidate(port_.get());
  }
  MacEventTap(const MacEventTap&) = delete;
  MacEventTap& operator=(const MacEventTap&) = delete;

  void setListening(bool listens) override {
    listens_ = listens;
    apply();
  }

 private:
  MacEventTap(MainLoop& loop, EventTaps::Handler handler)
      : loop_(loop), handler_(std::make_shared<const EventTaps::Handler>(std::move(handler))) {}

  void apply() { CGEventTapEnable(port_.get(), listens_ && AXIsProcessTrusted()); }

  void followPermission() {
    permission_ =
        onAccessibilityChanged([this] { recheck_ = loop_.after(permissionDelay, [this] { apply(); }); });
  }

  // Null swallows the event; the event itself, on which no reference is taken, passes it on.
  static CGEventRef received(CGEventTapProxy, CGEventType type, CGEventRef event, void* context) {
    if (context == nullptr) return event;
    const auto seen = tapEvent(type, event);
    if (!seen) return event;
    // The handler may drop the tap.
    const auto handler = static_cast<const MacEventTap*>(context)->handler_;
    bool swallowed = false;
    @autoreleasepool {
      swallowed = (*handler)(*seen);
    }
    return swallowed && seen->type == TapEvent::Type::keyDown ? nullptr : event;
  }

  MainLoop& loop_;
  std::shared_ptr<const EventTaps::Handler> handler_;
  bool listens_ = true;
  CFRef<CFMachPortRef> port_;
  CFRef<CFRunLoopSourceRef> source_;
  Subscription recheck_;     // depends-on: port_
  Subscription permission_;  // depends-on: recheck_
};

}  // namespace

// The system taps kinds of events, not single keys: the handler sees every press.
std::unique_ptr<EventTap> MacEventTaps::tapKeyDowns(const KeyCombination&, Handler handler) {
  return MacEventTap::make(loop_, std::move(handler));
}

}  // namespace pellar
