#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <vector>

#include "platform/linux/x11/PointMap.h"

namespace pellar {
namespace {

constexpr RootRect hd{0, 0, 1920, 1080};
constexpr RootRect largeOnTheRight{1920, 0, 3840, 2160};

double anyScale() {
  return *rc::gen::element(1.0, 1.25, 1.5, 1.75, 2.0, 2.25, 3.0, 4.0);
}

int between(int least, int most) {
  return *rc::gen::inRange(least, most + 1);
}

// Up to four monitors in a row or a column, with their corners anywhere that they do not overlap.
std::vector<PointMap::Monitor> anyMonitors() {
  std::vector<PointMap::Monitor> all;
  const bool inARow = *rc::gen::arbitrary<bool>();
  double next = 0;
  for (int left = between(1, 4); left > 0; --left) {
    RootRect pixels{0, 0, static_cast<double>(between(640, 4096)), static_cast<double>(between(480, 2400))};
    (inARow ? pixels.x : pixels.y) = next;
    (inARow ? pixels.y : pixels.x) = all.empty() ? 0 : between(0, 700);
    next = (inARow ? pixels.maxX() : pixels.maxY()) + between(0, 1) * between(0, 50);
    all.push_back({pixels, anyScale()});
  }
  return all;
}

RootRect anyWithin(const RootRect& area) {
  const int left = between(0, static_cast<int>(area.width) - 2);
  const int top = between(0, static_cast<int>(area.height) - 2);
  return {area.x + left, area.y + top, static_cast<double>(between(1, static_cast<int>(area.width) - left)),
          static_cast<double>(between(1, static_cast<int>(area.height) - top))};
}

RootRect rounded(const RootRect& rect) {
  return {std::round(rect.x), std::round(rect.y), std::round(rect.width), std::round(rect.height)};
}

TEST(PointMapTest, WithoutMonitorsAPointIsAPixel) {
  const PointMap map;
  EXPECT_EQ(map.toPoints(RootRect{3, 4, 50, 60}), (AxRect{3, 4, 50, 60}));
  EXPECT_EQ(map.toPixels(AxRect{3, 4, 50, 60}), (RootRect{3, 4, 50, 60}));
}

TEST(PointMapTest, AtTwoHundredPercentAPointIsTwoPixelsEachWay) {
  const PointMap map({{{0, 0, 3840, 2160}, 2}});
  EXPECT_EQ(map.monitors().front().points(), (AxRect{0, 0, 1920, 1080}));
  EXPECT_EQ(map.toPoints(RootRect{101, 200, 800, 601}), (AxRect{50.5, 100, 400, 300.5}));
  EXPECT_EQ(map.toPoints(RootPoint{7, 8}), (AxPoint{3.5, 4}));
}

TEST(PointMapTest, AStripOverAWindowEndsAtTheWindowsTopPixel) {
  for (const double scale : {1.25, 1.5, 1.75, 2.0}) {
    const PointMap map({{{0, 0, 3840, 2160}, scale}});
    for (int y = 100; y < 140; ++y) {
      const RootRect window{17, static_cast<double>(y), 801, 600};
      const AxRect points = map.toPoints(window);
      const RootRect strip = map.toPixels(AxRect{points.x, points.y - 32, points.width, 32});
      EXPECT_NEAR(strip.maxY(), y, 1e-9);
      EXPECT_NEAR(strip.x, 17, 1e-9);
      EXPECT_NEAR(strip.width, 801, 1e-9);
      EXPECT_NEAR(strip.y, y - 32 * scale, 1e-9);
    }
  }
}

TEST(PointMapTest, MonitorsOfTwoScalesKeepTheirPlaces) {
  const PointMap map({{hd, 1}, {largeOnTheRight, 2}});
  EXPECT_FALSE(map.isUniform());
  EXPECT_EQ(map.monitors()[0].points(), (AxRect{0, 0, 1920, 1080}));
  EXPECT_EQ(map.monitors()[1].points(), (AxRect{1920, 0, 1920, 1080}));
}

TEST(PointMapTest, AWindowOverTwoMonitorsIsMeasuredByTheOneThatHoldsMostOfIt) {
  const PointMap map({{hd, 1}, {largeOnTheRight, 2}});
  EXPECT_EQ(map.holding(RootRect{1500, 100, 800, 500}).scale(), 1);
  EXPECT_EQ(map.holding(RootRect{1540, 100, 800, 500}).scale(), 2);
  EXPECT_EQ(map.toPoints(RootRect{1540, 100, 800, 500}).size(), (Size{400, 250}));
}

TEST(PointMapTest, WhatIsOnNoMonitorBelongsToTheNearest) {
  const PointMap map({{hd, 1}, {largeOnTheRight, 2}});
  EXPECT_EQ(map.holding(RootRect{100, 1500, 10, 10}).scale(), 1);
  EXPECT_EQ(map.holding(RootRect{9000, 100, 10, 10}).scale(), 2);
  EXPECT_EQ(map.holding(RootRect{-500, -500, 10, 10}).scale(), 1);
}

TEST(PointMapTest, AWindowAcrossTheRoomBetweenMonitorsGoesBackWhereItWas) {
  // The left monitor is the finer one, so that its points end long before those of the right one begin.
  const PointMap map({{{0, 0, 3840, 2160}, 2}, {{3840, 0, 1920, 1080}, 1}});
  for (int x = 3000; x < 4000; ++x) {
    const RootRect window{static_cast<double>(x), 100, 900, 500};
    EXPECT_EQ(rounded(map.toPixels(map.toPoints(window))), window) << x;
  }
}

RC_GTEST_PROP(PointMapProperties, AWindowOnOneMonitorGoesBackToItsPixels, ()) {
  const auto monitors = anyMonitors();
  const PointMap map(monitors);
  const RootRect window = anyWithin((*rc::gen::elementOf(monitors)).pixels);
  const AxRect points = map.toPoints(window);
  RC_ASSERT(rounded(map.toPixels(points)) == window);
  // However often it goes there and back.
  RC_ASSERT(map.toPoints(rounded(map.toPixels(points))) == points);
}

RC_GTEST_PROP(PointMapProperties, MonitorsDoNotOverlapInPointsAndKeepTheirOrder, ()) {
  const auto monitors = anyMonitors();
  const PointMap map(monitors);
  constexpr double noise = 1e-6;
  for (std::size_t i = 0; i < monitors.size(); ++i) {
    for (std::size_t j = i + 1; j < monitors.size(); ++j) {
      const AxRect a = map.monitors()[i].points();
      const AxRect b = map.monitors()[j].points();
      RC_ASSERT(!a.grown(-noise).intersects(b.grown(-noise)));
      if (monitors[i].pixels.maxX() <= monitors[j].pixels.x) RC_ASSERT(a.maxX() <= b.x + noise);
      if (monitors[i].pixels.maxY() <= monitors[j].pixels.y) RC_ASSERT(a.maxY() <= b.y + noise);
    }
  }
}

RC_GTEST_PROP(PointMapProperties, WithOneScaleAllOfTheDesktopIsThatMuchSmaller, ()) {
  auto monitors = anyMonitors();
  const double scale = anyScale();
  for (auto& each : monitors) each.scale = scale;
  const PointMap map(monitors);
  RC_ASSERT(map.isUniform());
  const RootRect window = anyWithin({-200, -200, 5000, 4000});
  const AxRect points = map.toPoints(window);
  RC_ASSERT(std::abs(points.x - window.x / scale) < 1e-6 && std::abs(points.y - window.y / scale) < 1e-6);
  RC_ASSERT(points.width == window.width / scale);
  if (scale == 1) RC_ASSERT(points == (AxRect{window.x, window.y, window.width, window.height}));
}

RC_GTEST_PROP(PointMapProperties, AWindowMovedToTheRightNeverGoesBack, ()) {
  std::vector<PointMap::Monitor> monitors;
  double left = 0;
  for (int count = between(1, 4); count > 0; --count) {
    monitors.push_back({{left, 0, static_cast<double>(between(800, 4000)), 2000}, anyScale()});
    left = monitors.back().pixels.maxX();
  }
  const PointMap map(monitors);
  const Size window{static_cast<double>(between(1, 800)), static_cast<double>(between(1, 400))};
  const double first = map.monitors().front().points().x;
  const double last = map.monitors().back().points().maxX();
  double before = -1;
  for (double x = first; x < last; x += 7) {
    const double now = map.toPixels(AxPoint{x, 10}, window).x;
    RC_ASSERT(now >= before - 0.01);
    before = now;
  }
}

RC_GTEST_PROP(PointMapProperties, AMovedWindowsCornerGoesBackToItsPixels, ()) {
  const auto monitors = anyMonitors();
  const PointMap map(monitors);
  const RootRect window = anyWithin((*rc::gen::elementOf(monitors)).pixels);
  const RootPoint corner = map.toPixels(map.toPoints(window).origin(), window.size());
  RC_ASSERT(std::abs(corner.x - window.x) < 1e-6 && std::abs(corner.y - window.y) < 1e-6);
}

RC_GTEST_PROP(PointMapProperties, APressOnAMonitorIsInsideItsPoints, ()) {
  const auto monitors = anyMonitors();
  const PointMap map(monitors);
  const std::size_t which = *rc::gen::inRange<std::size_t>(0, monitors.size());
  const RootRect pixel = anyWithin(monitors[which].pixels);
  RC_ASSERT(map.monitors()[which].points().grown(1e-6).contains(map.toPoints(pixel.origin())));
}

}  // namespace
}  // namespace pellar
