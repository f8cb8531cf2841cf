#include <gtest/gtest.h>

#include <optional>

#include "core/Ascii.h"

namespace pellar {
namespace {

TEST(Ascii, LowersItsLettersAndNothingElse) {
  EXPECT_EQ(Ascii::lowered("AZ[az@0É"), "az[az@0É");
}

TEST(Ascii, LettersAndDigitsEndWhereTheyEnd) {
  for (const char each : {'a', 'z', 'A', 'Z'}) EXPECT_TRUE(Ascii::isLetter(each)) << each;
  for (const char each : {'`', '{', '@', '[', '0', '\xC3'}) EXPECT_FALSE(Ascii::isLetter(each)) << each;
  for (const char each : {'0', '9'}) EXPECT_TRUE(Ascii::isDigit(each)) << each;
  for (const char each : {'/', ':', 'a'}) EXPECT_FALSE(Ascii::isDigit(each)) << each;
}

TEST(Ascii, ReadsHexadecimalDigitsOfEitherCase) {
  EXPECT_EQ(Ascii::hexDigit('0'), 0);
  EXPECT_EQ(Ascii::hexDigit('9'), 9);
  EXPECT_EQ(Ascii::hexDigit('a'), 10);
  EXPECT_EQ(Ascii::hexDigit('F'), 15);
  for (const char other : {'g', 'G', '`', '@', ' '}) EXPECT_EQ(Ascii::hexDigit(other), std::nullopt) << other;
}

TEST(Ascii, ABeginningIsFoundInWhateverCase) {
  EXPECT_TRUE(Ascii::startsWith("File:///a", "file:"));
  EXPECT_TRUE(Ascii::startsWith("FILE:", "file:"));
  EXPECT_FALSE(Ascii::startsWith("file", "file:"));
  EXPECT_FALSE(Ascii::startsWith(std::string_view("file:").substr(0, 4), "file:"));
  EXPECT_FALSE(Ascii::startsWith("tile:", "file:"));
}

}  // namespace
}  // namespace pellar
