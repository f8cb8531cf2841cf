#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>

#include "core/Tile.h"

namespace pellar {
namespace {

AxRect anyRect() {
  const auto coordinate = rc::gen::inRange(-4000, 4000);
  const auto extent = rc::gen::inRange(1, 4000);
  return {static_cast<double>(*coordinate), static_cast<double>(*coordinate), static_cast<double>(*extent),
          static_cast<double>(*extent)};
}

bool near(double left, double right) {
  return std::abs(left - right) < 1e-6;
}

RC_GTEST_PROP(TileProperty, EachGroupCoversTheScreenExactly, ()) {
  const AxRect screen = anyRect();
  for (const auto& group : tileGroups()) {
    double area = 0;
    AxRect bounds = tileFrame(group.front(), screen);
    for (const Tile tile : group) {
      const AxRect frame = tileFrame(tile, screen);
      area += frame.area();
      const double right = std::max(bounds.maxX(), frame.maxX());
      const double bottom = std::max(bounds.maxY(), frame.maxY());
      bounds.x = std::min(bounds.x, frame.x);
      bounds.y = std::min(bounds.y, frame.y);
      bounds.width = right - bounds.x;
      bounds.height = bottom - bounds.y;
    }
    RC_ASSERT(near(area, screen.area()) || std::abs(area / screen.area() - 1) < 1e-9);
    RC_ASSERT(near(bounds.x, screen.x) && near(bounds.y, screen.y));
    RC_ASSERT(near(bounds.width, screen.width) && near(bounds.height, screen.height));
  }
}

RC_GTEST_PROP(TileProperty, TilesOfOneGroupDoNotOverlap, ()) {
  const AxRect screen = anyRect();
  for (const auto& group : tileGroups()) {
    for (const Tile left : group) {
      for (const Tile right : group) {
        if (left == right) continue;
        const auto common = tileFrame(left, screen).intersection(tileFrame(right, screen));
        RC_ASSERT(!common || common->area() < 1e-6);
      }
    }
  }
}

RC_GTEST_PROP(TileProperty, AligningIsMeasuredInTargetArea, ()) {
  const AxRect target = anyRect();
  const AxRect front = anyRect();
  const double width = std::min(target.maxX(), front.maxX()) - std::max(target.x, front.x);
  const double height = std::min(target.maxY(), front.maxY()) - std::max(target.y, front.y);
  const bool over = width > 0 && height > 0 && 2 * width * height > target.area();
  RC_ASSERT(shouldAlign(target, front) == over);
}

RC_GTEST_PROP(TileProperty, CyclingThereAndBackComesHome, ()) {
  const int count = *rc::gen::inRange(1, 1000);
  const int current = *rc::gen::inRange(0, count);
  RC_ASSERT(cycledIndex(cycledIndex(current, count, true), count, false) == current);
  int index = current;
  for (int step = 0; step < count; ++step) index = cycledIndex(index, count, true);
  RC_ASSERT(index == current);
}

RC_GTEST_PROP(TileProperty, ACycledIndexIsAlwaysATab, (int current, int count, bool forward)) {
  const int index = cycledIndex(current, count, forward);
  RC_ASSERT(index >= 0);
  RC_ASSERT(index < std::max(count, 1));
}

}  // namespace
}  // namespace pellar
