#pragma once

#include <memory>

#include "platform/MainLoop.h"

namespace pellar {

// The main loop over the toolkit's. Made after the application object, on its thread. Sleeps without a
// wake-up while nothing is posted and no timer is due.
class QtMainLoop final : public MainLoop {
 public:
  QtMainLoop();
  ~QtMainLoop() override;
  QtMainLoop(const QtMainLoop&) = delete;
  QtMainLoop& operator=(const QtMainLoop&) = delete;

  void post(Callback block) override;
  [[nodiscard]] Subscription after(std::chrono::milliseconds delay, Callback tick) override;
  [[nodiscard]] Subscription every(std::chrono::milliseconds interval, Callback tick) override;
  [[nodiscard]] double secondsSince1970() const override;
  [[nodiscard]] std::chrono::nanoseconds uptime() const override;

  // Runs `block` once what was posted so far has run, and what that posted, and so on: at the latest after
  // `mostTurns` turns of the queue, for a block that posts itself again must not hold it up for ever. Main
  // thread only; dropping the subscription is silence.
  [[nodiscard]] Subscription whenQuiet(Callback block);
  static constexpr int mostTurns = 8;

  // While one lives, a block posted from the main thread costs no event of the toolkit: the owner of the turn
  // calls runUntilQuiet. What is left at its end, or when a nested loop goes to sleep, is run by the toolkit
  // after all.
  class Turn {
   public:
    explicit Turn(QtMainLoop& loop);
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

   private:
    QtMainLoop& loop_;
  };

  // Runs now what was posted, what that posts, and so on, and what waits for quiet: until nothing is left, or
  // `mostTurns` turns of the queue. From the loop only.
  void runUntilQuiet();

  // Calls `prepare` each time before the loop may sleep.
  void setBeforeSleep(Callback prepare);

 private:
  class State;
  std::shared_ptr<State> state_;
};

}  // namespace pellar
