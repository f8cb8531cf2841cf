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

  // While one lives, a block posted from the main thread costs no event of the toolkit: whoever made the turn
  // calls runPosted. What is left at its end, or when a nested loop goes to sleep, is run by the toolkit
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

  // Runs the blocks of the next `turns` turns of the queue now: those posted so far, then those that they
  // posted, and so on. From the loop only.
  void runPosted(int turns);

  // Calls `prepare` each time before the loop may sleep.
  void setBeforeSleep(Callback prepare);

 private:
  class State;
  std::shared_ptr<State> state_;
};

}  // namespace pellar
