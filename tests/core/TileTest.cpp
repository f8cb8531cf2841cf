#include <gtest/gtest.h>

#include <limits>
#include <string_view>

#include "core/Tile.h"

namespace pellar {
namespace {

struct Expected {
  Tile tile;
  std::string_view name;
  std::string_view title;
  UnitRect unit;
};

const std::vector<Expected> expected{
    {Tile::left, "left", "Tile left half", {0, 0, 0.5, 1}},
    {Tile::right, "right", "Tile right half", {0.5, 0, 0.5, 1}},
    {Tile::top, "top", "Tile top half", {0, 0, 1, 0.5}},
    {Tile::bottom, "bottom", "Tile bottom half", {0, 0.5, 1, 0.5}},
    {Tile::fill, "fill", "Fill screen", {0, 0, 1, 1}},
    {Tile::leftThird, "leftThird", "Left third", {0, 0, 0.33333333333333331, 1}},
    {Tile::middleThird, "middleThird", "Middle third", {0.33333333333333331, 0, 0.33333333333333331, 1}},
    {Tile::rightThird, "rightThird", "Right third", {0.66666666666666663, 0, 0.33333333333333331, 1}},
    {Tile::topLeft, "topLeft", "Top left quarter", {0, 0, 0.5, 0.5}},
    {Tile::topRight, "topRight", "Top right quarter", {0.5, 0, 0.5, 0.5}},
    {Tile::bottomLeft, "bottomLeft", "Bottom left quarter", {0, 0.5, 0.5, 0.5}},
    {Tile::bottomRight, "bottomRight", "Bottom right quarter", {0.5, 0.5, 0.5, 0.5}}};

TEST(Tile, EachHasItsNameTitleAndPlaceInOrder) {
  ASSERT_EQ(allTiles.size(), expected.size());
  for (std::size_t index = 0; index < expected.size(); ++index) {
    const Expected& row = expected[index];
    EXPECT_EQ(allTiles[index], row.tile);
    EXPECT_EQ(rawValue(row.tile), row.name);
    EXPECT_EQ(title(row.tile), row.title);
    EXPECT_EQ(unit(row.tile), row.unit);
    EXPECT_EQ(tileWithRawValue(row.name), row.tile);
  }
  EXPECT_EQ(tileWithRawValue("Left"), std::nullopt);
  EXPECT_EQ(tileWithRawValue(""), std::nullopt);
}

TEST(Tile, GroupsAreInTheOrderOfTheMenu) {
  EXPECT_EQ(tileGroups(), (std::vector<std::vector<Tile>>{
                              {Tile::left, Tile::right},
                              {Tile::leftThird, Tile::middleThird, Tile::rightThird},
                              {Tile::topLeft, Tile::topRight, Tile::bottomLeft, Tile::bottomRight},
                              {Tile::top, Tile::bottom},
                              {Tile::fill}}));
}

TEST(Tile, FrameIsThePartOfTheUsableArea) {
  const AxRect rightThird = tileFrame(Tile::rightThird, {0, 25, 1440, 875});
  EXPECT_DOUBLE_EQ(rightThird.x, 960);
  EXPECT_DOUBLE_EQ(rightThird.y, 25);
  EXPECT_DOUBLE_EQ(rightThird.width, 480);
  EXPECT_DOUBLE_EQ(rightThird.height, 875);
  EXPECT_EQ(tileFrame(Tile::bottomLeft, {100, 50, 1000, 800}), (AxRect{100, 450, 500, 400}));
}

TEST(Tile, FrameIsNotRounded) {
  EXPECT_EQ(tileFrame(Tile::bottomRight, {0, 25, 1441, 875}), (AxRect{720.5, 462.5, 720.5, 437.5}));
}

TEST(Tile, FrameOnAScreenLeftOfAndAboveTheFirst) {
  EXPECT_EQ(tileFrame(Tile::right, {-1920, -1080, 1920, 1080}), (AxRect{-960, -1080, 960, 1080}));
}

TEST(ShouldAlign, MoreThanHalfOfTheTargetMustLieOverTheFront) {
  const AxRect front{0, 0, 100, 100};
  EXPECT_TRUE(shouldAlign(front, front));
  EXPECT_FALSE(shouldAlign({50, 0, 100, 100}, front)) << "exactly half";
  EXPECT_TRUE(shouldAlign({49, 0, 100, 100}, front));
  EXPECT_FALSE(shouldAlign({51, 0, 100, 100}, front));
  EXPECT_FALSE(shouldAlign({200, 200, 10, 10}, front)) << "apart";
  EXPECT_FALSE(shouldAlign({100, 0, 100, 100}, front)) << "touching";
}

TEST(ShouldAlign, LooksAtTheTargetsAreaOnly) {
  EXPECT_TRUE(shouldAlign({10, 10, 10, 10}, {0, 0, 1000, 1000}));
  EXPECT_FALSE(shouldAlign({0, 0, 1000, 1000}, {10, 10, 10, 10}));
}

TEST(ShouldAlign, AnEmptyTargetNeverAligns) {
  const AxRect front{0, 0, 100, 100};
  EXPECT_FALSE(shouldAlign({10, 10, 0, 10}, front));
  EXPECT_FALSE(shouldAlign({10, 10, 10, 0}, front));
  EXPECT_FALSE(shouldAlign({10, 10, -5, 10}, front));
  EXPECT_FALSE(shouldAlign({10, 10, 10, -5}, front));
  EXPECT_FALSE(shouldAlign({10, 10, -5, -5}, front));
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(shouldAlign({nan, 0, 10, 10}, front));
  EXPECT_FALSE(shouldAlign({0, 0, nan, nan}, front));
}

TEST(CycledIndex, WrapsAroundAtBothEnds) {
  EXPECT_EQ(cycledIndex(0, 5, false), 4);
  EXPECT_EQ(cycledIndex(4, 5, true), 0);
  EXPECT_EQ(cycledIndex(2, 5, true), 3);
  EXPECT_EQ(cycledIndex(2, 5, false), 1);
  EXPECT_EQ(cycledIndex(0, 1, true), 0);
  EXPECT_EQ(cycledIndex(0, 1, false), 0);
}

TEST(CycledIndex, WithoutTabsIsZero) {
  EXPECT_EQ(cycledIndex(2, 0, true), 0);
  EXPECT_EQ(cycledIndex(2, -3, false), 0);
}

TEST(CycledIndex, FoldsAnIndexFromOutsideIntoTheRange) {
  EXPECT_EQ(cycledIndex(7, 5, true), 3);
  EXPECT_EQ(cycledIndex(-3, 5, false), 1);
  EXPECT_EQ(cycledIndex(-1, 5, true), 0);
}

TEST(CycledIndex, TheEndsOfTheNumbersDoNotOverflow) {
  constexpr int most = std::numeric_limits<int>::max();
  constexpr int least = std::numeric_limits<int>::min();
  EXPECT_EQ(cycledIndex(most, most, true), 1);
  EXPECT_EQ(cycledIndex(most, 2, true), 0);
  EXPECT_EQ(cycledIndex(least, 2, false), 1);
  EXPECT_EQ(cycledIndex(least, most, false), most - 2);
}

}  // namespace
}  // namespace pellar
