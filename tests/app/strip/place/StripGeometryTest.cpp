#include <gtest/gtest.h>

#include <vector>

#include "app/strip/place/CoordinateFlip.h"
#include "app/strip/place/StripGeometry.h"

namespace pellar {
namespace {

using StripGeometry::fills;
using StripGeometry::isBelow;
using StripGeometry::pushedDown;
using StripGeometry::stripFrame;
using StripGeometry::tileArea;
using StripGeometry::workTop;

// A screen of 1440 x 900 with a menu bar of 25 and a dock of 70 points.
const Screen mainScreen{{0, 0, 1440, 900}, {0, 70, 1440, 805}};
// One right of it, 200 points higher, without a menu bar.
const Screen highScreen{{1440, 200, 1000, 900}, {1440, 200, 1000, 900}};
const std::vector<Screen> one{mainScreen};
const std::vector<Screen> two{mainScreen, highScreen};
const std::vector<Screen> none;

TEST(StripGeometry, TheStripStandsOnTheWindowsTopEdge) {
  const AxRect window{100, 200, 640, 480};
  const ScreenRect strip = stripFrame(window, one);
  EXPECT_EQ(strip, (ScreenRect{100, 700, 640, 32}));
  EXPECT_EQ(CoordinateFlip(one).axY(strip.minY()), window.minY());
}

TEST(StripGeometry, WithoutScreensTheFlipIsAtZero) {
  EXPECT_EQ(stripFrame({10, 20, 300, 200}, none), (ScreenRect{10, -20, 300, 32}));
  EXPECT_EQ(workTop({10, 20, 300, 200}, none), 0);
  EXPECT_EQ(tileArea({10, 20, 300, 200}, none), AxRect{});
}

TEST(StripGeometry, TheWorkAreaBeginsUnderTheMenuBar) {
  EXPECT_EQ(workTop({100, 200, 640, 480}, one), 25);
  EXPECT_EQ(tileArea({100, 200, 640, 480}, one), (AxRect{0, 57, 1440, 773}));
}

TEST(StripGeometry, TheFirstScreenThatAWindowTouchesDecides) {
  EXPECT_EQ(workTop({1500, 100, 400, 300}, two), -200);
  EXPECT_EQ(tileArea({1500, 100, 400, 300}, two), (AxRect{1440, -168, 1000, 868}));
  // Mostly on the second screen, still one point on the first.
  EXPECT_EQ(workTop({1439, 100, 400, 300}, two), 25);
}

TEST(StripGeometry, AWindowOnNoScreenCountsAsOnTheFirst) {
  EXPECT_EQ(workTop({5000, 5000, 400, 300}, two), 25);
  EXPECT_EQ(tileArea({5000, 5000, 400, 300}, two), (AxRect{0, 57, 1440, 773}));
}

TEST(StripGeometry, AWindowLessThanHalfAPointTooHighIsLeftAlone) {
  EXPECT_EQ(pushedDown({0, 57, 500, 400}, one), std::nullopt);
  EXPECT_EQ(pushedDown({0, 56.6, 500, 400}, one), std::nullopt);
  EXPECT_TRUE(isBelow({0, 56.5, 500, 400}, 57));
  EXPECT_FALSE(isBelow({0, 56.4, 500, 400}, 57));
  EXPECT_EQ(pushedDown({0, 56.5, 500, 400}, one), std::nullopt);
  const auto pushed = pushedDown({0, 56.4, 500, 400}, one);
  ASSERT_TRUE(pushed);
  EXPECT_EQ(pushed->y, 57);
  EXPECT_NEAR(pushed->maxY(), 456.4, 1e-9);
}

TEST(StripGeometry, APushedWindowKeepsItsBottomButNeverGetsLowerThan200) {
  EXPECT_EQ(pushedDown({10, 27, 500, 400}, one), (AxRect{10, 57, 500, 370}));
  EXPECT_EQ(pushedDown({10, 27, 500, 210}, one), (AxRect{10, 57, 500, 200}));
  EXPECT_EQ(pushedDown({10, 27, 500, 100}, one), (AxRect{10, 57, 500, 200}));
}

TEST(StripGeometry, AWindowFillsAnAreaWhenEveryEdgeIsWithinTwoPoints) {
  const AxRect area{0, 57, 1440, 773};
  EXPECT_TRUE(fills({1.9, 55.1, 1441.9, 771.1}, area));
  EXPECT_FALSE(fills({2, 57, 1440, 773}, area));
  EXPECT_FALSE(fills({0, 59, 1440, 773}, area));
  EXPECT_FALSE(fills({0, 57, 1438, 773}, area));
  EXPECT_FALSE(fills({0, 57, 1440, 775}, area));
}

}  // namespace
}  // namespace pellar
