#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace pellar {

// What becomes of one key press that the session's input waits for. One thread asks and waits, the main
// thread answers. The first of the two decides: a question that the asking thread has given up is not put at
// all, so that no key is both acted on and delivered.
class KeyDecision {
 public:
  // Main thread: puts the question and hands over the answer (true: swallow).
  void answer(const std::function<bool()>& question);
  // The waiting thread, once: true when the key is to be swallowed; false when it is to be delivered, also
  // when the main thread did not begin to answer within `patience`.
  [[nodiscard]] bool wait(std::chrono::milliseconds patience);
  // Any thread: there will be no answer; the waiting thread delivers the key.
  void abandon();

 private:
  enum class State { open, answering, swallowed, delivered };
  [[nodiscard]] bool decided() const { return state_ == State::swallowed || state_ == State::delivered; }

  std::mutex mutex_;
  std::condition_variable changed_;
  State state_ = State::open;  // guarded by mutex_
};

}  // namespace pellar
