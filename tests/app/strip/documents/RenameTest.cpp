#include <gtest/gtest.h>

#include "tests/app/strip/documents/RenameStory.h"
#include "tests/support/Files.h"

namespace pellar {
namespace {

using Renaming = RenameStory;

TEST_F(Renaming, AsksForTheNewNameOverTheOldOne) {
  static_cast<void>(openInWord("Report.v2.docx"));
  start();
  mac.alerts().nextCancel();
  choose("Report.v2", {"Rename…"});
  ASSERT_EQ(mac.alerts().shown().size(), 1U);
  const TextAlert& question = mac.alerts().shown().front();
  EXPECT_EQ(question.messageText, "Rename file");
  EXPECT_EQ(question.informativeText, "New name for Report.v2:");
  EXPECT_EQ(question.fieldText, "Report.v2");
}

TEST_F(Renaming, TheFileTheTabTheColourAndTheRecentFilesHaveTheNewName) {
  const auto plan = openInWord("Plan.docx");
  static_cast<void>(openInWord("Report.docx"));
  start();
  choose("Plan", {"Colour tag", "Red"});
  SimOffice::edit(*plan, "typed but not saved");
  renameTab("Plan", "  Budget ");
  EXPECT_FALSE(exists(pathOf("Plan.docx")));
  EXPECT_EQ(test::content(pathOf("Budget.docx")), "typed but not saved");
  EXPECT_EQ(strip().tabs(), (Labels{"Budget", "Report"}));
  EXPECT_EQ(strip().tagOf("Budget"), Color::of(SystemColor::red));
  EXPECT_EQ(saved().tags, redOf("Budget.docx"));
  EXPECT_TRUE(saved().recent.contains(pathOf("Budget.docx")));
  choose("Budget", {"Copy path"});
  EXPECT_EQ(mac.pasteboard().string(), pathOf("Budget.docx"));
}

// A file of that name was there once.
TEST_F(Renaming, TheDocumentKeepsItsColourUnderANameThatHadAnother) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  choose("Plan", {"Colour tag", "Red"});
  tag(pathOf("Budget.docx"), "blue");
  renameTab("Plan", "Budget");
  EXPECT_EQ(saved().tags, redOf("Budget.docx"));
  EXPECT_EQ(strip().tagOf("Budget"), Color::of(SystemColor::red));
}

TEST_F(Renaming, ATypedExtensionIsTaken) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  renameTab("Plan", "Plan.rtf");
  EXPECT_TRUE(exists(pathOf("Plan.rtf")));
  EXPECT_FALSE(exists(pathOf("Plan.docx")));
}

TEST_F(Renaming, ANameWithADotAndASpaceIsAskedForInFullAndKeepsTheExtension) {
  static_cast<void>(openInWord("Plan.docx"));
  static_cast<void>(openInWord("Meeting 3.5 notes"));
  start();
  renameTab("Plan", "Dr. Smith");
  EXPECT_TRUE(exists(pathOf("Dr. Smith.docx")));
  EXPECT_EQ(strip().tabs(), (Labels{"Dr. Smith", "Meeting 3.5 notes"}));
  mac.alerts().nextCancel();
  choose("Meeting 3.5 notes", {"Rename…"});
  EXPECT_EQ(mac.alerts().shown().back().fieldText, "Meeting 3.5 notes");
}

TEST_F(Renaming, TheSameNameNoNameAndNoAnswerDoNothing) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  const auto asked = mac.scripts().sources().size();
  renameTab("Plan", "Plan");
  renameTab("Plan", " Plan\t");
  renameTab("Plan", "   ");
  mac.alerts().nextCancel("Budget");
  choose("Plan", {"Rename…"});
  EXPECT_EQ(mac.scripts().sources().size(), asked);
  EXPECT_TRUE(exists(pathOf("Plan.docx")));
  EXPECT_EQ(log.messages(), Labels{"tracking started"});
}

TEST_F(Renaming, TheSameNameTypedInOtherCharactersDoesNothing) {
  static_cast<void>(openInWord("U\u0308bersicht.docx"));  // as some file systems hand names out
  start();
  const auto asked = mac.scripts().sources().size();
  renameTab(strip().tabs().front(), "\u00DCbersicht");
  EXPECT_EQ(mac.scripts().sources().size(), asked);
  EXPECT_TRUE(exists(pathOf("U\u0308bersicht.docx")));
  EXPECT_EQ(log.messages(), Labels{"tracking started"});
}

TEST_F(Renaming, AnotherFileIsNeverOverwritten) {
  static_cast<void>(openInWord("Plan.docx"));
  test::put(pathOf("Budget.docx"), "somebody else's");
  tag(pathOf("Plan.docx"), "red");
  start();
  renameTab("Plan", "Budget");
  EXPECT_EQ(test::content(pathOf("Budget.docx")), "somebody else's");
  EXPECT_TRUE(exists(pathOf("Plan.docx")));
  EXPECT_TRUE(log.has(failure("Plan.docx", "Budget")));
  EXPECT_EQ(saved().tags, redOf("Plan.docx"));
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
}

TEST_F(Renaming, AnUntaggedDocumentTakesNobodysColour) {
  static_cast<void>(openInWord("Plan.docx"));
  static_cast<void>(openInWord("Report.docx"));
  tag(pathOf("Report.docx"), "red");
  start();
  renameTab("Plan", "Budget");
  EXPECT_EQ(saved().tags, redOf("Report.docx"));
}

TEST_F(Renaming, TheToolRenamesTheFocusedDocument) {
  static_cast<void>(openInWord("Plan.docx"));
  static_cast<void>(openInWord("Report.docx"));
  start();
  mac.alerts().nextType("Budget");
  strip().clickTool("Rename");
  EXPECT_EQ(mac.alerts().shown().back().fieldText, "Report");
  EXPECT_EQ(strip().tabs(), (Labels{"Plan", "Budget"}));
}

TEST_F(Renaming, TheToolFindsAFileGivenAMomentAgo) {
  const auto fresh = newInWord("Letter");
  start();
  strip().clickTool("Rename");
  EXPECT_TRUE(mac.alerts().shown().empty());
  fresh->path = pathOf("Letter.docx");
  mac.alerts().nextCancel();
  strip().clickTool("Rename");
  EXPECT_EQ(mac.alerts().shown().size(), 1U);
  EXPECT_EQ(knownFile(), pathOf("Letter.docx"));
}

TEST_F(Renaming, PellarIsInFrontWhileItAsksAndWordAfterwards) {
  const auto plan = openInWord("Plan.docx");
  start();
  answerAfter(
      [&] {
        EXPECT_EQ(mac.workspace().frontmostApplication()->bundleId, mac.workspace().ownBundleId());
        EXPECT_EQ(strip().tabs(), Labels{"Plan"});
        expectStripOver(*plan->window);
      },
      "Budget");
  choose("Plan", {"Rename…"});
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, word.pid());
  EXPECT_EQ(strip().tabs(), Labels{"Budget"});
  expectStripOver(*plan->window);
}

TEST_F(Renaming, AnUnchangedAnswerToANameWithBlanksAroundItDoesNothing) {
  static_cast<void>(openInWord(" Plan .docx"));
  start();
  const auto asked = mac.scripts().sources().size();
  mac.alerts().next([](const TextAlert& question) {
    return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, question.fieldText};
  });
  strip().clickTool("Rename");
  EXPECT_EQ(mac.scripts().sources().size(), asked);
  EXPECT_TRUE(exists(pathOf(" Plan .docx")));
  EXPECT_EQ(log.messages(), Labels{"tracking started"});
}

}  // namespace
}  // namespace pellar
