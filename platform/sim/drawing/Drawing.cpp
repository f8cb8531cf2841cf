#include "platform/sim/drawing/Drawing.h"

#include <algorithm>
#include <cmath>

namespace pellar {

namespace {

constexpr double rounding = 0.01;

bool liesIn(const ViewRect& inner, const ViewRect& outer) {
  return inner.minX() >= outer.minX() - rounding && inner.minY() >= outer.minY() - rounding &&
         inner.maxX() <= outer.maxX() + rounding && inner.maxY() <= outer.maxY() + rounding;
}

bool holds(const std::vector<DrawnItem>& items, const DrawnItem& item) {
  return std::find(items.begin(), items.end(), item) != items.end();
}

bool inRoundedRect(ViewPoint point, const ViewRect& rect, double radius) {
  if (!rect.contains(point)) return false;
  const double reach = std::min({radius, rect.width / 2, rect.height / 2});
  const double dx = std::max({rect.minX() + reach - point.x, point.x - (rect.maxX() - reach), 0.0});
  const double dy = std::max({rect.minY() + reach - point.y, point.y - (rect.maxY() - reach), 0.0});
  return std::hypot(dx, dy) <= reach || (dx <= 0 || dy <= 0);
}

}  // namespace

void Drawing::repaint(const ViewRect& dirty, const ViewRect& bounds, const std::vector<DrawnItem>& items) {
  const auto isWhollyRepainted = [&](const DrawnItem& item) {
    const auto seen = item.rect.intersection(bounds);
    return !seen || liesIn(*seen, dirty);
  };
  std::vector<DrawnItem> next;
  for (const DrawnItem& before : items_) {
    const bool repainted = before.rect.intersects(dirty);
    if (repainted && (isWhollyRepainted(before) || holds(items, before))) continue;
    torn_ = torn_ || repainted;
    next.push_back(before);
  }
  for (const DrawnItem& now : items) {
    if (!now.rect.intersects(dirty)) continue;
    torn_ = torn_ || (!isWhollyRepainted(now) && !holds(items_, now));
    next.push_back(now);
  }
  items_ = std::move(next);
}

void Drawing::clear() {
  items_.clear();
  torn_ = false;
}

Color Drawing::colorAt(ViewPoint point, const Color& background) const {
  Color result = background;
  for (const DrawnItem& item : items_) {
    if (item.kind != DrawnItem::Kind::roundedRect || !inRoundedRect(point, item.rect, item.radius)) continue;
    const auto over = [&item](double below, double above) {
      return below + (above - below) * item.color.alpha;
    };
    result = {over(result.red, item.color.red), over(result.green, item.color.green),
              over(result.blue, item.color.blue), 1, std::nullopt};
  }
  return result;
}

}  // namespace pellar
