#include "bench/follow/FollowBenchmark.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <thread>

namespace pellar::bench {
namespace {

constexpr int stripHeight = 32;
constexpr int documentWidth = 1500;  // wide enough for labels on every tab
constexpr int warmUp = 5;
// As long as a user's fast gesture leaves a program alone.
constexpr std::chrono::milliseconds pause{15};

// Where the window goes on its n-th move: never twice the same place, never where a strip has no room.
std::pair<int, int> placeOf(int move) {
  return {20 + move * 37 % 340, 120 + move * 53 % 440};
}

bool showsMoreThanGround(e2e::XObserver& observer, xcb_window_t window) {
  const auto picture = observer.picture(window);
  if (!picture) return false;
  const std::set<std::uint32_t> colours(picture->pixels.begin(), picture->pixels.end());
  return colours.size() > 8;
}

}  // namespace

FollowBenchmark::FollowBenchmark(std::vector<Subject> subjects, const Extent& extent)
    : subjects_(std::move(subjects)),
      extent_(extent),
      desktop_(e2e::WindowManager::openbox, 1920, 1080),
      editor_(desktop_, "editor"),
      causes_(desktop_.display()),
      reactions_(desktop_.display()) {
  if (extent_.windows > 2) {
    terminal_ = std::make_unique<e2e::Application>(desktop_, "terminal");
    shell_ = terminal_->open("Shell", {900, 520, 700, 300});
  }
  for (int i = 0; i < extent_.windows; ++i) {
    documents_.push_back(
        editor_.open("Document " + std::to_string(i), {20 + 24 * i, 140 + 32 * i, documentWidth, 400}));
  }
}

void FollowBenchmark::run() {
  for (int round = 0; round < extent_.rounds; ++round) {
    for (const auto& subject : subjects_) measure(subject);
  }
}

const Samples& FollowBenchmark::samples(const std::string& subject, Quantity quantity) const {
  return results_.at({subject, quantity});
}

bool FollowBenchmark::has(const std::string& subject, Quantity quantity) const {
  return results_.contains({subject, quantity});
}

void FollowBenchmark::begin(const Subject& subject, Quantity quantity) {
  results_[{subject.name, quantity}].rounds.emplace_back();
}

void FollowBenchmark::add(const Subject& subject, Quantity quantity, double value) {
  results_[{subject.name, quantity}].rounds.back().push_back(value);
}

void FollowBenchmark::miss(const Subject& subject, Quantity quantity) {
  ++results_[{subject.name, quantity}].missed;
}

void FollowBenchmark::rest() {
  reactions_.waitForQuiet(pause);
  desktop_.observer().takeEvents();
  reactions_.clear();
}

void FollowBenchmark::measure(const Subject& subject) {
  desktop_.activate(documents_.front());
  std::unique_ptr<e2e::Process> process;
  const auto window = startUp(subject, process);
  reactions_.watch(window);
  settle(subject, window, documents_.front());
  if (subject.follows) measureMoves(subject, window);
  if (subject.follows) measureDrag(subject, *process);
  measureTitles(subject, window);
  const auto other = std::min<std::size_t>(3, documents_.size() - 1);
  measureFocus(subject, window, Quantity::focusSameApp, {documents_[other], documents_[0]});
  if (terminal_) measureFocus(subject, window, Quantity::focusOtherApp, {shell_, documents_[0]});
  begin(subject, Quantity::writtenMemory);
  add(subject, Quantity::writtenMemory, writtenMemory(process->pid()));
  process->end();
  reactions_.forget();
  rest();
}

xcb_window_t FollowBenchmark::startUp(const Subject& subject, std::unique_ptr<e2e::Process>& process) {
  auto& observer = desktop_.observer();
  rest();
  begin(subject, Quantity::mapped);
  begin(subject, Quantity::drawn);
  const auto started = Clock::now();
  process = desktop_.start(subject.command, subject.name);
  // First with no look at the server, which would have to answer while the program starts.
  static_cast<void>(reactions_.first(
      [](const Reaction& reaction) { return reaction.kind == Reaction::Kind::mapped; }, Causes::patience));
  std::optional<xcb_window_t> window;
  observer.waitUntil(subject.name + " shows its window", [&] {
    window = shownWindow(observer, subject);
    return window.has_value();
  });
  if (!subject.follows) return *window;
  const auto mapped = reactions_.first(
      [&](const Reaction& reaction) {
        return reaction.kind == Reaction::Kind::mapped && reaction.window == *window;
      },
      Causes::patience);
  if (mapped) {
    add(subject, Quantity::mapped, microseconds(mapped->at - started) / 1000);
  } else {
    miss(subject, Quantity::mapped);
  }
  // A bare follower draws nothing before a title changes.
  if (subject.windowClass == "bare") return *window;
  const auto end = started + Causes::patience;
  bool drawn = false;
  while (!drawn && Clock::now() < end) drawn = showsMoreThanGround(observer, *window);
  if (drawn) {
    add(subject, Quantity::drawn, microseconds(Clock::now() - started) / 1000);
  } else {
    miss(subject, Quantity::drawn);
  }
  return *window;
}

void FollowBenchmark::settle(const Subject& subject, xcb_window_t window, e2e::Window target) {
  desktop_.activate(target);
  if (subject.follows) {
    desktop_.observer().waitUntil(subject.name + " is over the active window",
                                  [&] { return isOver(desktop_.observer(), window, target.id); });
  }
  rest();
}

void FollowBenchmark::measureMoves(const Subject& subject, xcb_window_t window) {
  begin(subject, Quantity::moveFromFrame);
  begin(subject, Quantity::moveFromRequest);
  for (int i = -warmUp; i < extent_.samples; ++i) {
    const auto [x, y] = placeOf(i + warmUp);
    rest();
    const auto cause = causes_.move(documents_.front().id, x, y);
    if (!cause) throw std::runtime_error("the window manager does not move the window");
    const auto reaction = reactions_.first(
        [&, left = x, bottom = y](const Reaction& seen) {
          return seen.kind == Reaction::Kind::moved && seen.window == window && seen.x == left &&
                 seen.y + stripHeight == bottom;
        },
        Causes::patience);
    if (i < 0) continue;
    if (!reaction) {
      miss(subject, Quantity::moveFromFrame);
      continue;
    }
    add(subject, Quantity::moveFromFrame, microseconds(reaction->at - cause->happened));
    add(subject, Quantity::moveFromRequest, microseconds(reaction->at - cause->asked));
  }
}

// As by a mouse that reports its place 125 times a second.
void FollowBenchmark::measureDrag(const Subject& subject, const e2e::Process& process) {
  constexpr int steps = 125;
  constexpr std::chrono::microseconds interval{std::chrono::seconds(1) / steps};
  begin(subject, Quantity::dragged);
  rest();
  const double before = processorTime(process.pid());
  auto next = Clock::now();
  for (int step = 0; step < steps; ++step) {
    static_cast<void>(causes_.move(documents_.front().id, 20 + 2 * step, 120 + step));
    next += interval;
    std::this_thread::sleep_until(next);
  }
  rest();
  add(subject, Quantity::dragged, processorTime(process.pid()) - before);
}

void FollowBenchmark::measureTitles(const Subject& subject, xcb_window_t window) {
  begin(subject, Quantity::title);
  static int serial = 0;
  for (int i = -warmUp; i < extent_.samples; ++i) {
    rest();
    // A new text each time, so that nobody has its picture at hand.
    const auto cause = causes_.retitle(documents_.front().id, "Draft " + std::to_string(++serial));
    if (!cause) throw std::runtime_error("the title does not change");
    const auto reaction = reactions_.first(
        [&](const Reaction& seen) { return seen.kind == Reaction::Kind::drawn && seen.window == window; },
        Causes::patience);
    if (i < 0) continue;
    if (reaction) {
      add(subject, Quantity::title, microseconds(reaction->at - cause->happened));
    } else {
      miss(subject, Quantity::title);
    }
  }
}

void FollowBenchmark::measureFocus(const Subject& subject, xcb_window_t window, Quantity quantity,
                                   const std::vector<e2e::Window>& targets) {
  begin(subject, quantity);
  for (int i = -warmUp; i < extent_.samples; ++i) {
    const auto target = targets[static_cast<std::size_t>(i + warmUp) % targets.size()];
    const auto frame = desktop_.frame(target);
    rest();
    const auto cause = causes_.activate(target.id);
    if (!cause) throw std::runtime_error("the window manager does not activate the window");
    const auto reaction = reactions_.first(
        [&](const Reaction& seen) {
          if (seen.window != window) return false;
          if (!subject.follows) return seen.kind == Reaction::Kind::drawn;
          return seen.kind == Reaction::Kind::moved && seen.x == frame.x && seen.y + stripHeight == frame.y &&
                 seen.width == frame.width;
        },
        Causes::patience);
    if (i < 0) continue;
    if (reaction) {
      add(subject, quantity, microseconds(reaction->at - cause->happened));
    } else {
      miss(subject, quantity);
    }
  }
}

}  // namespace pellar::bench
