#include <gtest/gtest.h>

#include "core/FileUrl.h"

namespace pellar {
namespace {

TEST(FileUrl, GivesTheDecodedPath) {
  EXPECT_EQ(pathOfFileUrl("file:///Users/ann/My%20Plan.txt"), "/Users/ann/My Plan.txt");
  EXPECT_EQ(pathOfFileUrl("file:///Users/ann/caf%C3%A9"), "/Users/ann/caf\xC3\xA9");
  EXPECT_EQ(pathOfFileUrl("file:///Users/ann/caf%c3%a9"), "/Users/ann/caf\xC3\xA9");
  EXPECT_EQ(pathOfFileUrl("file:///%aF%fA"), "/\xAF\xFA");
  EXPECT_EQ(pathOfFileUrl("file:///a%3Fb%23c"), "/a?b#c");
  EXPECT_EQ(pathOfFileUrl("file:///a b\x80"), "/a b\x80") << "as some programs leave it";
}

TEST(FileUrl, TakesAnyCaseAndAnyHost) {
  EXPECT_EQ(pathOfFileUrl("FILE:///a"), "/a");
  EXPECT_EQ(pathOfFileUrl("file://localhost/a"), "/a");
  EXPECT_EQ(pathOfFileUrl("file://ann-pc/a"), "/a");
  EXPECT_EQ(pathOfFileUrl("file:/a"), "/a");
}

TEST(FileUrl, AnyPathComesBackFromItsUrl) {
  for (const std::string path :
       {"/", "/a/b.txt", "/a b/100%.txt", "/caf\xe9", "/d\xc3\xa9j\xc3\xa0", "/a?b#c\n\x7f", "/~ann/x-1_2"})
    EXPECT_EQ(pathOfFileUrl(fileUrlOf(path)), path);
  EXPECT_EQ(fileUrlOf("/a b/100%.txt"), "file:///a%20b/100%25.txt");
}

TEST(FileUrl, LeavesOutTrailingSlashesQueriesAndFragments) {
  EXPECT_EQ(pathOfFileUrl("file:///folder/"), "/folder");
  EXPECT_EQ(pathOfFileUrl("file:///"), "/");
  EXPECT_EQ(pathOfFileUrl("file:///a?version=2"), "/a");
  EXPECT_EQ(pathOfFileUrl("file:///a#page"), "/a");
}

TEST(FileUrl, OtherSchemesHaveNoPath) {
  EXPECT_EQ(pathOfFileUrl("https://example.org/a"), std::nullopt);
  EXPECT_EQ(pathOfFileUrl("/Users/ann/a"), std::nullopt);
  EXPECT_EQ(pathOfFileUrl("/a"), std::nullopt);
  EXPECT_EQ(pathOfFileUrl("files:///a"), std::nullopt);
}

TEST(FileUrl, TextThatIsNoUrlHasNoPath) {
  for (const auto* text : {"", "file", "file:", "file://", "file://host", "file:a", "file:///a%",
                           "file:///a%4", "file:///a%zz", "file:///a%00b", "file:///a\nb", "file:a/b",
                           "file:///a%4g", "file:///a%g4", "file:///a\x1f", "file:///a\x7f"})
    EXPECT_EQ(pathOfFileUrl(text), std::nullopt) << text;
}

}  // namespace
}  // namespace pellar
