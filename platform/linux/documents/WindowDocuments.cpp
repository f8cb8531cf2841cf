#include "platform/linux/documents/WindowDocuments.h"

#include <utility>

#include "core/FileUrl.h"
#include "platform/MainLoop.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// A local file is found in a fraction of that.
constexpr auto moment = 20ms;
// A title that changes without pause is looked up no more often than this.
constexpr std::chrono::milliseconds pause = 250ms;
// A window without a document may have got one under the same title.
constexpr std::chrono::nanoseconds staleness = 30s;
// One with a document may show another of that name, saved to another folder.
constexpr std::chrono::nanoseconds restlessness = 1s;

constexpr std::size_t manyWindows = 64;

}  // namespace

WindowDocuments::WindowDocuments(MainLoop& loop, LookUp lookUp, std::function<void(xcb_window_t)> onFound)
    : loop_(loop), lookUp_(std::move(lookUp)), onFound_(std::move(onFound)) {}

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
    known.refused = false;
    if (isAwaited) {
      askAndWait(window, known);
    } else {
      askWhenDue(window, known);
    }
  } else if (known.refused ||
             (known.answered && loop_.uptime() - known.askedAt > (known.url ? restlessness : staleness))) {
    ask(window, known);
  }
  return known.url;
}

void WindowDocuments::askAndWait(xcb_window_t window, Known& known) {
  // Behind a look-up that hangs there is no use in waiting.
  if (thread_.busy()) return ask(window, known);
  known.question = ++lastQuestion_;
  known.askedAt = loop_.uptime();
  const auto found = thread_.ask(
      [lookUp = lookUp_, title = known.title, process = known.process] { return lookUp(title, process); },
      SideThread::Clock::now() + moment);
  if (!found) return ask(window, known);
  known.answered = true;
  if (*found) known.url = fileUrlOf(**found);
}

void WindowDocuments::askWhenDue(xcb_window_t window, Known& known) {
  const auto since = std::chrono::duration_cast<std::chrono::milliseconds>(loop_.uptime() - known.askedAt);
  if (since >= pause) return ask(window, known);
  known.question = ++lastQuestion_;
  if (known.later.active()) return;
  known.later = loop_.after(pause - since, [this, window] {
    const auto found = known_.find(window);
    if (found == known_.end()) return;
    found->second.later.cancel();
    ask(window, found->second);
  });
}

void WindowDocuments::ask(xcb_window_t window, Known& known) {
  known.question = ++lastQuestion_;
  known.askedAt = loop_.uptime();
  known.refused = !thread_.post([lookUp = lookUp_, title = known.title, process = known.process, window,
                                 question = known.question, this, alive = alive_.watch(), loop = &loop_] {
    auto path = lookUp(title, process);
    // The loop outlives the thread's tasks unless one hangs to the end of the program.
    if (!alive) return;
    loop->post([this, alive, window, question, path = std::move(path)]() mutable {
      if (alive) take(window, question, std::move(path));
    });
  });
}

void WindowDocuments::take(xcb_window_t window, std::uint64_t question, std::optional<std::string> path) {
  const auto found = known_.find(window);
  if (found == known_.end() || found->second.question != question) return;
  found->second.answered = true;
  // A program may have its file closed for a moment while it writes it.
  if (!path) return;
  auto url = fileUrlOf(*path);
  if (found->second.url == url) return;
  found->second.url = std::move(url);
  onFound_(window);
}

void WindowDocuments::tidy(const std::function<bool(xcb_window_t)>& exists) {
  if (known_.size() < manyWindows) return;
  std::erase_if(known_, [&](const auto& entry) { return !exists(entry.first); });
}

}  // namespace pellar
