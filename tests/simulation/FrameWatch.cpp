#include "tests/simulation/FrameWatch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>
#include <string_view>
#include <utility>

#include "tests/simulation/PanelSizes.h"

namespace pellar {
namespace {

constexpr double smallestPushedHeight = 200;
constexpr double pushTolerance = 0.5;
constexpr double zoomTolerance = 2;
constexpr double shortestDrag = 4;

// Parts of the area that the strip leaves of a screen: x, y, width, height in sixths.
struct Part {
  std::string_view title;
  std::array<double, 4> sixths;
};
constexpr std::array parts{
    Part{"Tile left half", {0, 0, 3, 6}},      Part{"Tile right half", {3, 0, 3, 6}},
    Part{"Tile top half", {0, 0, 6, 3}},       Part{"Tile bottom half", {0, 3, 6, 3}},
    Part{"Fill screen", {0, 0, 6, 6}},         Part{"Left third", {0, 0, 2, 6}},
    Part{"Middle third", {2, 0, 2, 6}},        Part{"Right third", {4, 0, 2, 6}},
    Part{"Top left quarter", {0, 0, 3, 3}},    Part{"Top right quarter", {3, 0, 3, 3}},
    Part{"Bottom left quarter", {0, 3, 3, 3}}, Part{"Bottom right quarter", {3, 3, 3, 3}}};

bool near(const AxRect& a, const AxRect& b, double tolerance) {
  return std::abs(a.x - b.x) < tolerance && std::abs(a.y - b.y) < tolerance &&
         std::abs(a.width - b.width) < tolerance && std::abs(a.height - b.height) < tolerance;
}

bool isSame(const AxRect& a, const AxRect& b) {
  constexpr double rounding = 0.001;
  return near(a, b, rounding);
}

// How much of a is over b, at most 1.
double shareOver(const AxRect& a, const AxRect& b) {
  const double width = std::min(a.maxX(), b.maxX()) - std::max(a.x, b.x);
  const double height = std::min(a.maxY(), b.maxY()) - std::max(a.y, b.y);
  if (width <= 0 || height <= 0) return 0;
  return width * height / (a.width * a.height);
}

std::string text(const AxRect& rect) {
  std::ostringstream out;
  out << "(" << rect.x << ", " << rect.y << ", " << rect.width << ", " << rect.height << ")";
  return out.str();
}

double fitted(double wanted, double minimum, double maximum, double step) {
  const double within = std::clamp(wanted, minimum, std::max(minimum, maximum));
  return step > 0 ? minimum + std::floor((within - minimum) / step) * step : within;
}

Size fitted(const SimWindowQuirks& quirks, Size wanted) {
  return {
      fitted(wanted.width, quirks.minimumSize.width, quirks.maximumSize.width, quirks.sizeIncrement.width),
      fitted(wanted.height, quirks.minimumSize.height, quirks.maximumSize.height,
             quirks.sizeIncrement.height)};
}

}  // namespace

// One that moves later is somewhere on its way.
bool FrameWatch::isJudged(const SimWindow& window) {
  return window.exists() && window.quirks().frameDelay.count() == 0;
}

FrameWatch::Stand& FrameWatch::standOf(const SimWindow& window) {
  return stands_.try_emplace(window.id(), Stand{window.frame(), false, std::nullopt}).first->second;
}

void FrameWatch::started() {
  for (auto& [id, stand] : stands_) {
    stand.isZoomKnown = true;
    stand.zoom.reset();
  }
}

// The first that it reaches into, else the first there is.
std::optional<AxRect> FrameWatch::visibleFrameAt(const AxRect& window) const {
  const auto screens = mac_.screens().screens();
  if (screens.empty()) return std::nullopt;
  const auto reached = std::ranges::find_if(screens, [&](const Screen& screen) {
    const AxRect frame = mac_.screens().toAccessibility(screen.frame);
    return window.x < frame.maxX() && window.maxX() > frame.x && window.y < frame.maxY() &&
           window.maxY() > frame.y;
  });
  return mac_.screens().toAccessibility((reached == screens.end() ? screens.front() : *reached).visibleFrame);
}

AxRect FrameWatch::areaOf(const AxRect& window) const {
  auto area = visibleFrameAt(window);
  if (!area) return {};
  area->y += stripHeight;
  area->height -= stripHeight;
  return *area;
}

AxPoint FrameWatch::placed(const SimWindow& window, const AxRect& from, const AxRect& wanted) const {
  if (window.isFullScreen() || window.quirks().refusesMoves) return from.origin();
  AxPoint origin = wanted.origin();
  if (const auto& area = window.quirks().confinedTo)
    origin = {std::clamp(origin.x, area->x, area->maxX()), std::clamp(origin.y, area->y, area->maxY())};
  return mac_.screens().clamped(AxRect::of(origin, wanted.size()));
}

AxRect FrameWatch::settled(const SimWindow& window, const AxRect& from, const AxRect& wanted) const {
  const auto& quirks = window.quirks();
  const bool keepsSize = window.isFullScreen() || quirks.refusesSizes;
  const Size size = keepsSize ? from.size() : fitted(quirks, wanted.size());
  return AxRect::of(placed(window, from, AxRect::of(wanted.origin(), size)), size);
}

void FrameWatch::zoomed(const SimWindow& window, const AxRect& before) {
  if (!isSingle()) return becomeUnsure();
  Stand& stand = standOf(window);
  const AxRect area = areaOf(before);
  const bool fills = near(before, area, zoomTolerance);
  if (!stand.isZoomKnown && fills) {
    touched_.insert(window.id());
    return;
  }
  const auto& zoom = stand.zoom;
  // One that grows in steps, or only so far, fills the area as well as it can.
  const bool standsAsZoomed = zoom && zoom->area == area && near(before, zoom->after, zoomTolerance) &&
                              !near(zoom->after, zoom->before, zoomTolerance);
  if (zoom && (fills || standsAsZoomed)) {
    expected_.insert_or_assign(window.id(), settled(window, before, zoom->before));
    stand.zoom.reset();
    return;
  }
  const AxRect after = settled(window, before, area);
  if (!stand.isZoomKnown && !isSame(after, area)) {
    touched_.insert(window.id());
    return;
  }
  stand.isZoomKnown = true;
  stand.zoom = Zoom{before, area, after};
  expected_.insert_or_assign(window.id(), after);
}

void FrameWatch::tiled(const SimWindow& window, const AxRect& before, const std::string& tile) {
  if (!isSingle()) return becomeUnsure();
  const auto part = std::ranges::find(parts, tile, &Part::title);
  if (part == parts.end()) return becomeUnsure();
  const AxRect area = areaOf(before);
  const auto& [x, y, width, height] = part->sixths;
  constexpr double whole = 6;
  const AxRect wanted{area.x + x / whole * area.width, area.y + y / whole * area.height,
                      width / whole * area.width, height / whole * area.height};
  expected_.insert_or_assign(window.id(), settled(window, before, wanted));
}

void FrameWatch::dragged(const std::vector<std::pair<SimWindow, AxRect>>& tabbed, ScreenPoint offset) {
  if (!isSingle()) return becomeUnsure();
  const auto& [front, under] = tabbed.front();
  if (front.isMinimised() || front.isFullScreen() || std::hypot(offset.x, offset.y) <= shortestDrag) return;
  for (const auto& [window, before] : tabbed) {
    if (window.isMinimised()) continue;
    if (window != front && shareOver(before, under) <= 0.5) continue;
    const AxRect wanted{before.x + offset.x, before.y - offset.y, before.width, before.height};
    expected_.insert_or_assign(window.id(), AxRect::of(placed(window, before, wanted), before.size()));
  }
}

// Whether it was pushed down from where it is expected, or would not move and has taken its size back.
bool FrameWatch::isRoomMade(const SimWindow& window, const AxRect& expected, const AxRect& now) const {
  // Screens that are gone may have called for it.
  if (!isSingle() || mac_.screens().screens() != screens_) return true;
  const auto visible = visibleFrameAt(expected);
  const double top = (visible ? visible->y : 0) + stripHeight;
  if (expected.y >= top - pushTolerance) return false;
  const AxRect wanted{expected.x, top, expected.width,
                      std::max(expected.height - (top - expected.y), smallestPushedHeight)};
  const AxRect pushed = settled(window, expected, wanted);
  if (pushed.y >= top - pushTolerance) return isSame(now, pushed);
  return isSame(now, settled(window, expected, AxRect::of(pushed.origin(), expected.size())));
}

std::optional<std::string> FrameWatch::compare(const std::vector<SimApplication>& applications,
                                               const Windows& fronts) {
  std::optional<std::string> wrong;
  std::map<WindowId, Stand> now;
  std::set<WindowId> inFront;
  for (const auto& each : fronts) inFront.insert(each.id());
  for (const auto& application : applications) {
    for (const auto& window : application.windowsFrontToBack()) {
      if (!isJudged(window)) continue;
      const WindowId id = window.id();
      const auto known = stands_.find(id);
      Stand stand = known == stands_.end() ? Stand{window.frame(), !isUnsure_, std::nullopt} : known->second;
      if (isUnsure_) stand.isZoomKnown = false;
      const AxRect frame = window.frame();
      const auto asked = expected_.find(id);
      const AxRect& expected = asked == expected_.end() ? stand.frame : asked->second;
      const bool mayBePushed =
          inFront.contains(id) || wereInFront_.contains(id) || passedBy_.contains(id) || !isSingle();
      if (!wrong && known != stands_.end() && !isUnsure_ && !touched_.contains(id) &&
          !isSame(frame, expected) && !(mayBePushed && isRoomMade(window, expected, frame)))
        wrong = window.title() + " stands at " + text(frame) + ", not at " + text(expected) +
                (asked == expected_.end() ? "" : " as the user asked");
      stand.frame = frame;
      now.insert_or_assign(id, stand);
    }
  }
  stands_ = std::move(now);
  wereInFront_ = std::move(inFront);
  screens_ = mac_.screens().screens();
  expected_.clear();
  touched_.clear();
  passedBy_.clear();
  happenings_ = 0;
  isUnsure_ = false;
  return wrong;
}

}  // namespace pellar
