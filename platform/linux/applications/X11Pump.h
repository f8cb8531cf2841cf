#pragma once

#include <functional>
#include <memory>

#include "platform/Subscription.h"

class QSocketNotifier;

namespace pellar {

class QtMainLoop;
class X11Applications;
class X11Connection;
class X11Mirror;

// Moves what the X server says into the mirror and on to the observers, all in the turn of the main loop in
// which it arrives: events, then one batch of reads, then notifications and what they post, then one flush.
class X11Pump {
 public:
  // `onLost` is called once, from the loop, when the connection is gone.
  X11Pump(X11Connection& connection, X11Mirror& mirror, X11Applications& applications, QtMainLoop& loop,
          std::function<void()> onLost);
  ~X11Pump();
  X11Pump(const X11Pump&) = delete;
  X11Pump& operator=(const X11Pump&) = delete;

  // Called each time before the loop may sleep: what was reported has had its effect.
  std::function<void()> onQuiet;

 private:
  void pump();
  void report();
  void beforeSleep();

  X11Connection& connection_;
  X11Mirror& mirror_;
  X11Applications& applications_;
  QtMainLoop& loop_;
  std::function<void()> onLost_;
  bool reportedLoss_ = false;
  std::unique_ptr<QSocketNotifier> notifier_;
  Subscription pumpAgain_;
};

}  // namespace pellar
