#include "platform/linux/system/QtMainLoop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QTimerEvent>
#include <algorithm>
#include <deque>
#include <limits>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace pellar {
namespace {

const QEvent::Type postedBlocks = static_cast<QEvent::Type>(QEvent::registerEventType());

// The toolkit counts a timer's milliseconds in an int (24 days); longer waits are made of several.
constexpr std::chrono::milliseconds longestPart{std::numeric_limits<int>::max() / 2};

}  // namespace

class QtMainLoop::State final : public QObject {
 public:
  explicit State(std::thread::id mainThread) : mainThread_(mainThread) {
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                     [this] {
                       if (beforeSleep) beforeSleep();
                       wakeForRest();
                     });
  }

  void post(Callback block) {
    const std::lock_guard lock(mutex_);
    queue_.push_back(std::move(block));
    // The turns are the main thread's: another one may not look at them.
    if (std::this_thread::get_id() != mainThread_ || turns == 0) wake();
  }

  int waitForQuiet(Callback block) {
    waiting_.push_back({++lastKey_, 0, std::move(block)});
    if (turns == 0) {
      const std::lock_guard lock(mutex_);
      wake();
    }
    return waiting_.back().key;
  }

  void dropWaiting(int key) {
    const auto found = std::find_if(waiting_.begin(), waiting_.end(),
                                    [key](const Waiting& waiting) { return waiting.key == key; });
    if (found != waiting_.end()) waiting_.erase(found);
  }

  // One turn of the queue, and what may run after it.
  void runTurn() {
    runPosted();
    for (Waiting& waiting : waiting_) ++waiting.turns;
    while (!waiting_.empty() && (size() == 0 || waiting_.front().turns >= mostTurns)) {
      const Callback block = std::move(waiting_.front().block);
      waiting_.pop_front();
      block();
    }
  }

  [[nodiscard]] bool isQuiet() { return waiting_.empty() && size() == 0; }

  void runPosted() {
    for (std::size_t count = size(); count > 0; --count) {
      Callback block;
      {
        const std::lock_guard lock(mutex_);
        // A nested loop inside a block may have run the rest already.
        if (queue_.empty()) return;
        block = std::move(queue_.front());
        queue_.pop_front();
      }
      block();
    }
  }

  void wakeForRest() {
    const std::lock_guard lock(mutex_);
    if (!queue_.empty() || !waiting_.empty()) wake();
  }

  int start(std::chrono::milliseconds interval, bool repeats, Callback tick) {
    const int key = ++lastKey_;
    auto timer = std::make_shared<Timer>();
    timer->interval = std::max(interval, std::chrono::milliseconds(repeats ? 1 : 0));
    timer->repeats = repeats;
    timer->tick = std::move(tick);
    timers_[key] = timer;
    arm(key, *timer, timer->interval);
    return key;
  }

  void stop(int key) {
    const auto found = timers_.find(key);
    if (found == timers_.end()) return;
    killTimer(found->second->id);
    keys_.erase(found->second->id);
    timers_.erase(found);
  }

  Callback beforeSleep;
  int turns = 0;

 protected:
  bool event(QEvent* event) override {
    if (event->type() != postedBlocks) return QObject::event(event);
    {
      const std::lock_guard lock(mutex_);
      woken_ = false;
    }
    runTurn();
    wakeForRest();
    return true;
  }

  void timerEvent(QTimerEvent* event) override {
    const auto key = keys_.find(event->timerId());
    if (key == keys_.end()) return;
    const int timerKey = key->second;
    const auto timer = timers_.at(timerKey);
    if (timer->remaining > std::chrono::milliseconds::zero()) {
      rearm(timerKey, *timer, timer->remaining);
      return;
    }
    if (!timer->repeats) {
      stop(timerKey);
    } else if (timer->interval > longestPart) {
      rearm(timerKey, *timer, timer->interval);
    }
    timer->tick();
  }

 private:
  struct Waiting {
    int key;
    int turns;  // of the queue, since it began to wait
    Callback block;
  };
  struct Timer {
    std::chrono::milliseconds interval{};
    std::chrono::milliseconds remaining{};
    bool repeats = false;
    Callback tick;
    int id = 0;
  };

  std::size_t size() {
    const std::lock_guard lock(mutex_);
    return queue_.size();
  }

  void wake() {
    if (!std::exchange(woken_, true)) QCoreApplication::postEvent(this, new QEvent(postedBlocks));
  }

  void arm(int key, Timer& timer, std::chrono::milliseconds wait) {
    const auto part = std::min(wait, longestPart);
    timer.remaining = wait - part;
    timer.id = startTimer(static_cast<int>(part.count()), Qt::PreciseTimer);
    keys_[timer.id] = key;
  }

  void rearm(int key, Timer& timer, std::chrono::milliseconds wait) {
    killTimer(timer.id);
    keys_.erase(timer.id);
    arm(key, timer, wait);
  }

  const std::thread::id mainThread_;
  std::mutex mutex_;
  std::deque<Callback> queue_;  // guarded by mutex_, as woken_
  bool woken_ = false;
  std::deque<Waiting> waiting_;  // for quiet
  int lastKey_ = 0;
  std::map<int, std::shared_ptr<Timer>> timers_;
  std::map<int, int> keys_;  // by the toolkit's identifier
};

QtMainLoop::QtMainLoop() : state_(std::make_shared<State>(std::this_thread::get_id())) {}

QtMainLoop::~QtMainLoop() = default;

void QtMainLoop::post(Callback block) {
  state_->post(std::move(block));
}

Subscription QtMainLoop::after(std::chrono::milliseconds delay, Callback tick) {
  const int key = state_->start(delay, false, std::move(tick));
  return Subscription([state = std::weak_ptr(state_), key] {
    if (const auto alive = state.lock()) alive->stop(key);
  });
}

Subscription QtMainLoop::every(std::chrono::milliseconds interval, Callback tick) {
  const int key = state_->start(interval, true, std::move(tick));
  return Subscription([state = std::weak_ptr(state_), key] {
    if (const auto alive = state.lock()) alive->stop(key);
  });
}

double QtMainLoop::secondsSince1970() const {
  return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

std::chrono::nanoseconds QtMainLoop::uptime() const {
  return std::chrono::steady_clock::now().time_since_epoch();
}

Subscription QtMainLoop::whenQuiet(Callback block) {
  const int key = state_->waitForQuiet(std::move(block));
  return Subscription([state = std::weak_ptr(state_), key] {
    if (const auto alive = state.lock()) alive->dropWaiting(key);
  });
}

void QtMainLoop::runUntilQuiet() {
  for (int turn = 0; turn < mostTurns && !state_->isQuiet(); ++turn) state_->runTurn();
}

void QtMainLoop::setBeforeSleep(Callback prepare) {
  state_->beforeSleep = std::move(prepare);
}

QtMainLoop::Turn::Turn(QtMainLoop& loop) : loop_(loop) {
  ++loop_.state_->turns;
}

QtMainLoop::Turn::~Turn() {
  if (--loop_.state_->turns == 0) loop_.state_->wakeForRest();
}

}  // namespace pellar
