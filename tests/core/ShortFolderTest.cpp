#include <gtest/gtest.h>

#include "core/ShortFolder.h"

namespace pellar {
namespace {

std::string shortened(std::string_view path) {
  return shortFolder(path, "/Users/ann");
}

TEST(ShortFolder, TheHomeFolderIsATilde) {
  EXPECT_EQ(shortened("/Users/ann"), "~");
}

TEST(ShortFolder, BelowItEverythingIsKept) {
  EXPECT_EQ(shortened("/Users/ann/Documents/Reports"), "~/Documents/Reports");
  EXPECT_EQ(shortened("/Users/ann/a/b/c/d/e"), "~/a/b/c/d/e");
}

TEST(ShortFolder, ANeighbourWhoseNameBeginsTheSameIsNotHome) {
  EXPECT_EQ(shortened("/Users/anna"), "/Users/anna");
  EXPECT_EQ(shortened("/Users/anna/Documents"), "…/anna/Documents");
}

TEST(ShortFolder, ElsewhereTheLastTwoFoldersAreLeft) {
  EXPECT_EQ(shortened("/Volumes/Shared/Team/Q3"), "…/Team/Q3");
  EXPECT_EQ(shortened("/a/b/c"), "…/b/c");
  EXPECT_EQ(shortened("/a/b/c/"), "…/b/c");
}

TEST(ShortFolder, FewFoldersAreLeftAsTheyAre) {
  EXPECT_EQ(shortened("/Users"), "/Users");
  EXPECT_EQ(shortened("/a/b"), "/a/b");
  EXPECT_EQ(shortened("//a//b/"), "//a//b/");
  EXPECT_EQ(shortened("/"), "/");
  EXPECT_EQ(shortened(""), "");
}

TEST(ShortFolder, WithoutAHomeFolderNothingIsATilde) {
  EXPECT_EQ(shortFolder("/a/b/c", ""), "…/b/c");
  EXPECT_EQ(shortFolder("", ""), "");
}

TEST(ShortFolder, TheRootAsHomeHasNothingBelowIt) {
  EXPECT_EQ(shortFolder("/", "/"), "~");
  EXPECT_EQ(shortFolder("/a", "/"), "/a");
}

}  // namespace
}  // namespace pellar
