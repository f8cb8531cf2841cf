#include <gtest/gtest.h>

#include "app/strip/place/PanelPlace.h"

namespace pellar {
namespace {

// A screen left of the first one, with a menu bar above and a dock below.
constexpr ScreenRect visible{-1920, 60, 1920, 995};

TEST(PanelPlace, APanelThatFitsIsWhereItWantsToBe) {
  EXPECT_EQ(PanelPlace::left(-1000, 480, visible), -1000);
  EXPECT_EQ(PanelPlace::top(500, visible), 500);
}

TEST(PanelPlace, EightPointsStayFreeAtTheLeftTheRightAndTheTop) {
  EXPECT_EQ(PanelPlace::left(-1912, 480, visible), -1912);
  EXPECT_EQ(PanelPlace::left(-1912.5, 480, visible), -1912);
  EXPECT_EQ(PanelPlace::left(-488, 480, visible), -488);
  EXPECT_EQ(PanelPlace::left(-487.5, 480, visible), -488);
  EXPECT_EQ(PanelPlace::top(1047, visible), 1047);
  EXPECT_EQ(PanelPlace::top(1047.5, visible), 1047);
}

TEST(PanelPlace, APanelWiderThanTheAreaShowsItsLeftPart) {
  EXPECT_EQ(PanelPlace::left(-1000, 3000, visible), -1912);
}

TEST(PanelPlace, APanelHangsFromItsTopLeftCorner) {
  EXPECT_EQ(PanelPlace::hanging({10, 500}, {480, 300}), (ScreenRect{10, 200, 480, 300}));
}

}  // namespace
}  // namespace pellar
