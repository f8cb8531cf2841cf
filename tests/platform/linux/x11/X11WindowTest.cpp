#include <gtest/gtest.h>

#include "platform/linux/x11/X11Window.h"

namespace pellar {
namespace {

X11Window framed() {
  X11Window window;
  window.id = 1;
  window.links = {{1, {5, 20, 600, 400, 0}}, {2, {100, 50, 610, 425, 0}}};
  return window;
}

TEST(X11WindowTest, TheFrameWindowIsTheFrameWhileNobodySaysMore) {
  EXPECT_EQ(framed().frame(), (RootRect{100, 50, 610, 425}));
  EXPECT_EQ(framed().edge(), (X11Extents{5, 5, 20, 5}));
}

TEST(X11WindowTest, TheStatedDecorationWinsOverALargerFrameWindow) {
  X11Window window = framed();
  window.frameExtents = X11Extents{1, 1, 18, 1};
  EXPECT_EQ(window.frame(), (RootRect{104, 52, 602, 419}));
}

TEST(X11WindowTest, AnUnframedWindowsBorderCounts) {
  X11Window window;
  window.links = {{1, {10, 20, 300, 200, 2}}};
  EXPECT_EQ(window.frame(), (RootRect{10, 20, 304, 204}));
}

TEST(X11WindowTest, AShadowIsTakenOff) {
  X11Window window;
  window.links = {{1, {10, 20, 300, 200, 0}}};
  window.shadow = {26, 26, 23, 29};
  EXPECT_EQ(window.frame(), (RootRect{36, 43, 248, 148}));
}

TEST(X11WindowTest, ADecorationLeftInThePropertyIsGoneWithTheFrame) {
  X11Window window = framed();
  window.frameExtents = X11Extents{5, 5, 20, 5};
  window.links = {{1, {100, 50, 600, 400, 0}}};
  EXPECT_EQ(window.frame(), (RootRect{100, 50, 600, 400}));
}

TEST(X11WindowTest, AWindowWithoutAPlaceHasNone) {
  EXPECT_EQ(X11Window().frame(), RootRect{});
}

TEST(X11WindowTest, AWindowThatKeepsItsShapeTakesWhatFitsIntoAFrame) {
  X11Window window = framed();
  EXPECT_EQ(window.shaped({1440, 868}), (Size{1440, 868}));
  window.aspect = X11Aspect{4.0 / 3, 16.0 / 9, {}};
  EXPECT_EQ(window.shaped({1440, 825}), (Size{1432, 825}));
  EXPECT_EQ(window.shaped({1210, 825}), (Size{1210, 825}));
  EXPECT_EQ(window.shaped({410, 825}), (Size{410, 325}));
  window.aspect->base = {0, 100};
  EXPECT_EQ(window.shaped({410, 825}), (Size{410, 425}));
  EXPECT_EQ(window.shaped({5, 10}), (Size{5, 10}));
}

TEST(X11WindowTest, TheModernTitleComesFirst) {
  X11Window window;
  EXPECT_EQ(window.title(), "");
  window.wmName = "old";
  EXPECT_EQ(window.title(), "old");
  window.netName = "";
  EXPECT_EQ(window.title(), "");
}

}  // namespace
}  // namespace pellar
