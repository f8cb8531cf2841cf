#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "platform/sim/office/HfsPath.h"

namespace pellar {
namespace {

TEST(HfsPathTest, ExchangesColonsAndSlashes) {
  EXPECT_EQ(HfsPath::fromPosix("/Users/ann/a:b.docx"), "Macintosh HD:Users:ann:a/b.docx");
  EXPECT_EQ(HfsPath::toPosix("Macintosh HD:Users:ann:a/b.docx"), "/Users/ann/a:b.docx");
}

TEST(HfsPathTest, OtherDisksAreVolumes) {
  EXPECT_EQ(HfsPath::toPosix("Stick:Plan.docx"), "/Volumes/Stick/Plan.docx");
}

TEST(HfsPathTest, WhatIsNoHfsPathStandsAtTheRoot) {
  EXPECT_EQ(HfsPath::toPosix("/Users/ann"), "/Users/ann");
  EXPECT_EQ(HfsPath::toPosix("Document1"), "/Document1");
}

RC_GTEST_PROP(HfsPathProperty, AnyPathComesBack, ()) {
  const std::string path = "/" + *rc::gen::arbitrary<std::string>();
  RC_ASSERT(HfsPath::toPosix(HfsPath::fromPosix(path)) == path);
}

}  // namespace
}  // namespace pellar
