#pragma once

#include <functional>
#include <memory>

#include "core/Alive.h"
#include "platform/EventTap.h"
#include "platform/MainLoop.h"
#include "platform/Subscription.h"

namespace pellar {

// The shortcut of the whole session: Control-Tab goes to the next tab, Control-Shift-Tab to the previous one.
// A key that is not acted on reaches the application in front as if there were no tap. It alone knows whether
// the tap may listen: only while the shortcut acts, and never while the main thread waits for another program
// or the user, since each key of the session would wait with it. Main thread only.
class HotkeyTap {
 public:
  // Both outlive the tap.
  HotkeyTap(EventTaps& taps, MainLoop& loop);

  // Whether the shortcut acts now. Asked while the session's input waits.
  std::function<bool()> isActive = [] { return false; };
  std::function<void(bool forward)> onCycle = [](bool) {};

  // Installs the tap, for as long as this lives. Where the system refuses it, the program runs on without the
  // shortcut.
  void start();

  // What `isActive` answers may have changed.
  void activityChanged();
  // The tap is at rest for as long as the result lives: around calls in which the main thread waits for
  // another program or for the user. The shortcut reaches the application in front meanwhile.
  [[nodiscard]] Subscription rest();

 private:
  bool handle(const TapEvent& event);
  [[nodiscard]] bool mayListen() const;
  void listenOrRest();

  EventTaps& taps_;
  MainLoop& loop_;
  Alive alive_;
  int rests_ = 0;
  bool listens_ = false;  // the tap was told so last
  std::unique_ptr<EventTap> tap_;
};

}  // namespace pellar
