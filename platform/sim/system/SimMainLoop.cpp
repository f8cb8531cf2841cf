#include "platform/sim/system/SimMainLoop.h"

#include <algorithm>
#include <stdexcept>

namespace pellar {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

namespace {

constexpr std::uint64_t endlessLoopLimit = 200'000;

}  // namespace

struct SimMainLoop::Timer {
  std::pair<nanoseconds, std::uint64_t> key;
  std::optional<nanoseconds> interval;
  Callback tick;
};

SimMainLoop::SimMainLoop() : timers_(std::make_shared<Timers>()) {}

SimMainLoop::~SimMainLoop() {
  clear();
}

void SimMainLoop::clear() {
  // A callback's captures may own a subscription of this loop, so they go while the loop's members still
  // stand.
  std::deque<Posted> posted;
  {
    const std::lock_guard lock(postedMutex_);
    posted.swap(posted_);
  }
  const Timers timers = std::exchange(*timers_, {});
}

void SimMainLoop::post(Callback block) {
  const std::lock_guard lock(postedMutex_);
  posted_.push_back({std::move(block)});
}

void SimMainLoop::later(milliseconds delay, Callback block) {
  // The timer's own callback keeps its subscription, so it lives until it has fired.
  auto timer = std::make_shared<Subscription>();
  *timer = after(delay, [timer, block = std::move(block)] { block(); });
}

void SimMainLoop::postInDefaultMode(Callback block) {
  const std::lock_guard lock(postedMutex_);
  posted_.push_back({std::move(block), true});
}

Subscription SimMainLoop::enterOtherMode() {
  ++otherModes_;
  return Subscription([this] { --otherModes_; });
}

Subscription SimMainLoop::after(milliseconds delay, Callback tick) {
  return schedule(std::max(delay, milliseconds(0)), std::nullopt, std::move(tick));
}

Subscription SimMainLoop::every(milliseconds interval, Callback tick) {
  // Like the system's timers, which never repeat without any pause.
  const nanoseconds step = std::max(interval, milliseconds(1));
  return schedule(step, step, std::move(tick));
}

Subscription SimMainLoop::schedule(nanoseconds delay, std::optional<nanoseconds> interval, Callback tick) {
  auto timer = std::make_shared<Timer>(Timer{{now_ + delay, nextSequence_++}, interval, std::move(tick)});
  timers_->emplace(timer->key, timer);
  return Subscription([timers = std::weak_ptr(timers_), weak = std::weak_ptr(timer)] {
    const auto list = timers.lock();
    const auto ended = weak.lock();
    if (!ended) return;
    ended->interval.reset();
    if (list) list->erase(ended->key);
  });
}

double SimMainLoop::secondsSince1970() const {
  return startSeconds + std::chrono::duration<double>(now_ + clockAhead_).count();
}

bool SimMainLoop::runPosted() {
  Callback block;
  {
    const std::lock_guard lock(postedMutex_);
    const auto next = std::ranges::find_if(
        posted_, [this](const Posted& each) { return !each.inDefaultModeOnly || otherModes_ == 0; });
    if (next == posted_.end()) return false;
    block = std::move(next->block);
    posted_.erase(next);
  }
  ++turns_;
  block();
  return true;
}

bool SimMainLoop::runDueTimer() {
  if (timers_->empty() || timers_->begin()->first.first > now_) return false;
  const auto timer = timers_->begin()->second;
  timers_->erase(timers_->begin());
  if (timer->interval) {
    // Ticks missed while the thread was held up are left out, not made up for.
    auto next = timer->key.first + *timer->interval;
    if (next <= now_) next = now_ + *timer->interval - (now_ - timer->key.first) % *timer->interval;
    timer->key = {next, nextSequence_++};
    timers_->emplace(timer->key, timer);
  }
  ++turns_;
  timer->tick();
  return true;
}

void SimMainLoop::countCallback(std::uint64_t& sinceStart) {
  if (++sinceStart > endlessLoopLimit) throw std::runtime_error("the main loop never comes to rest");
}

void SimMainLoop::holdUp(nanoseconds duration, const std::function<void()>& meanwhile) {
  now_ += duration;
  if (!meanwhile) return;
  const bool before = std::exchange(heldUp_, true);
  meanwhile();
  heldUp_ = before;
}

void SimMainLoop::runUntilIdle() {
  if (heldUp_) return;
  std::uint64_t callbacks = 0;
  while (runPosted() || runDueTimer()) countCallback(callbacks);
}

void SimMainLoop::advance(nanoseconds duration) {
  const nanoseconds end = now_ + duration;
  runUntilIdle();
  while (!timers_->empty() && timers_->begin()->first.first <= end) {
    now_ = std::max(now_, timers_->begin()->first.first);
    runUntilIdle();
  }
  now_ = std::max(now_, end);
}

bool SimMainLoop::runUntil(const std::function<bool()>& condition, nanoseconds limit) {
  const nanoseconds end = now_ + limit;
  std::uint64_t callbacks = 0;
  while (!condition()) {
    if (runPosted() || runDueTimer()) {
      countCallback(callbacks);
      continue;
    }
    if (timers_->empty() || timers_->begin()->first.first > end) {
      now_ = std::max(now_, end);
      return condition();
    }
    now_ = timers_->begin()->first.first;
  }
  return true;
}

}  // namespace pellar
