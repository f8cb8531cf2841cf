#include <gtest/gtest.h>

#include "core/PathParts.h"

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

TEST(PathExtension, ASpaceOrAMarkOfDirectionAfterTheDotMakesNone) {
  EXPECT_EQ(pathExtension("Meeting 3.5 notes"), "");
  EXPECT_EQ(pathExtension("/a/Dr. Smith"), "");
  EXPECT_EQ(pathExtension("Report.docx "), "");
  EXPECT_EQ(pathExtension("Plan v1.2"), "2");
  for (const char* mark : {"\u061C", "\u200E", "\u200F", "\u202A", "\u202B", "\u202C", "\u202D", "\u202E",
                           "\u2066", "\u2067", "\u2068", "\u2069"}) {
    EXPECT_EQ(pathExtension(std::string("Report.do") + mark + "cx"), "") << mark;
    EXPECT_EQ(pathExtension(std::string("Re") + mark + "port.docx"), "docx") << mark;
  }
  for (const char* other : {"\u061B", "\u2010", "\u2029", "\u202F", "\u2065", "\u206A", "\u00A0"})
    EXPECT_EQ(pathExtension(std::string("Report.do") + other + "cx"), std::string("do") + other + "cx");
  EXPECT_EQ(pathExtension("Report.\xE2\x80"), "\xE2\x80") << "what is no text is no mark";
}

TEST(PathExtension, TwoDotsAtTheBeginningOfTheNameMakeNone) {
  EXPECT_EQ(pathExtension("..docx"), "");
  EXPECT_EQ(pathExtension("/a/..report.docx"), "");
  EXPECT_EQ(pathExtension("a..docx"), "docx");
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
