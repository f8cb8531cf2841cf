#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <utility>

#include "platform/linux/x11/DesktopScale.h"

namespace pellar {
namespace {

ScaleStatements dots(const std::string& value) {
  return {.resources = "Xcursor.size:\t24\nXft.dpi:\t" + value + "\nXft.antialias:\t1\n"};
}

double scaleOf(const ScaleStatements& statements) {
  return DesktopScale(statements).of("eDP-1", 0);
}

TEST(DesktopScaleTest, IsOneWhereNothingIsSaid) {
  EXPECT_EQ(scaleOf({}), 1);
  EXPECT_EQ(DesktopScale({}).nonsense(), std::nullopt);
}

TEST(DesktopScaleTest, FollowsTheDotsOfTheFonts) {
  const std::pair<const char*, double> known[] = {{"96", 1},     {"120", 1.25}, {"144", 1.5}, {"168", 1.75},
                                                  {"192", 2},    {"288", 3},    {"384", 4},   {"100", 1},
                                                  {"110", 1.25}, {"191.9", 2},  {"72", 1},    {"480", 4}};
  for (const auto& [value, scale] : known) EXPECT_EQ(scaleOf(dots(value)), scale) << value;
}

TEST(DesktopScaleTest, TakesTheLastOfSeveralLinesAndNoOtherResource) {
  EXPECT_EQ(scaleOf({.resources = "Xft.dpi: 96\nXft.dpi:192"}), 2);
  EXPECT_EQ(scaleOf({.resources = "xterm.Xft.dpi: 192\nXft.dpi2: 192\nXft.dpi 192"}), 1);
}

TEST(DesktopScaleTest, AToolkitsFactorIsForTheWholeDesktopAndIsNotMultiplied) {
  auto said = dots("192");
  said.gdkScale = "2";
  EXPECT_EQ(scaleOf(said), 2);
  said.toolkitFactor = "1.5";
  EXPECT_EQ(scaleOf(said), 1.5);
}

TEST(DesktopScaleTest, AScaleOfWholeNumbersLeavesTheRestToTheFonts) {
  auto said = dots("144");
  said.gdkScale = "1";
  EXPECT_EQ(scaleOf(said), 1.5);
  EXPECT_EQ(scaleOf({.gdkScale = "2"}), 2);
}

TEST(DesktopScaleTest, WhatIsSaidOfAMonitorIsForThatOne) {
  auto said = dots("144");
  said.screenFactors = "eDP-1=2;HDMI-1=1.25;";
  const DesktopScale scale(said);
  EXPECT_EQ(scale.of("HDMI-1", 0), 1.25);
  EXPECT_EQ(scale.of("eDP-1", 1), 2);
  EXPECT_EQ(scale.of("DP-3", 2), 1.5);
}

TEST(DesktopScaleTest, AListWithoutNamesGoesByTheOrderOfTheMonitors) {
  const DesktopScale scale({.screenFactors = "2;1"});
  EXPECT_EQ(scale.of("eDP-1", 0), 2);
  EXPECT_EQ(scale.of("HDMI-1", 1), 1);
  EXPECT_EQ(scale.of("DP-3", 2), 1);
}

TEST(DesktopScaleTest, NonsenseIsPassedOverAndNamed) {
  for (const char* value : {"", "fast", "-96", "0", "nan", "inf", "1e999", "96 192", "0x60", "99999"}) {
    const DesktopScale scale(dots(value));
    EXPECT_EQ(scale.of("eDP-1", 0), 1) << value;
    EXPECT_EQ(scale.nonsense(), "Xft.dpi is " + std::string(value));
  }
  auto said = dots("144");
  said.toolkitFactor = "large";
  said.screenFactors = "eDP-1=;=2;;=";
  EXPECT_EQ(scaleOf(said), 1.5);
}

RC_GTEST_PROP(DesktopScaleProperties, WhateverIsSaidAStripIsAWholeNumberOfPixelsHigh,
              (const std::string& factors, const std::string& resources, double fonts)) {
  for (const std::string& all : {resources, "Xft.dpi: " + std::to_string(fonts)}) {
    const double scale =
        DesktopScale({.screenFactors = factors, .toolkitFactor = factors, .resources = all}).of("eDP-1", 0);
    RC_ASSERT(scale >= 1 && scale <= 4);
    RC_ASSERT(32 * scale == std::round(32 * scale));
  }
}

}  // namespace
}  // namespace pellar
