#pragma once

#include <chrono>
#include <functional>

#include "platform/Subscription.h"

namespace pellar {

// The main run loop, its queue, its timers and its clock.
//
// Every callback runs on the main thread, from the loop, never inside the call that registered it. Timers and
// posted blocks also run inside the nested loops of menus and modal questions.
class MainLoop {
 public:
  using Callback = std::function<void()>;

  virtual ~MainLoop() = default;

  // Runs `block` on the next turn of the main queue, in the order of posting. May be called from any thread.
  virtual void post(Callback block) = 0;

  // Runs `tick` once, `delay` from now, unless the subscription is dropped before. An idle timer costs no
  // wake-up.
  [[nodiscard]] virtual Subscription after(std::chrono::milliseconds delay, Callback tick) = 0;

  // Runs `tick` every `interval` until the subscription is dropped; the first time one interval from now.
  [[nodiscard]] virtual Subscription every(std::chrono::milliseconds interval, Callback tick) = 0;

  // Wall-clock time in seconds since 1970-01-01 UTC.
  [[nodiscard]] virtual double secondsSince1970() const = 0;

  // Time since an arbitrary start; never goes back.
  [[nodiscard]] virtual std::chrono::nanoseconds uptime() const = 0;
};

}  // namespace pellar
