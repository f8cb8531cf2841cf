#include <gtest/gtest.h>

#include "core/TabLabel.h"
#include "core/Utf8.h"

namespace pellar {
namespace {

using TabLabel::label;
using TabLabel::stripExtension;
using TabLabel::tagKey;

std::string titled(std::string_view title) {
  return label(title, std::nullopt);
}

TEST(TabLabel, HidesWhatTheApplicationAppended) {
  EXPECT_EQ(titled("Report.docx - Word"), "Report");
  EXPECT_EQ(titled("Budget.xlsx [Compatibility Mode]"), "Budget");
  EXPECT_EQ(titled("Deck – Saved to my Mac"), "Deck");
  EXPECT_EQ(titled("Notes - Last Modified: Monday"), "Notes");
  EXPECT_EQ(titled("Memo - Read-Only - Word"), "Memo");
  EXPECT_EQ(titled("Notes - Saved to my Mac"), "Notes");
}

TEST(TabLabel, KnowsEverySuffixWord) {
  for (const std::string word : {"Saved", "Word", "Excel", "PowerPoint", "Outlook", "Compatibility Mode",
                                 "Read-Only", "Protected View", "Repaired", "Shared", "Last Modified",
                                 "AutoRecovered", "Autosaved", "Saved to X", "Last Modified yesterday"}) {
    for (const std::string separator : {"-", "–", "—", "•"}) {
      EXPECT_EQ(titled("Plan " + separator + " " + word), "Plan");
      EXPECT_EQ(titled("Plan" + separator + word), "Plan");
    }
    EXPECT_EQ(titled("Plan [" + word + "]"), "Plan");
    EXPECT_EQ(titled("Plan[" + word + "]  "), "Plan");
    EXPECT_EQ(titled("Plan " + word), "Plan " + word) << "no separator";
    EXPECT_EQ(titled("Plan [" + word), "Plan [" + word) << "no closing bracket";
  }
}

TEST(TabLabel, KeepsWhatOnlyLooksLikeASuffix) {
  EXPECT_EQ(titled("Report - word"), "Report - word");
  EXPECT_EQ(titled("Report-Final"), "Report-Final");
  EXPECT_EQ(titled("Report - Words"), "Report - Words");
  EXPECT_EQ(titled("Report - Word 2"), "Report - Word 2");
  EXPECT_EQ(titled("Report - Word]"), "Report - Word]");
  EXPECT_EQ(titled("Report - ReadXOnly"), "Report - ReadXOnly");
  EXPECT_EQ(titled("Report [ Word]"), "Report [ Word]") << "no space inside the brackets";
  EXPECT_EQ(titled("Report − Word"), "Report − Word") << "a minus sign is no dash";
  EXPECT_EQ(titled("Plan - Saved to "), "Plan - Saved to") << "nothing follows; only the space goes";
  EXPECT_EQ(titled("Plan [Saved to ]"), "Plan [Saved to ]");
}

TEST(TabLabel, ThesisKeepsAnExtensionThatIsNotHidden) {
  EXPECT_EQ(titled("Thesis.odt - Word"), "Thesis.odt");
  EXPECT_EQ(titled("Template.xltx"), "Template.xltx");
  EXPECT_EQ(titled("Show.ppsx"), "Show.ppsx");
  EXPECT_EQ(titled("Macro.dotm"), "Macro.dotm");
}

TEST(TabLabel, TakesAnOpenEndedSuffixFromItsFirstWord) {
  EXPECT_EQ(titled("A - Saved to X - Saved to Y"), "A");
  EXPECT_EQ(titled("A - Saved to X - Word"), "A");
  EXPECT_EQ(titled("A [Saved to X] - Word"), "A");
  EXPECT_EQ(titled("A [Saved to X] [Word] - Excel"), "A");
  EXPECT_EQ(titled("A - Saved to X [Last Modified] - Word"), "A");
  EXPECT_EQ(titled("A [Last Modified x] - Saved to y"), "A");
}

TEST(TabLabel, RemovesManySuffixesTheLastFirst) {
  EXPECT_EQ(titled("Plan - Shared [Repaired] — Protected View • Excel"), "Plan");
  EXPECT_EQ(titled("Plan.docx.docx - Word"), "Plan.docx");
  EXPECT_EQ(titled(" - Word"), "");
  EXPECT_EQ(titled("[Shared]"), "");
  EXPECT_EQ(titled(".docx - Word"), ".docx") << "a leading dot alone makes no extension";
}

TEST(TabLabel, WhiteSpaceIsUnicodes) {
  EXPECT_EQ(titled("Plan\u00A0-\u00A0Word"), "Plan");
  EXPECT_EQ(titled("Plan\u3000–\u2003Word\u202F"), "Plan");
  EXPECT_EQ(titled("Plan\u2028-\u0085\u000B\u000C Word\r\n"), "Plan");
  EXPECT_EQ(titled("Plan\u200B-\u200BWord"), "Plan\u200B-\u200BWord")
      << "a zero-width space is no white space";
}

TEST(TabLabel, AnyTextAfterSavedToStopsAtALineBreak) {
  for (const std::string lineBreak : {"\n", "\u000B", "\u000C", "\r", "\u0085", "\u2028", "\u2029"}) {
    const std::string title = "Plan - Saved to my" + lineBreak + "Mac";
    EXPECT_EQ(titled(title), title);
    EXPECT_EQ(titled("Plan - Saved to Mac" + lineBreak), "Plan");
    EXPECT_EQ(titled("Plan - Saved to Mac" + lineBreak + "- Word"), "Plan");
  }
  EXPECT_EQ(titled("Plan - Saved to  \n- Word"), "Plan - Saved to") << "the space went with the line break";
}

TEST(TabLabel, TrimsSpacesAndTabsButNoLineBreaks) {
  EXPECT_EQ(titled("  \tPlan\u00A0 "), "Plan");
  EXPECT_EQ(titled("\nPlan\n"), "\nPlan\n");
  EXPECT_EQ(titled(" Plan.docx "), "Plan");
  EXPECT_EQ(titled(" "), "");
  EXPECT_EQ(titled(""), "");
}

TEST(TabLabel, AKnownPathNamesTheTab) {
  EXPECT_EQ(label("anything", "/Users/a/Plan.DOCX"), "Plan");
  EXPECT_EQ(label("anything", "/Users/a/data.json"), "data.json");
  EXPECT_EQ(label("anything", "/Users/a/Plan - Word.docx"), "Plan - Word") << "a file name has no suffix";
  EXPECT_EQ(label("anything", "/Users/a/.docx"), ".docx");
  EXPECT_EQ(label("anything", "/Users/a/Folder/"), "Folder");
  EXPECT_EQ(label("anything", "/"), "/");
  EXPECT_EQ(label("anything", "/a/ Plan .docx"), " Plan ") << "a file name is not trimmed";
}

TEST(TabLabel, AnEmptyPathCountsAsAbsent) {
  EXPECT_EQ(label("Report.docx - Word", ""), "Report");
  EXPECT_EQ(tagKey("Budget [Shared]", ""), "title:Budget");
}

TEST(TabLabel, TheTagKeyIsThePathOrTheCleanedTitle) {
  EXPECT_EQ(tagKey("Budget [Shared]", std::nullopt), "title:Budget");
  EXPECT_EQ(tagKey("Budget.xlsx - Excel", std::nullopt), "title:Budget");
  EXPECT_EQ(tagKey("x", "/Users/a/Budget.xlsx"), "/Users/a/Budget.xlsx");
  EXPECT_EQ(tagKey("x", "/Users/a/Bud\xFFget.xlsx"), "/Users/a/Bud\xFFget.xlsx");
  EXPECT_EQ(tagKey("", std::nullopt), "title:");
}

TEST(TabLabel, HidesTheSixteenExtensionsInAnyCase) {
  for (const std::string extension : {"doc", "docx", "docm", "dot", "dotx", "rtf", "xls", "xlsx", "xlsm",
                                      "xlsb", "csv", "ppt", "pptx", "pptm", "pot", "potx"}) {
    EXPECT_EQ(stripExtension("Plan." + extension), "Plan");
  }
  EXPECT_EQ(stripExtension("Plan.DocX"), "Plan");
  EXPECT_EQ(stripExtension("Plan.v2.pptx"), "Plan.v2");
  EXPECT_EQ(stripExtension("a/b.docx"), "a/b");
}

TEST(TabLabel, LeavesEveryOtherNameAlone) {
  for (const std::string name : {"Plan", "Plan.", "Plan.docx.", ".docx", "Plan.odt", "Plan.pdf",
                                 "a.docx/Plan", "docx", "Plan. docx", "", ".", "/", "Plan.docx "}) {
    EXPECT_EQ(stripExtension(name), name);
  }
}

TEST(TabLabel, EachBadByteOfATitleIsShownAsAReplacement) {
  EXPECT_EQ(titled("Pl\xFF"
                   "an.docx - Word"),
            "Pl\uFFFDan");
  EXPECT_EQ(titled("Plan - Saved to \xE2\x80"), "Plan");
  EXPECT_EQ(titled("\xC3"), "\uFFFD");
  EXPECT_EQ(titled("Plan \xE2\x80 Word"), "Plan \uFFFD\uFFFD Word");
  EXPECT_EQ(label("",
                  "/a/Pl\xF0\x9F"
                  "an.docx"),
            "Pl\uFFFD\uFFFDan");
  EXPECT_EQ(tagKey("Plan\xFF - Word", std::nullopt), "title:Plan\uFFFD");
}

TEST(TabLabel, ControlAndRightToLeftCharactersPassThrough) {
  using namespace std::string_view_literals;
  EXPECT_EQ(titled("\x1B[31mPlan\x07 - Word"), "\x1B[31mPlan\x07");
  EXPECT_EQ(titled("תוכנית.docx - Word"), "תוכנית");
  EXPECT_EQ(titled("Pl\0an - Word"sv), "Pl\0an"sv);
}

// Each of these took time in the square of its length if a removal read the whole title again.
TEST(TabLabel, LongHostileTitlesAreCleanedInLinearTime) {
  const auto repeated = [](std::string_view part) {
    std::string text;
    while (text.size() < 300'000) text += part;
    return text;
  };
  EXPECT_EQ(titled("Plan" + repeated(" - Word")), "Plan");
  EXPECT_EQ(titled("Plan" + repeated(" [Word]")), "Plan");
  EXPECT_EQ(titled("Plan" + repeated(" [Word] - Word")), "Plan");
  EXPECT_EQ(titled("xSaved to" + repeated(" - Word")), "xSaved to");
  EXPECT_EQ(titled("x\nSaved to x]" + repeated(" - Word [Shared]")), "x\nSaved to x]");
  EXPECT_EQ(titled("Plan" + repeated(" - Saved to X\n")), "Plan");
  EXPECT_EQ(titled("Plan" + repeated(" - Last Modified\n[Last Modified]")), "Plan");
  EXPECT_EQ(titled(repeated("- ") + "x"), repeated("- ") + "x");
  EXPECT_EQ(titled(repeated(" ") + "x"), "x");
  EXPECT_EQ(titled("x" + repeated(" ")), "x");
  EXPECT_EQ(titled("Plan -" + repeated("\u3000") + "Word"), "Plan");
  EXPECT_EQ(titled(repeated("[")), repeated("["));
}

TEST(TabLabel, TheDocumentsNameKeepsItsExtension) {
  EXPECT_EQ(TabLabel::documentName("Plan.docx - Read-Only - Word"), "Plan.docx");
  EXPECT_EQ(TabLabel::documentName(" Plan "), "Plan");
  EXPECT_EQ(TabLabel::documentName("pl\xFF"), "pl\uFFFD");
}

TEST(TabLabel, ATitleNamesAFileByItsLabelItsNameOrItsNameWithoutExtension) {
  EXPECT_TRUE(TabLabel::titleNames("Plan [Compatibility Mode]", "/d/Plan.docx"));
  EXPECT_TRUE(TabLabel::titleNames("Old Plan", "/d/Old Plan.docx"));
  EXPECT_TRUE(TabLabel::titleNames("Plan.txt - Editor", "/d/Plan.txt"));
  EXPECT_TRUE(TabLabel::titleNames("Plan \u2014 Edited", "/d/Plan.txt"));
  EXPECT_TRUE(TabLabel::titleNames("R\u00E9sum\u00E9.txt", "/d/Re\u0301sume\u0301.txt"));
  EXPECT_FALSE(TabLabel::titleNames("Plan.md - Editor", "/d/Plan.txt"));
  EXPECT_FALSE(TabLabel::titleNames("Plan 2 - Word", "/d/Plan.docx"));
  EXPECT_FALSE(TabLabel::titleNames("Untitled", "/d/Plan.txt"));
  EXPECT_FALSE(TabLabel::titleNames("", "/d/Plan.txt"));
}

}  // namespace
}  // namespace pellar
