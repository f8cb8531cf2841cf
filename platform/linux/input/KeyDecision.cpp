#include "platform/linux/input/KeyDecision.h"

namespace pellar {

void KeyDecision::answer(const std::function<bool()>& question) {
  {
    const std::lock_guard lock(mutex_);
    if (state_ != State::open) return;
    state_ = State::answering;
  }
  const bool swallow = question();
  {
    const std::lock_guard lock(mutex_);
    if (state_ == State::answering) state_ = swallow ? State::swallowed : State::delivered;
  }
  changed_.notify_all();
}

bool KeyDecision::wait(std::chrono::milliseconds patience) {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, patience, [this] { return decided(); });
  if (state_ == State::open) state_ = State::delivered;
  // An answer that was begun is a moment away.
  changed_.wait(lock, [this] { return decided(); });
  return state_ == State::swallowed;
}

void KeyDecision::abandon() {
  {
    const std::lock_guard lock(mutex_);
    if (!decided()) state_ = State::delivered;
  }
  changed_.notify_all();
}

}  // namespace pellar
