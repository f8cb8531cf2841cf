#include "platform/linux/applications/X11FrameWriter.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

namespace pellar {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds settlePatience{40};
constexpr std::chrono::milliseconds settlePatienceWithSilent{4};
// A window manager's answer is several events; they end when none follows for so long.
constexpr std::chrono::milliseconds endOfAnswer{2};

// Positions travel as 16-bit numbers.
std::int32_t coordinate(double value) {
  return std::isfinite(value) ? static_cast<std::int32_t>(std::lround(std::clamp(value, -32000.0, 32000.0)))
                              : 0;
}

std::uint32_t extent(double value) {
  return std::isfinite(value) ? static_cast<std::uint32_t>(std::lround(std::clamp(value, 1.0, 32000.0))) : 1;
}

bool near(double a, double b) {
  return std::abs(a - b) < 1;
}

}  // namespace

X11FrameWriter::X11FrameWriter(X11Connection& connection, X11Mirror& mirror, const X11Density& density)
    : connection_(connection), mirror_(mirror), density_(density) {
  connection_.setBeforeFlush([this] {
    send();
    // The turn is over; from now on events tell what became of the writes.
    unsettled_.clear();
  });
}

X11FrameWriter::~X11FrameWriter() {
  connection_.setBeforeFlush(nullptr);
}

void X11FrameWriter::setPosition(xcb_window_t window, AxPoint corner) {
  unsent_[window].corner = corner;
}

void X11FrameWriter::setSize(xcb_window_t window, Size size) {
  unsent_[window].size = size;
}

void X11FrameWriter::send() {
  for (const auto& [id, wish] : unsent_) {
    const X11Window* window = mirror_.find(id);
    if (window == nullptr) continue;
    unsettled_[id] = requestFor(*window, wish);
    request(*window, unsettled_[id]);
  }
  unsent_.clear();
}

X11FrameWriter::Request X11FrameWriter::requestFor(const X11Window& window, const Wish& wish) const {
  const PointMap& map = density_.map();
  const AxRect now = map.toPoints(window.frame());
  const AxRect wanted = AxRect::of(wish.corner.value_or(now.origin()), wish.size.value_or(now.size()));
  const RootRect pixels = map.toPixels(wanted);
  Request request{std::nullopt, std::nullopt, window.placeReports};
  if (wish.corner)
    request.corner = wish.size ? pixels.origin() : map.toPixels(*wish.corner, window.frame().size());
  // A window manager that cuts the size to the window's shape may do so on the side where there is no room.
  if (wish.size) request.size = window.shaped(pixels.size());
  return request;
}

void X11FrameWriter::request(const X11Window& window, const Request& wish) {
  const X11Atoms& atoms = connection_.atoms();
  if (window.maximized()) {
    // Window managers leave a maximised window where it is.
    constexpr std::uint32_t remove = 0;
    connection_.sendToWindowManager(
        window.id, atoms.netWmState,
        {remove, atoms.stateMaximizedVert, atoms.stateMaximizedHorz, fromPager, 0});
  }
  std::uint16_t mask = 0;
  std::array<std::uint32_t, 4> values{};
  if (wish.corner) {
    mask |= XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y;
    // A shadow is part of the window for everybody but the user.
    const int left = placesClient_ ? window.edge().left : -window.shadow.left;
    const int top = placesClient_ ? window.edge().top : -window.shadow.top;
    values[0] = static_cast<std::uint32_t>(coordinate(wish.corner->x + left));
    values[1] = static_cast<std::uint32_t>(coordinate(wish.corner->y + top));
  }
  if (wish.size) {
    mask |= XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
    const X11Extents edge = window.edge();
    values[2] = extent(wish.size->width - edge.left - edge.right);
    values[3] = extent(wish.size->height - edge.top - edge.bottom);
  }
  if (window.gravity == XCB_GRAVITY_NORTH_WEST) {
    const std::size_t first = wish.corner ? 0 : 2;
    xcb_configure_window(connection_.xcb(), window.id, mask, values.data() + first);
    return;
  }
  // A plain request means another corner of the frame for such a window, and window managers differ about
  // which; this message names the corner.
  const std::uint32_t flags =
      XCB_GRAVITY_NORTH_WEST | static_cast<std::uint32_t>(mask) << 8U | fromPager << 12U;
  connection_.sendToWindowManager(window.id, atoms.netMoveResizeWindow,
                                  {flags, values[0], values[1], values[2], values[3]});
}

bool X11FrameWriter::fulfilled(const X11Window& window, const Request& wish) {
  const RootRect frame = window.frame();
  const bool placed = !wish.corner || (near(frame.x, wish.corner->x) && near(frame.y, wish.corner->y));
  const bool sized =
      !wish.size || (near(frame.width, wish.size->width) && near(frame.height, wish.size->height));
  return placed && sized;
}

bool X11FrameWriter::meantAnotherCorner(const X11Window& window, const Request& wish) {
  if (!wish.corner) return false;
  // i3 puts the client there, not the frame. Asked again and again for the same place, it would move a window
  // off the screen step by step.
  const double left = window.edge().left + window.shadow.left;
  const double top = window.edge().top + window.shadow.top;
  const double sign = placesClient_ ? 1 : -1;
  const RootRect frame = window.frame();
  if (top < 1 || !near(frame.x, wish.corner->x + sign * left) || !near(frame.y, wish.corner->y + sign * top))
    return false;
  placesClient_ = !placesClient_;
  return true;
}

void X11FrameWriter::settle(xcb_window_t id) {
  if (unsent_.contains(id)) send();
  const auto found = unsettled_.find(id);
  if (found == unsettled_.end()) return;
  Request wish = found->second;
  unsettled_.erase(found);
  const bool wasSilent = silent_.erase(id) > 0;
  const auto deadline = Clock::now() + (wasSilent ? settlePatienceWithSilent : settlePatience);
  xcb_flush(connection_.xcb());
  bool answered = false;
  for (;;) {
    connection_.dispatchArrived();
    mirror_.readStale();
    const X11Window* window = mirror_.find(id);
    if (window == nullptr || fulfilled(*window, wish)) return;
    answered = window->placeReports != wish.reportsBefore;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    if (left <= left.zero()) break;
    if (connection_.waitForInput(answered ? std::min(left, endOfAnswer) : left)) continue;
    if (!answered || !meantAnotherCorner(*window, wish)) break;
    wish.reportsBefore = window->placeReports;
    request(*window, wish);
    xcb_flush(connection_.xcb());
  }
  if (!answered) silent_.insert(id);
}

}  // namespace pellar
