#include "app/shell/HotkeyTap.h"

#include "core/Log.h"
#include "core/Notify.h"

namespace pellar {
namespace {

// Of the modifiers that make another shortcut of it, exactly Control is held.
constexpr KeyCombination shortcut{48, KeyFlags::control | KeyFlags::option | KeyFlags::command,
                                  KeyFlags::control};

}  // namespace

HotkeyTap::HotkeyTap(EventTaps& taps, MainLoop& loop) : taps_(taps), loop_(loop) {}

void HotkeyTap::start() {
  tap_ = taps_.tapKeyDowns(shortcut, [this](const TapEvent& event) { return handle(event); });
  if (!tap_) Log::write("event tap creation failed");
}

bool HotkeyTap::handle(const TapEvent& event) {
  if (event.type != TapEvent::Type::keyDown) {
    if (tap_) tap_->enable();
    return false;
  }
  if (!shortcut.matches(event) || !isActive()) return false;
  // The session's input does not wait for what the strip has to do.
  const bool forward = (event.flags & KeyFlags::shift) == 0;
  loop_.post([this, alive = alive_.watch(), forward] {
    if (!alive) return;
    notify(onCycle, forward);
  });
  return true;
}

}  // namespace pellar
