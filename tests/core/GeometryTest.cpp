#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "core/Geometry.h"

namespace pellar {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr AxRect screen{0, 0, 1440, 900};

TEST(Geometry, WhatIsNotSaidIsNothing) {
  EXPECT_EQ(AxPoint{}, (AxPoint{0, 0}));
  EXPECT_EQ(Size{}, (Size{0, 0}));
  EXPECT_EQ(AxRect{}, (AxRect{0, 0, 0, 0}));
}

TEST(Geometry, RectanglesThatOnlyTouchShareNothing) {
  EXPECT_FALSE(screen.intersects({1440, 0, 100, 100}));
  EXPECT_FALSE(screen.intersects({0, -100, 100, 100}));
  EXPECT_EQ(screen.intersection({1430, 890, 100, 100}), (AxRect{1430, 890, 10, 10}));
}

TEST(Geometry, ARectangleWithANumberThatIsNotFiniteIntersectsNothing) {
  std::vector<AxRect> strange;
  for (const double value : {nan, infinity, -infinity}) {
    strange.push_back({value, 100, 200, 200});
    strange.push_back({100, value, 200, 200});
    strange.push_back({100, 100, value, 200});
    strange.push_back({100, 100, 200, value});
  }
  for (const AxRect& rect : strange) {
    EXPECT_FALSE(rect.isFinite());
    EXPECT_FALSE(screen.intersects(rect))
        << rect.x << " " << rect.y << " " << rect.width << " " << rect.height;
    EXPECT_FALSE(rect.intersects(screen))
        << rect.x << " " << rect.y << " " << rect.width << " " << rect.height;
  }
  EXPECT_TRUE(screen.isFinite());
}

}  // namespace
}  // namespace pellar
