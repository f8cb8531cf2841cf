#include "platform/linux/system/SideThread.h"

#include <pthread.h>

#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <condition_variable>
#include <csignal>
#include <deque>
#include <mutex>

#include "platform/MainLoop.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t mostWaiting = 64;
constexpr auto taskFarewell = 500ms;
// A wait that the user does not notice.
constexpr auto moment = 20ms;

}  // namespace

struct SideThread::State {
  mutable std::mutex mutex;
  std::condition_variable changed;
  std::deque<std::function<void()>> waiting;
  bool running = false;
  bool ending = false;
  bool ended = false;
};

// Guarded by the state's mutex.
struct SideThread::Progress {
  bool givenUp = false;
  bool looping = false;
  bool done = false;
};

SideThread::~SideThread() {
  if (!state_) return;
  std::unique_lock lock(state_->mutex);
  state_->ending = true;
  state_->waiting.clear();
  state_->changed.notify_all();
  const bool ended = state_->changed.wait_for(lock, taskFarewell, [this] { return state_->ended; });
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

std::shared_ptr<SideThread::Progress> SideThread::begin(std::function<void()> task,
                                                        std::function<void()> whenDone) {
  start();
  auto progress = std::make_shared<Progress>();
  const bool posted =
      post([state = state_, progress, task = std::move(task), whenDone = std::move(whenDone)] {
        {
          const std::lock_guard lock(state->mutex);
          if (progress->givenUp) return;
        }
        task();
        // The one who loops cannot leave and let the loop go while this holds the lock.
        const std::lock_guard lock(state->mutex);
        progress->done = true;
        state->changed.notify_all();
        if (progress->looping && !progress->givenUp) whenDone();
      });
  return posted ? progress : nullptr;
}

bool SideThread::run(std::function<void()> task, Clock::time_point deadline) {
  const auto progress = begin(std::move(task), nullptr);
  if (!progress) return false;
  std::unique_lock lock(state_->mutex);
  progress->givenUp = !state_->changed.wait_until(lock, deadline, [&] { return progress->done; });
  return progress->done;
}

bool SideThread::runInLoop(std::function<void()> task, Clock::time_point deadline, MainLoop& loop) {
  const auto nested = std::make_shared<QEventLoop>();
  const auto progress = begin(std::move(task), [weak = std::weak_ptr(nested), &loop] {
    loop.post([weak] {
      if (const auto waiting = weak.lock()) waiting->quit();
    });
  });
  if (!progress) return false;
  {
    std::unique_lock lock(state_->mutex);
    if (state_->changed.wait_until(lock, std::min(deadline, Clock::now() + moment),
                                   [&] { return progress->done; }))
      return true;
    progress->looping = true;
  }
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
  QTimer::singleShot(std::max(left, 0ms), nested.get(), &QEventLoop::quit);
  nested->exec();
  const std::lock_guard lock(state_->mutex);
  progress->givenUp = !progress->done;
  return progress->done;
}

bool SideThread::busy() const {
  if (!state_) return false;
  const std::lock_guard lock(state_->mutex);
  return state_->running || !state_->waiting.empty();
}

}  // namespace pellar
