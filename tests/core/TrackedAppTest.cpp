#include <gtest/gtest.h>

#include <array>
#include <string>

#include "core/TrackedApp.h"

namespace pellar {
namespace {

TEST(TrackedApp, OfAnOfficeApplicationTakesItsNames) {
  EXPECT_EQ(TrackedApp::of(OfficeApp::powerpoint),
            (TrackedApp{"com.microsoft.Powerpoint", "PowerPoint", OfficeApp::powerpoint}));
}

TEST(TrackedApp, EqualityComparesEveryField) {
  const TrackedApp editor{"com.example.editor", "Editor", std::nullopt};
  EXPECT_EQ(editor, (TrackedApp{"com.example.editor", "Editor", std::nullopt}));
  EXPECT_NE(editor, (TrackedApp{"com.example.editor", "Other", std::nullopt}));
  EXPECT_NE(editor, (TrackedApp{"com.example.Editor", "Editor", std::nullopt}));
  EXPECT_NE(editor, (TrackedApp{"com.example.editor", "Editor", OfficeApp::word}));
}

TEST(TrackedApp, HashesTheSameOnEveryMachine) {
  EXPECT_EQ(TrackedApp::stableHash(""), 5381);
  EXPECT_EQ(TrackedApp::stableHash("a"), 177670);
  EXPECT_EQ(TrackedApp::stableHash("ab"), 177670 * 33 + 98);
}

TEST(TrackedApp, HashesTheBytesOfUtf8AsPositiveNumbers) {
  // 0xC3 0xA9
  EXPECT_EQ(TrackedApp::stableHash("é"), (5381 * 33 + 0xC3) * 33 + 0xA9);
}

TEST(TrackedApp, HashOfALongTextIsNeverNegative) {
  for (std::size_t length = 0; length < 300; ++length) {
    const std::int64_t hash = TrackedApp::stableHash(std::string(length, '\xFF'));
    EXPECT_GE(hash, 0);
    EXPECT_LE(hash, 0x7FFFFFFF);
  }
  EXPECT_GE(TrackedApp::stableHash(std::string(1'000'000, 'z')), 0);
}

TEST(TrackedApp, OfficeApplicationsWearTheirOwnColour) {
  for (const OfficeApp app : allOfficeApps) EXPECT_EQ(TrackedApp::of(app).accentRGB(), accentRGB(app));
  EXPECT_EQ((TrackedApp{"com.example.other", "Other", OfficeApp::excel}).accentRGB(),
            accentRGB(OfficeApp::excel));
}

TEST(TrackedApp, OthersArePaintedByTheLowBitsOfTheirIdentifier) {
  constexpr std::array<RGB, 8> palette{{{0.36, 0.42, 0.75},
                                        {0.20, 0.55, 0.55},
                                        {0.60, 0.40, 0.70},
                                        {0.75, 0.45, 0.20},
                                        {0.30, 0.55, 0.35},
                                        {0.70, 0.30, 0.40},
                                        {0.35, 0.50, 0.65},
                                        {0.55, 0.55, 0.30}}};
  // "" hashes to 5381, whose low bits are 5; each next letter moves the colour on by one. "a" has 6.
  EXPECT_EQ((TrackedApp{"", "Nameless", std::nullopt}).accentRGB(), palette[5]);
  for (int step = 0; step < 8; ++step) {
    const TrackedApp app{std::string(1, static_cast<char>('a' + step)), "App", std::nullopt};
    EXPECT_EQ(app.accentRGB(), palette[static_cast<std::size_t>(6 + step) % 8]) << app.id;
  }
}

TEST(TrackedApp, TwoWithTheSameLowBitsShareAColour) {
  EXPECT_EQ((TrackedApp{"a", "A", std::nullopt}).accentRGB(),
            (TrackedApp{"i", "I", std::nullopt}).accentRGB());
}

}  // namespace
}  // namespace pellar
