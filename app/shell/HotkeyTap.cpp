#include "app/shell/HotkeyTap.h"

#include "core/Log.h"
#include "core/Notify.h"
#include "platform/VirtualKey.h"

namespace pellar {
namespace {

// Of the modifiers that make another shortcut of it, exactly Control is held.
constexpr KeyCombination shortcut{VirtualKey::tab, KeyFlags::control | KeyFlags::option | KeyFlags::command,
                                  KeyFlags::control};

}  // namespace

HotkeyTap::HotkeyTap(EventTaps& taps, MainLoop& loop) : taps_(taps), loop_(loop) {}

void HotkeyTap::start() {
  tap_ = taps_.tapKeyDowns(shortcut, [this](const TapEvent& event) { return handle(event); });
  if (!tap_) return Log::write("event tap creation failed");
  listenOrRest();
}

void HotkeyTap::activityChanged() {
  if (listens_ != mayListen()) listenOrRest();
}

bool HotkeyTap::mayListen() const {
  return rests_ == 0 && isActive();
}

void HotkeyTap::listenOrRest() {
  if (!tap_) return;
  listens_ = mayListen();
  tap_->setListening(listens_);
}

Subscription HotkeyTap::rest() {
  ++rests_;
  activityChanged();
  return Subscription([this, alive = alive_.watch()] {
    if (!alive) return;
    --rests_;
    activityChanged();
  });
}

bool HotkeyTap::handle(const TapEvent& event) {
  if (event.type != TapEvent::Type::keyDown) {
    listenOrRest();
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
