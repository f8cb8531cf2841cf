#include "platform/linux/panel/X11StackKeeper.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace pellar {
namespace {

// From what a window manager says of its stack to the last thing that it does to it.
constexpr std::chrono::milliseconds endOfRestacking{100};
// After so many a window manager does not let the panel have its place.
constexpr int mostRefusals = 3;

}  // namespace

X11StackKeeper::X11StackKeeper(X11Connection& connection, const X11Mirror& mirror, MainLoop& loop,
                               X11PanelWindow& window)
    : mirror_(mirror), loop_(loop), window_(window), place_(connection, mirror, window.id()) {}

void X11StackKeeper::take() {
  isShown_ = true;
  place_.take();
}

void X11StackKeeper::keep() {
  if (place_.keep()) noteStacking();
}

void X11StackKeeper::rest() {
  isShown_ = false;
  again_.cancel();
  refusals_ = 0;
  spared_.clear();
  window_.spare({});
}

void X11StackKeeper::raiseForNow() {
  if (!isShown_ || place_.isOnTop() || refusals_ == mostRefusals) return;
  place_.raise();
  again_ = loop_.after(endOfRestacking, [this] { takeAgain(); });
}

void X11StackKeeper::noteStacking() {
  if (!isShown_ || place_.isOnTop() || std::exchange(posted_, true)) return;
  loop_.post([this, alive = alive_.watch()] {
    if (!alive) return;
    posted_ = false;
    takeAgain();
  });
}

void X11StackKeeper::noteConfigured(const xcb_configure_notify_event_t& event) {
  if (isShown_ && place_.note(event)) noteStacking();
}

void X11StackKeeper::takeAgain() {
  if (!isShown_) return;
  if (refusals_ < mostRefusals) {
    place_.takeAgain();
    window_.flush();
  } else {
    spare(place_.coveredWindows());
  }
  // Some window managers raise what they do not manage after they have said how theirs stand.
  again_ = loop_.after(endOfRestacking, [this] { check(); });
}

void X11StackKeeper::check() {
  auto covered = place_.coveredWindows();
  if (refusals_ == mostRefusals) {
    spare(std::move(covered));
  } else if (covered.empty()) {
    refusals_ = 0;
  } else {
    ++refusals_;
    takeAgain();
  }
}

void X11StackKeeper::spare(std::vector<xcb_window_t> windows) {
  spared_ = std::move(windows);
  std::vector<PixelRect> parts;
  for (const xcb_window_t id : spared_) {
    const X11Window* window = mirror_.find(id);
    if (window != nullptr) parts.push_back(wholePixels(window->frame()));
  }
  window_.spare(std::move(parts));
  window_.flush();
}

void X11StackKeeper::noteWindows(const std::set<xcb_window_t>& changed) {
  if (std::ranges::any_of(spared_, [&](xcb_window_t id) { return changed.contains(id); })) spare(spared_);
}

}  // namespace pellar
