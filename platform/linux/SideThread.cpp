#include "platform/linux/SideThread.h"

#include <pthread.h>

#include <condition_variable>
#include <csignal>
#include <deque>
#include <mutex>

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t mostWaiting = 64;
constexpr auto farewell = 500ms;

}  // namespace

struct SideThread::State {
  mutable std::mutex mutex;
  std::condition_variable changed;
  std::deque<std::function<void()>> waiting;
  bool running = false;
  bool ending = false;
  bool ended = false;
};

SideThread::~SideThread() {
  if (!state_) return;
  std::unique_lock lock(state_->mutex);
  state_->ending = true;
  state_->waiting.clear();
  state_->changed.notify_all();
  const bool ended = state_->changed.wait_for(lock, farewell, [this] { return state_->ended; });
  lock.unlock();
  if (ended) {
    thread_.join();
  } else {
    thread_.detach();
  }
}

void SideThread::start() {
  if (state_) return;
  state_ = std::make_shared<State>();
  // Signals are the main thread's.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  thread_ = std::thread([state = state_] { work(state); });
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void SideThread::work(const std::shared_ptr<State>& state) {
  std::unique_lock lock(state->mutex);
  for (;;) {
    state->changed.wait(lock, [&] { return state->ending || !state->waiting.empty(); });
    if (state->ending) break;
    auto task = std::move(state->waiting.front());
    state->waiting.pop_front();
    state->running = true;
    lock.unlock();
    task();
    task = nullptr;
    lock.lock();
    state->running = false;
  }
  state->ended = true;
  state->changed.notify_all();
}

bool SideThread::post(std::function<void()> task) {
  start();
  const std::lock_guard lock(state_->mutex);
  if (state_->waiting.size() >= mostWaiting) return false;
  state_->waiting.push_back(std::move(task));
  state_->changed.notify_all();
  return true;
}

bool SideThread::run(std::function<void()> task, Clock::time_point deadline) {
  struct Progress {
    bool givenUp = false;
    bool done = false;
  };
  start();
  const auto progress = std::make_shared<Progress>();  // guarded by the state's mutex
  const auto posted = post([state = state_, progress, task = std::move(task)] {
    {
      const std::lock_guard lock(state->mutex);
      if (progress->givenUp) return;
    }
    task();
    const std::lock_guard lock(state->mutex);
    progress->done = true;
    state->changed.notify_all();
  });
  if (!posted) return false;
  std::unique_lock lock(state_->mutex);
  progress->givenUp = !state_->changed.wait_until(lock, deadline, [&] { return progress->done; });
  return progress->done;
}

bool SideThread::busy() const {
  if (!state_) return false;
  const std::lock_guard lock(state_->mutex);
  return state_->running || !state_->waiting.empty();
}

}  // namespace pellar
