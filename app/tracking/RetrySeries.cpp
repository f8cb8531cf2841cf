#include "app/tracking/RetrySeries.h"

#include <algorithm>
#include <utility>

#include "core/Notify.h"

namespace pellar {

RetrySeries::RetrySeries(MainLoop& loop, std::vector<std::chrono::milliseconds> marks,
                         std::function<void()> attempt)
    : loop_(loop), marks_(std::move(marks)), attempt_(std::move(attempt)) {}

void RetrySeries::refused() {
  const auto now = loop_.uptime();
  if (!firstRefusal_) firstRefusal_ = now;
  if (waiting_ || made_ == marks_.size()) return;
  const auto due = std::max<std::chrono::nanoseconds>(*firstRefusal_ + marks_[made_], now + marks_.front());
  ++made_;
  waiting_ = true;
  timer_ = loop_.after(std::chrono::ceil<std::chrono::milliseconds>(due - now), [this] {
    waiting_ = false;
    notify(attempt_);
  });
}

void RetrySeries::end() {
  firstRefusal_.reset();
  made_ = 0;
  waiting_ = false;
  timer_ = {};
}

}  // namespace pellar
