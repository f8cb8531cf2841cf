#include "platform/linux/applications/X11Rest.h"

#include <algorithm>
#include <utility>

namespace pellar {
namespace {

using std::chrono::milliseconds;

// Longer than a busy window manager takes from a window's new place to its new state.
constexpr milliseconds restAfterState{600};
// From one of its reports of a move to the next.
constexpr milliseconds restAfterMove{60};
// A terminal that grows by lines ends somewhat above the bottom, so many points at most.
constexpr double lastLine = 40;

}  // namespace

struct X11Rest::Wait {
  xcb_window_t window = XCB_WINDOW_NONE;
  std::function<void()> callback;
  Subscription timer;
};

X11Rest::X11Rest(X11Connection& connection, const X11Mirror& mirror, const X11Density& density,
                 const X11ScreenList& screens, MainLoop& loop)
    : connection_(connection), mirror_(mirror), density_(density), screens_(screens), loop_(loop) {
  X11Mirror::Changes all;
  for (const auto& [id, window] : mirror_.windows()) all.windows.insert(id);
  note(all);
}

bool X11Rest::Last::sameStateAs(const Last& other) const {
  return fullscreen == other.fullscreen && maximizedVertically == other.maximizedVertically &&
         maximizedHorizontally == other.maximizedHorizontally;
}

bool X11Rest::reachesFromTopToBottom(const X11Window& window) const {
  const RootRect frame = window.frame();
  return std::ranges::any_of(screens_.monitors(), [&](const X11ScreenList::Monitor& monitor) {
    const RootRect& visible = monitor.visible;
    return monitor.pixels.intersects(frame) && frame.y < visible.y + monitor.scale &&
           frame.maxY() > visible.maxY() - lastLine * monitor.scale;
  });
}

void X11Rest::note(const X11Mirror::Changes& changes) {
  for (const xcb_window_t id : changes.windows) {
    const X11Window* window = mirror_.find(id);
    if (window == nullptr) {
      last_.erase(id);
      continue;
    }
    Last now{window->frame(), window->fullscreen, window->maximizedVertically, window->maximizedHorizontally};
    const auto [entry, isNew] = last_.try_emplace(id, now);
    Last& last = entry->second;
    const bool sameState = last.sameStateAs(now);
    if (!isNew && sameState && last.frame == now.frame) continue;
    const bool isLarge = now.fullscreen || window->maximized() || reachesFromTopToBottom(*window);
    // One that opens anywhere is where it is to be.
    if (isNew && !isLarge) continue;
    const auto rest = sameState && !isLarge ? restAfterMove : restAfterState;
    now.maximizedAnew = last.maximizedAnew;
    now.leavesToComeBack = last.leavesToComeBack;
    if (last.maximizedVertically && !now.maximizedVertically) {
      now.leavesToComeBack = false;
      now.maximizedAnew = last.leavesToComeBack;
      // Only now: of two requests in one go a window manager may have the first never be seen.
      if (last.leavesToComeBack) askToBeMaximized(id, last, true);
    }
    now.restsAt = std::max<std::chrono::nanoseconds>(last.restsAt, loop_.uptime() + rest);
    last = now;
  }
}

milliseconds X11Rest::untilRest(xcb_window_t window) const {
  const auto found = last_.find(window);
  if (found == last_.end()) return milliseconds(0);
  return std::chrono::ceil<milliseconds>(found->second.restsAt - loop_.uptime());
}

bool X11Rest::mayMakeRoom(xcb_window_t window) const {
  const X11Window* found = mirror_.find(window);
  const auto last = last_.find(window);
  if (found == nullptr || last == last_.end() || last->second.maximizedAnew) return false;
  if (!found->maximizedVertically || found->fullscreen || mirror_.isMinimized(*found)) return false;
  if (!mirror_.isOnShownDesktop(*found)) return false;
  const RootRect frame = found->frame();
  return std::ranges::any_of(screens_.monitors(), [&](const X11ScreenList::Monitor& monitor) {
    return monitor.pixels.intersects(frame) && frame.y < monitor.visible.y + monitor.scale;
  });
}

void X11Rest::maximizeAnew(xcb_window_t window) {
  Last& last = last_.at(window);
  last.maximizedAnew = true;
  last.leavesToComeBack = true;
  last.restsAt = loop_.uptime() + restAfterState;
  askToBeMaximized(window, last, false);
}

// In the directions in which it was.
void X11Rest::askToBeMaximized(xcb_window_t window, const Last& last, bool on) {
  const X11Atoms& atoms = connection_.atoms();
  const xcb_atom_t both = last.maximizedHorizontally ? atoms.stateMaximizedHorz : xcb_atom_t{XCB_ATOM_NONE};
  connection_.sendToWindowManager(window, atoms.netWmState,
                                  {on ? 1U : 0U, atoms.stateMaximizedVert, both, fromPager, 0});
}

bool X11Rest::isHeldBelowAnotherScreen(xcb_window_t window) const {
  const X11Window* found = mirror_.find(window);
  return found != nullptr && found->maximizedVertically && density_.map().hasMonitorAbove(found->frame());
}

Subscription X11Rest::onceAtRest(xcb_window_t window, std::function<void()> callback) {
  // The end of its state is a change that has everything looked at again.
  if (isHeldBelowAnotherScreen(window)) return Subscription([] {});
  if (untilRest(window) <= milliseconds(0)) {
    if (!mayMakeRoom(window)) return {};
    // Nothing may have been reserved for it while another application was in front.
    last_.at(window).restsAt = loop_.uptime() + restAfterState;
  }
  const auto waiting = std::make_shared<Wait>(Wait{window, std::move(callback), {}});
  wait(waiting);
  return Subscription([waiting] {
    waiting->callback = nullptr;
    waiting->timer.cancel();
  });
}

void X11Rest::wait(const std::shared_ptr<Wait>& waiting) {
  // A wait that is given up takes its timer along.
  waiting->timer = loop_.after(untilRest(waiting->window), [this, weak = std::weak_ptr(waiting)] {
    const auto still = weak.lock();
    if (!still) return;
    if (untilRest(still->window) > milliseconds(0)) {
      wait(still);
      return;
    }
    if (mayMakeRoom(still->window)) {
      maximizeAnew(still->window);
      wait(still);
      return;
    }
    // A window manager that has not done it by now will not.
    if (const auto last = last_.find(still->window); last != last_.end())
      last->second.leavesToComeBack = false;
    if (const auto callback = std::exchange(still->callback, nullptr)) callback();
  });
}

}  // namespace pellar
