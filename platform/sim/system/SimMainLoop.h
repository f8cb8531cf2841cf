#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/MainLoop.h"

namespace pellar {

// A main loop at virtual time. It starts at a constant moment; time moves only when a test moves it or a
// simulated call takes long. Everything but `post` belongs to one thread. The run functions may be called
// from a callback: that is the nested loop of a menu or a modal question.
class SimMainLoop final : public MainLoop {
 public:
  // Seconds since 1970 at uptime 0: 14 November 2023, 22:13:20 UTC.
  static constexpr double startSeconds = 1'700'000'000;

  SimMainLoop();
  ~SimMainLoop() override;
  SimMainLoop(const SimMainLoop&) = delete;
  SimMainLoop& operator=(const SimMainLoop&) = delete;

  void post(Callback block) override;
  Subscription after(std::chrono::milliseconds delay, Callback tick) override;
  Subscription every(std::chrono::milliseconds interval, Callback tick) override;
  [[nodiscard]] double secondsSince1970() const override;
  [[nodiscard]] std::chrono::nanoseconds uptime() const override { return now_; }

  // Runs what is posted and what is due, also what these bring about, without moving the clock; nothing while
  // the main thread is held up. Throws when it does not come to rest after very many callbacks.
  void runUntilIdle();
  // Runs until idle, then moves the clock on by `duration`, stopping at each timer on the way to run it.
  void advance(std::chrono::nanoseconds duration);
  // Moves the clock from timer to timer until `condition` holds; false when it does not within `limit`.
  bool runUntil(const std::function<bool()>& condition, std::chrono::nanoseconds limit);

  // The user sets the clock, on or back; uptime goes on as before.
  void setClock(std::chrono::nanoseconds by) { clockAhead_ += by; }

  // Runs `block` once, `delay` from now, without a subscription to hold.
  void later(std::chrono::milliseconds delay, Callback block);
  // Runs `block` like a posted one, but in the default mode only: while a menu or a question is open it
  // waits, as the reports of an AXObserver do whose source is in that mode alone.
  void postInDefaultMode(Callback block);
  // A menu or a question runs the loop in a mode of its own (NSEventTrackingRunLoopMode and
  // NSModalPanelRunLoopMode, NSApplication.h) until the subscription is dropped.
  [[nodiscard]] Subscription enterOtherMode();

  // The main thread is held up in a call: time passes and nothing runs. `meanwhile` is what others do at the
  // end of that time.
  void holdUp(std::chrono::nanoseconds duration, const std::function<void()>& meanwhile = {});
  [[nodiscard]] bool isHeldUp() const { return heldUp_; }

  // Drops everything posted and every timer, with what their callbacks own.
  void clear();

  // Callbacks run so far: unchanged while the program is idle.
  [[nodiscard]] std::uint64_t turns() const { return turns_; }
  [[nodiscard]] std::size_t activeTimers() const { return timers_->size(); }

 private:
  struct Timer;
  using Timers = std::map<std::pair<std::chrono::nanoseconds, std::uint64_t>, std::shared_ptr<Timer>>;

  Subscription schedule(std::chrono::nanoseconds delay, std::optional<std::chrono::nanoseconds> interval,
                        Callback tick);
  bool runPosted();
  bool runDueTimer();
  void countCallback(std::uint64_t& sinceStart);

  std::mutex postedMutex_;
  struct Posted {
    Callback block;
    bool inDefaultModeOnly = false;
  };
  std::deque<Posted> posted_;
  int otherModes_ = 0;  // entered and not left
  std::shared_ptr<Timers> timers_;
  std::uint64_t nextSequence_ = 0;
  std::chrono::nanoseconds now_{0};
  std::chrono::nanoseconds clockAhead_{0};
  bool heldUp_ = false;
  std::uint64_t turns_ = 0;
};

}  // namespace pellar
