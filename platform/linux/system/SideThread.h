#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <type_traits>
#include <utility>

namespace pellar {

class MainLoop;

// A thread for what may hang: another program that does not answer, a file system that is away. It runs one
// task after another, and a caller waits no longer than he says. It starts with its first task and sleeps
// between tasks. Asked from one thread only.
class SideThread {
 public:
  using Clock = std::chrono::steady_clock;

  SideThread() = default;
  // Waits a moment for the task under way; one that hangs is left behind.
  ~SideThread();
  SideThread(const SideThread&) = delete;
  SideThread& operator=(const SideThread&) = delete;

  // Has a task run and does not wait for it. False when too many are waiting already.
  bool post(std::function<void()> task);
  // Has a task run and waits for its end. False when the time is up first: a task that has begun by then
  // still goes on to its end, so that it refers to nothing that may be gone; one that has not is dropped.
  bool run(std::function<void()> task, Clock::time_point deadline);
  // The same for a task with an answer; absent when it is late.
  template <class Question>
  std::optional<std::invoke_result_t<Question>> ask(Question question, Clock::time_point deadline) {
    const auto answer = std::make_shared<std::optional<std::invoke_result_t<Question>>>();
    if (!run([answer, question = std::move(question)] { *answer = question(); }, deadline))
      return std::nullopt;
    return std::move(*answer);
  }
  // The two with patience: when an answer takes longer than a moment, the main loop runs nested until it is
  // there, so that nothing but the caller waits. Needs the toolkit's application object.
  bool runInLoop(std::function<void()> task, Clock::time_point deadline, MainLoop& loop);
  template <class Question>
  std::optional<std::invoke_result_t<Question>> askInLoop(Question question, Clock::time_point deadline,
                                                          MainLoop& loop) {
    const auto answer = std::make_shared<std::optional<std::invoke_result_t<Question>>>();
    if (!runInLoop([answer, question = std::move(question)] { *answer = question(); }, deadline, loop))
      return std::nullopt;
    return std::move(*answer);
  }
  // Whether a task is under way or waiting.
  [[nodiscard]] bool busy() const;

 private:
  struct State;
  struct Progress;
  static void work(const std::shared_ptr<State>& state);
  void start();
  // Has a task run with its progress told; null when too many are waiting. `whenDone` is called on the thread
  // when the task ends while somebody loops for it.
  std::shared_ptr<Progress> begin(std::function<void()> task, std::function<void()> whenDone);

  std::shared_ptr<State> state_;  // null before the first task
  std::thread thread_;
};

}  // namespace pellar
