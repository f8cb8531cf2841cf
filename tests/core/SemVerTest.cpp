#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

#include "core/SemVer.h"

namespace pellar {
namespace {

using SemVer::isNewer;

TEST(SemVer, ComparesNumbersNotTexts) {
  EXPECT_TRUE(isNewer("1.2.10", "1.2.9"));
  EXPECT_FALSE(isNewer("1.2.9", "1.2.10"));
  EXPECT_FALSE(isNewer("2.0", "10.0"));
  EXPECT_TRUE(isNewer("1.010", "1.9"));
}

TEST(SemVer, MissingComponentsCountAsZero) {
  EXPECT_FALSE(isNewer("1.3", "1.3.0"));
  EXPECT_FALSE(isNewer("1.3.0", "1.3"));
  EXPECT_TRUE(isNewer("1.3.0.1", "1.3"));
  EXPECT_FALSE(isNewer("", ""));
  EXPECT_TRUE(isNewer("0.0.1", ""));
  EXPECT_FALSE(isNewer("", "0.0.1"));
}

TEST(SemVer, EmptyComponentsAreDropped) {
  EXPECT_FALSE(isNewer("1..2", "1.2"));
  EXPECT_FALSE(isNewer("1.2", "1..2"));
  EXPECT_FALSE(isNewer(".1.2.", "1.2"));
  EXPECT_TRUE(isNewer("1..3", "1.2"));
  EXPECT_FALSE(isNewer("...", ""));
}

TEST(SemVer, WhatIsNoNumberCountsAsZero) {
  EXPECT_FALSE(isNewer("v2.0", "1.9"));
  EXPECT_TRUE(isNewer("1.4.0-beta", "1.3.9"));
  EXPECT_FALSE(isNewer("1.4.1-beta", "1.4.1"));
  EXPECT_FALSE(isNewer("1. 5", "1.0"));
  EXPECT_FALSE(isNewer("1.5 ", "1.0"));
  EXPECT_FALSE(isNewer("1.0x10", "1.0"));
  EXPECT_FALSE(isNewer("1.٣", "1.0")) << "only ASCII digits";
  EXPECT_FALSE(isNewer(std::string("1.5\0", 4), "1.0"));
}

TEST(SemVer, ASignIsRead) {
  EXPECT_TRUE(isNewer("1.+5", "1.4"));
  EXPECT_FALSE(isNewer("1.+5", "1.5"));
  EXPECT_FALSE(isNewer("1.-5", "1.0"));
  EXPECT_TRUE(isNewer("1", "1.-5"));
  for (const char* nonsense : {"+", "-", "+-7", "-+7", "++7", "--7"}) {
    EXPECT_FALSE(isNewer(nonsense, "0")) << nonsense;
    EXPECT_FALSE(isNewer("0", nonsense)) << nonsense;
  }
}

TEST(SemVer, NumbersBeyond64BitsCountAsZero) {
  EXPECT_TRUE(isNewer("9223372036854775807", "9223372036854775806"));
  EXPECT_FALSE(isNewer("9223372036854775808", "1"));
  EXPECT_FALSE(isNewer("0", "-9223372036854775809"));
  EXPECT_TRUE(isNewer("0", "-9223372036854775808"));
  EXPECT_FALSE(isNewer(std::string(100'000, '9'), "1"));
}

TEST(SemVer, AVeryLongVersionIsCompared) {
  std::string longVersion;
  for (int index = 0; index < 100'000; ++index) longVersion += "1.";
  EXPECT_TRUE(isNewer(longVersion + "2", longVersion + "1"));
  EXPECT_FALSE(isNewer(longVersion, longVersion));
}

std::string joined(const std::vector<int>& numbers) {
  std::string version;
  for (const int number : numbers) version += std::to_string(number) + ".";
  return version;
}

RC_GTEST_PROP(SemVerProperty, OrdersLikeTheNumbers, (std::vector<int> left, std::vector<int> right)) {
  const std::size_t count = std::max(left.size(), right.size());
  const std::string candidate = joined(left);
  const std::string current = joined(right);
  left.resize(count);
  right.resize(count);
  RC_ASSERT(isNewer(candidate, current) == (left > right));
}

RC_GTEST_PROP(SemVerProperty, AnyTwoTextsAreAtMostOneWayNewer,
              (const std::string& left, const std::string& right)) {
  RC_ASSERT(!(isNewer(left, right) && isNewer(right, left)));
  RC_ASSERT(!isNewer(left, left));
}

}  // namespace
}  // namespace pellar
