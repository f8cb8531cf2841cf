#include <gtest/gtest.h>

#include "core/PathExtension.h"

namespace pellar {
namespace {

TEST(PathExtension, IsTheTextAfterTheLastDotOfTheLastComponent) {
  EXPECT_EQ(pathExtension("/Users/ann/Report.docx"), "docx");
  EXPECT_EQ(pathExtension("Report.docx"), "docx");
  EXPECT_EQ(pathExtension("archive.tar.gz"), "gz");
  EXPECT_EQ(pathExtension("/a.b/Report"), "");
  EXPECT_EQ(pathExtension("/a.b/c.d/Report.PDF"), "PDF");
  EXPECT_EQ(pathExtension("/a/Bericht.größe"), "größe");
}

TEST(PathExtension, ALeadingDotAloneAndATrailingDotMakeNone) {
  EXPECT_EQ(pathExtension(".docx"), "");
  EXPECT_EQ(pathExtension("/a/.docx"), "");
  EXPECT_EQ(pathExtension("Report."), "");
  EXPECT_EQ(pathExtension("Report.docx."), "");
  EXPECT_EQ(pathExtension(".hidden.docx"), "docx");
  EXPECT_EQ(pathExtension("."), "");
  EXPECT_EQ(pathExtension(".."), "");
  EXPECT_EQ(pathExtension(""), "");
  EXPECT_EQ(pathExtension("/"), "");
}

TEST(PathExtension, SlashesAfterTheNameAreNoComponent) {
  EXPECT_EQ(pathExtension("/a/Package.docx/"), "docx");
  EXPECT_EQ(lastComponent("/a/Package.docx//"), "Package.docx");
}

TEST(PathExtension, LowersTheLettersOfAscii) {
  EXPECT_EQ(lowerPathExtension("/a/B.DoCX"), "docx");
  EXPECT_EQ(lowerPathExtension("/a/B"), "");
  EXPECT_EQ(lowerPathExtension("/a/B.\xFF"), "\xFF");
}

TEST(UsablePath, HasNoZeroByte) {
  EXPECT_TRUE(isUsablePath("/Users/ann/Plan.docx"));
  EXPECT_TRUE(isUsablePath(""));
  EXPECT_FALSE(isUsablePath({"/Users/ann/Plan\0.docx", 21}));
  EXPECT_FALSE(isUsablePath({"/Users\0", 7}));
}

TEST(LastComponent, IsTheFileName) {
  EXPECT_EQ(lastComponent("/Users/ann/Plan.docx"), "Plan.docx");
  EXPECT_EQ(lastComponent("Plan.docx"), "Plan.docx");
  EXPECT_EQ(lastComponent("/"), "/");
  EXPECT_EQ(lastComponent("///"), "/");
  EXPECT_EQ(lastComponent(""), "");
}

TEST(WithoutLastComponent, IsTheFolderOfAFile) {
  EXPECT_EQ(withoutLastComponent("/Users/ann/Report.docx"), "/Users/ann");
  EXPECT_EQ(withoutLastComponent("/Users/ann/"), "/Users");
  EXPECT_EQ(withoutLastComponent("/Users//ann"), "/Users");
  EXPECT_EQ(withoutLastComponent("folder/file"), "folder");
}

TEST(WithoutLastComponent, OfTheRootAndWhatStandsInItIsTheRoot) {
  EXPECT_EQ(withoutLastComponent("/file"), "/");
  EXPECT_EQ(withoutLastComponent("//file//"), "/");
  EXPECT_EQ(withoutLastComponent("/"), "/");
  EXPECT_EQ(withoutLastComponent("///"), "/");
}

TEST(WithoutLastComponent, OfABareNameIsNothing) {
  EXPECT_EQ(withoutLastComponent("file"), "");
  EXPECT_EQ(withoutLastComponent("file/"), "");
  EXPECT_EQ(withoutLastComponent(""), "");
}

}  // namespace
}  // namespace pellar
