#include "platform/linux/applications/X11CloseQuestions.h"

#include <utility>

namespace pellar {
namespace {

using namespace std::chrono_literals;

// Within which a program asks. A dialog that comes later may be about something else.
constexpr std::chrono::nanoseconds patience = 10s;

bool mayAsk(const X11Window& window) {
  return window.kind == X11WindowKind::dialog ||
         (window.kind == X11WindowKind::normal && window.transientFor);
}

}  // namespace

X11CloseQuestions::X11CloseQuestions(const X11Mirror& mirror, const X11Applications& applications,
                                     MainLoop& loop, std::function<void(xcb_window_t)> bringToFront)
    : mirror_(mirror), applications_(applications), loop_(loop), bringToFront_(std::move(bringToFront)) {}

void X11CloseQuestions::noteClosing(xcb_window_t window) {
  const X11Application* owner = applications_.ofWindow(window);
  if (owner == nullptr) return;
  closing_ = Closing{owner->pid, {owner->windows.begin(), owner->windows.end()}, loop_.uptime()};
}

void X11CloseQuestions::note(const X11Mirror::Changes& changes) {
  if (!closing_ || !changes.membership) return;
  const X11Application* owner = applications_.withPid(closing_->application);
  if (owner == nullptr || loop_.uptime() - closing_->at > patience) {
    closing_.reset();
    return;
  }
  const auto front = applications_.frontmost();
  for (const xcb_window_t id : owner->windows) {
    if (!closing_->known.insert(id).second) continue;
    const X11Window* window = mirror_.find(id);
    if (window == nullptr || window->standard() || !mayAsk(*window)) continue;
    // Who has gone to another program meanwhile stays there.
    if (front && front->pid == owner->pid) bringToFront_(id);
  }
}

}  // namespace pellar
