#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "platform/MainLoop.h"
#include "platform/Subscription.h"

namespace pellar {

// A few tries after something was refused, and then none: what stays refused is not polled. Main thread only.
class RetrySeries {
 public:
  // `marks` say when to try again, counted from the first refusal and rising. A try that took long puts the
  // next one off: between two there is at least the first mark.
  RetrySeries(MainLoop& loop, std::vector<std::chrono::milliseconds> marks, std::function<void()> attempt);

  // It was refused, for the first time or again.
  void refused();
  // It succeeded, or is of no interest any more. The next refusal begins a new series.
  void end();

 private:
  MainLoop& loop_;
  std::vector<std::chrono::milliseconds> marks_;
  std::function<void()> attempt_;
  std::optional<std::chrono::nanoseconds> firstRefusal_;
  std::size_t made_ = 0;
  bool waiting_ = false;
  Subscription timer_;
};

}  // namespace pellar
