#include "platform/linux/documents/WindowDocuments.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <iterator>
#include <mutex>
#include <utility>

#include "core/FileUrl.h"
#include "platform/MainLoop.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// A title that changes without pause is looked up no more often than this.
constexpr std::chrono::milliseconds pause = 250ms;
// A window without a document may have got one under the same title.
constexpr std::chrono::nanoseconds staleness = 30s;
// One with a document may show another of that name, saved to another folder.
constexpr std::chrono::nanoseconds restlessness = 1s;

constexpr std::size_t manyWindows = 64;

}  // namespace

struct WindowDocuments::Question {
  xcb_window_t window;
  std::uint64_t number;
  std::string title;
  std::optional<ProcessId> process;
  SideThread::Clock::time_point askedAt;
};

// Where questions wait for the thread, and answers for the main loop.
class WindowDocuments::Desk {
 public:
  struct Answer {
    xcb_window_t window;
    std::uint64_t number;
    std::optional<std::string> path;
  };

  // Of different windows. Those asked first are answered before all others. True when somebody has to begin
  // to answer.
  bool ask(std::vector<Question> questions, bool first) {
    const std::lock_guard lock(mutex_);
    for (const auto& each : questions) {
      // A window's older question is no longer meant. One line or the other is empty unless files are away.
      const auto isOlder = [&](const Question& older) { return older.window == each.window; };
      if (!isIdle_) std::erase_if(first_, isOlder);
      if (!isIdle_) std::erase_if(others_, isOlder);
    }
    auto& line = first ? first_ : others_;
    line.insert(line.end(), std::move_iterator(questions.begin()), std::move_iterator(questions.end()));
    return std::exchange(isIdle_, false);
  }

  // Answers until nothing is asked any more. `whenReady` is called when there are answers to be taken, once
  // until they are.
  void work(const MakeLookUp& makeLookUp, const std::function<void()>& whenReady) {
    LookUp lookUp;
    SideThread::Clock::time_point madeAt;
    std::unique_lock lock(mutex_);
    while (!first_.empty() || !others_.empty()) {
      isFirst_ = !first_.empty();
      auto& line = isFirst_ ? first_ : others_;
      const Question question = std::move(line.front());
      line.pop_front();
      lock.unlock();
      // What was read before the question may have changed with the window's title.
      if (!lookUp || question.askedAt > madeAt) {
        madeAt = SideThread::Clock::now();
        lookUp = makeLookUp();
      }
      auto path = lookUp(question.title, question.process);
      lock.lock();
      isFirst_ = false;
      answers_.push_back({question.window, question.number, std::move(path)});
      if (first_.empty()) changed_.notify_all();
      if (std::exchange(told_, true)) continue;
      lock.unlock();
      whenReady();
      lock.lock();
    }
    isIdle_ = true;
  }

  // Until what was asked first is answered; false when the time is up before.
  bool wait(SideThread::Clock::time_point deadline) {
    std::unique_lock lock(mutex_);
    told_ = true;  // the one who waits takes them
    return changed_.wait_until(lock, deadline, [this] { return isThroughWithFirst(); });
  }
  // The answers, and whether there will be others to what was asked first.
  std::pair<std::vector<Answer>, bool> takeAnswers() {
    const std::lock_guard lock(mutex_);
    told_ = false;
    return {std::exchange(answers_, {}), !isThroughWithFirst()};
  }
  // Whoever asked is gone.
  void close() {
    const std::lock_guard lock(mutex_);
    first_.clear();
    others_.clear();
  }

 private:
  [[nodiscard]] bool isThroughWithFirst() const { return first_.empty() && !isFirst_; }

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Question> first_;
  std::deque<Question> others_;
  std::vector<Answer> answers_;
  bool isIdle_ = true;
  bool isFirst_ = false;  // what is being looked up
  bool told_ = false;     // that there are answers
};

WindowDocuments::WindowDocuments(MainLoop& loop, MakeLookUp makeLookUp,
                                 std::function<void(xcb_window_t)> onFound,
                                 std::chrono::milliseconds patience)
    : loop_(loop),
      makeLookUp_(std::move(makeLookUp)),
      onFound_(std::move(onFound)),
      patience_(patience),
      manyKnown_(manyWindows),
      desk_(std::make_shared<Desk>()) {}

WindowDocuments::~WindowDocuments() {
  desk_->close();
}

void WindowDocuments::lookUp(std::vector<Shown> windows) {
  std::vector<Question> questions;
  questions.reserve(windows.size());
  for (auto& each : windows) {
    const auto [entry, isNew] = known_.try_emplace(each.window);
    if (!isNew) continue;
    entry->second.title = std::move(each.title);
    entry->second.process = each.process;
    questions.push_back(questionOf(each.window, entry->second));
  }
  askAndWait(std::move(questions));
}

std::optional<std::string> WindowDocuments::document(xcb_window_t window, const std::string& title,
                                                     std::optional<ProcessId> process) {
  const auto [entry, isNew] = known_.try_emplace(window);
  Known& known = entry->second;
  if (isNew || known.title != title || known.process != process) {
    // What is read of a new window, or of one that showed a file, is acted on in the same turn.
    const bool isAwaited = isNew || known.url;
    known.title = title;
    known.process = process;
    known.url.reset();
    known.answered = false;
    if (isAwaited) {
      std::vector<Question> questions;
      questions.push_back(questionOf(window, known));
      askAndWait(std::move(questions));
    } else {
      askWhenDue(window, known);
    }
  } else if (known.answered && loop_.uptime() - known.askedAt > (known.url ? restlessness : staleness)) {
    askLater(window, known);
  }
  return known.url;
}

WindowDocuments::Question WindowDocuments::questionOf(xcb_window_t window, Known& known) {
  known.question = ++lastQuestion_;
  known.askedAt = loop_.uptime();
  known.answered = false;
  return {window, known.question, known.title, known.process, SideThread::Clock::now()};
}

void WindowDocuments::askAndWait(std::vector<Question> questions) {
  if (questions.empty()) return;
  std::vector<xcb_window_t> windows;
  windows.reserve(questions.size());
  for (const auto& each : questions) windows.push_back(each.window);
  ask(std::move(questions), true);
  // Behind a look-up that hangs there is no use in waiting.
  if (late_) return;
  if (!waitsUntil_) {
    waitsUntil_ = SideThread::Clock::now() + patience_;
    loop_.post([this, alive = alive_.watch()] {
      if (alive) waitsUntil_.reset();
    });
  }
  for (const auto window : windows) known_.at(window).awaited = true;
  late_ = !desk_->wait(*waitsUntil_);
  takeAnswers();
  for (const auto window : windows) known_.at(window).awaited = false;
}

void WindowDocuments::askWhenDue(xcb_window_t window, Known& known) {
  const auto since = std::chrono::duration_cast<std::chrono::milliseconds>(loop_.uptime() - known.askedAt);
  if (since >= pause) return askLater(window, known);
  known.question = ++lastQuestion_;
  if (known.later.active()) return;
  known.later = loop_.after(pause - since, [this, window] {
    const auto found = known_.find(window);
    if (found == known_.end()) return;
    found->second.later.cancel();
    askLater(window, found->second);
  });
}

// All that is asked in a turn goes out together.
void WindowDocuments::askLater(xcb_window_t window, Known& known) {
  if (unasked_.empty()) {
    loop_.post([this, alive = alive_.watch()] {
      if (alive) ask(std::exchange(unasked_, {}), false);
    });
  }
  unasked_.push_back(questionOf(window, known));
}

void WindowDocuments::ask(std::vector<Question> questions, bool first) {
  if (!desk_->ask(std::move(questions), first)) return;
  const auto takeInLoop = [this, alive = alive_.watch()] {
    if (alive) takeAnswers();
  };
  // The loop outlives the thread's tasks unless one hangs to the end of the program.
  thread_.post([desk = desk_, makeLookUp = makeLookUp_, takeInLoop, alive = alive_.watch(), loop = &loop_] {
    desk->work(makeLookUp, [&] {
      if (alive) loop->post(takeInLoop);
    });
  });
}

void WindowDocuments::takeAnswers() {
  auto [answers, othersWillCome] = desk_->takeAnswers();
  late_ = late_ && othersWillCome;
  std::vector<xcb_window_t> told;
  for (auto& answer : answers) {
    const auto entry = known_.find(answer.window);
    if (entry == known_.end() || entry->second.question != answer.number) continue;
    Known& known = entry->second;
    known.answered = true;
    // A program may have its file closed for a moment while it writes it.
    if (!answer.path) continue;
    auto url = fileUrlOf(*answer.path);
    if (known.url == url) continue;
    known.url = std::move(url);
    if (!known.awaited) told.push_back(answer.window);
  }
  for (const auto window : told) onFound_(window);
}

void WindowDocuments::tidy(const std::function<bool(xcb_window_t)>& exists) {
  if (known_.size() < manyKnown_) return;
  std::erase_if(known_, [&](const auto& entry) { return !exists(entry.first); });
  manyKnown_ = std::max(manyWindows, 2 * known_.size());
}

}  // namespace pellar
