#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/MenuStory.h"

namespace pellar {
namespace {

class Groups : public WordStory {
 protected:
  void saveAs(const std::string& name) {
    mac.alerts().nextType(name);
    chooseInTool("Groups", {"Save open tabs as group…"});
  }
  void put(const std::string& name, const std::vector<std::string>& paths) {
    pellar.store().update([&](AppState& state) { state.groups[name] = paths; });
  }
};

TEST_F(Groups, ThereAreNoneAtFirst) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  EXPECT_EQ(toolMenu("Groups"), (Rows{"Save open tabs as group…", "---", "(No groups yet)"}));
  EXPECT_EQ(mac.menus().places().back(), strip().toolPoint("Groups"));
}

TEST_F(Groups, TheOpenTabsAreSavedInTabOrderUnderTheNameTyped) {
  openThree();
  start();
  strip().dragTab("Notes").to(0);
  saveAs("Monday");
  ASSERT_EQ(mac.alerts().shown().size(), 1U);
  const TextAlert& question = mac.alerts().shown().front();
  EXPECT_EQ(question.messageText, "Group name");
  EXPECT_EQ(question.informativeText, "3 saved files will be in this group.");
  EXPECT_EQ(question.fieldText, "");
  EXPECT_EQ(saved().groups.at("Monday"),
            (Labels{pathOf("Notes.docx"), pathOf("Plan.docx"), pathOf("Report.docx")}));
  EXPECT_EQ(toolMenu("Groups"), (Rows{"Save open tabs as group…", "---", "Monday ▸"}));
  EXPECT_EQ(toolMenu("Groups", "Monday"), (Rows{"Open 3 files", "Delete group"}));
}

TEST_F(Groups, OneFileIsCountedInTheSameWords) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  saveAs("One");
  EXPECT_EQ(mac.alerts().shown().back().informativeText, "1 saved files will be in this group.");
  EXPECT_EQ(toolMenu("Groups", "One"), (Rows{"Open 1 files", "Delete group"}));
}

TEST_F(Groups, ADocumentWithoutAFileIsLeftOut) {
  static_cast<void>(openInWord("Plan.docx"));
  static_cast<void>(newInWord("Document1"));
  start();
  saveAs("Monday");
  EXPECT_EQ(saved().groups.at("Monday"), Labels{pathOf("Plan.docx")});
}

TEST_F(Groups, AFileGivenAMomentAgoIsFoundWhenTheGroupIsSaved) {
  const auto fresh = newInWord("Letter");
  start();
  fresh->path = pathOf("Letter.docx");
  saveAs("Monday");
  EXPECT_EQ(saved().groups.at("Monday"), Labels{pathOf("Letter.docx")});
  EXPECT_EQ(knownFile(), pathOf("Letter.docx"));
}

TEST_F(Groups, AFileFoundWhileAnotherApplicationIsInFrontIsKnownAfterwards) {
  const auto fresh = newInWord("Letter");
  open("Text");
  start();
  mac.menus().next([&](SimOpenMenu& menu) {
    mac.advance(std::chrono::seconds(31));
    mac.activate(editor);
    mac.settle();
    fresh->path = pathOf("Letter.docx");
    menu.choose({"Save open tabs as group…"});
  });
  mac.alerts().nextType("Monday");
  strip().clickTool("Groups");
  EXPECT_EQ(saved().groups.at("Monday"), Labels{pathOf("Letter.docx")});
  const auto asked = mac.scripts().sources().size();
  mac.activate(word);
  mac.settle();
  EXPECT_EQ(knownFile(), pathOf("Letter.docx"));
  EXPECT_EQ(mac.scripts().sources().size(), asked);
}

TEST_F(Groups, WithoutAnySavedFileNothingIsAsked) {
  static_cast<void>(newInWord("Document1"));
  start();
  chooseInTool("Groups", {"Save open tabs as group…"});
  EXPECT_TRUE(mac.alerts().shown().empty());
  EXPECT_TRUE(saved().groups.empty());
}

TEST_F(Groups, AGroupOfTheSameNameIsReplacedWithoutAsking) {
  put("Monday", {"/old.docx"});
  static_cast<void>(openInWord("Plan.docx"));
  start();
  saveAs("Monday");
  EXPECT_EQ(mac.alerts().shown().size(), 1U);
  EXPECT_EQ(saved().groups.at("Monday"), Labels{pathOf("Plan.docx")});
}

TEST_F(Groups, ANameTypedInOtherCharactersIsTheSameName) {
  put("U\u0308bersicht", {"/old.docx"});
  static_cast<void>(openInWord("Plan.docx"));
  start();
  saveAs("\u00DCbersicht");
  EXPECT_EQ(saved().groups, (NameMap<Labels>{{"U\u0308bersicht", {pathOf("Plan.docx")}}}));
}

TEST_F(Groups, ANameOfBlanksOrNoAnswerSavesNothing) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  saveAs("   \t ");
  saveAs("");
  mac.alerts().nextCancel("Monday");
  chooseInTool("Groups", {"Save open tabs as group…"});
  EXPECT_TRUE(saved().groups.empty());
  saveAs("  Monday\t");
  EXPECT_TRUE(saved().groups.contains("Monday"));
}

TEST_F(Groups, NamesAreSorted) {
  for (const auto* name : {"b", "Z", "ä", "a", "10", "2"}) put(name, {"/x"});
  static_cast<void>(openInWord("Plan.docx"));
  start();
  EXPECT_EQ(toolMenu("Groups"),
            (Rows{"Save open tabs as group…", "---", "10 ▸", "2 ▸", "Z ▸", "a ▸", "b ▸", "ä ▸"}));
}

TEST_F(Groups, OpeningOneOpensItsFilesInOrderAndTheirTabsCome) {
  put("Monday", {pathOf("B.docx"), pathOf("A.docx"), "/gone/C.docx"});
  static_cast<void>(openInWord("Plan.docx"));
  mac.workspace().onOpen = [&](const std::string& path) {
    if (path.starts_with(mac.home().string())) mac.office().openInWindow(word, {.path = path});
  };
  start();
  chooseInTool("Groups", {"Monday", "Open 3 files"});
  EXPECT_EQ(mac.workspace().opened(), (Labels{pathOf("B.docx"), pathOf("A.docx"), "/gone/C.docx"}));
  EXPECT_EQ(strip().tabs(), (Labels{"Plan", "B", "A"}));
}

TEST_F(Groups, AFileWithAZeroByteInItsNameOpensNoOther) {
  const std::string plan = pathOf("Plan.docx");
  put("Monday", {plan + std::string("\0.txt", 5), pathOf("Report.docx")});
  static_cast<void>(openInWord("Plan.docx"));
  start();
  chooseInTool("Groups", {"Monday", "Open 2 files"});
  EXPECT_EQ(mac.workspace().opened(), Labels{pathOf("Report.docx")});
}

TEST_F(Groups, ADeletedOneIsGoneForGood) {
  put("Monday", {"/a"});
  put("Tuesday", {"/b"});
  static_cast<void>(openInWord("Plan.docx"));
  start();
  chooseInTool("Groups", {"Monday", "Delete group"});
  EXPECT_EQ(toolMenu("Groups"), (Rows{"Save open tabs as group…", "---", "Tuesday ▸"}));
  EXPECT_FALSE(saved().groups.contains("Monday"));
  EXPECT_TRUE(saved().groups.contains("Tuesday"));
}

TEST_F(Groups, OtherApplicationsHaveThemToo) {
  start();
  open("Plan", {100, 200, 1300, 600}).setDocument("file:///Users/ann/Plan.txt");
  mac.activate(editor);
  mac.settle();
  saveAs("Texts");
  EXPECT_EQ(saved().groups.at("Texts"), Labels{"/Users/ann/Plan.txt"});
  EXPECT_TRUE(mac.scripts().sources().empty());
}

TEST_F(Groups, FiveHundredFilesOfWhichSomeAreGoneAreAllAskedFor) {
  std::vector<std::string> paths;
  for (int i = 0; i < 500; ++i) paths.push_back(pathOf("File " + std::to_string(i) + ".docx"));
  put("Everything", paths);
  static_cast<void>(openInWord("Plan.docx"));
  mac.workspace().onOpen = [&](const std::string& path) {
    // Every third one is gone; the system says so, and nothing comes of it.
    if (path.find("3.docx") == std::string::npos) mac.office().openInWindow(word, {.path = path});
  };
  start();
  chooseInTool("Groups", {"Everything", "Open 500 files"});
  EXPECT_EQ(mac.workspace().opened(), paths);
  EXPECT_EQ(pellar.tracker().windows().size(), 451U);
  EXPECT_TRUE(stripShown());
  EXPECT_EQ(saved().groups.at("Everything"), paths);
}

TEST_F(Groups, StrangeNamesAreKeptAndShownAsTheyAre) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  const std::vector<std::string> names{"two\nlines", "\u202Eright to left \u05E9\u05DC\u05D5\u05DD",
                                       std::string(10'240, 'n'), "Save open tabs as group…", "a & _b\tc"};
  for (const auto& name : names) saveAs(name);
  EXPECT_EQ(toolMenu("Groups").size(), 2 + names.size());
  for (const auto& name : names) {
    EXPECT_EQ(saved().groups.at(name), Labels{pathOf("Plan.docx")});
    chooseInTool("Groups", {name, "Open 1 files"});
    chooseInTool("Groups", {name, "Delete group"});
  }
  EXPECT_EQ(mac.workspace().opened().size(), names.size());
  EXPECT_TRUE(saved().groups.empty());
}

TEST_F(Groups, OneThatWasDeletedWhileItsMenuWasOpenOpensNothing) {
  put("Monday", {"/a"});
  static_cast<void>(openInWord("Plan.docx"));
  start();
  mac.menus().next([&](SimOpenMenu& menu) {
    pellar.store().update([](AppState& state) { state.groups.clear(); });
    menu.choose({"Monday", "Open 1 files"});
  });
  strip().clickTool("Groups");
  EXPECT_TRUE(mac.workspace().opened().empty());
}

TEST_F(Groups, TheApplicationMayChangeWhileTheNameIsTyped) {
  openThree();
  start();
  mac.alerts().next([&](const TextAlert&) {
    mac.terminate(word);
    mac.settle();
    return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, "Monday"};
  });
  chooseInTool("Groups", {"Save open tabs as group…"});
  EXPECT_EQ(saved().groups.at("Monday").size(), 3U);
  mac.activate(editor);
  EXPECT_FALSE(stripShown());
}

TEST_F(Groups, TheTabsOfTheApplicationWhoseMenuItWasAreSaved) {
  openThree();
  open("Plan").setDocument("file:///Users/ann/Plan.txt");
  start();
  mac.alerts().nextType("Monday");
  mac.menus().next([&](SimOpenMenu& menu) {
    mac.activate(editor);
    mac.settle();
    menu.choose({"Save open tabs as group…"});
  });
  strip().clickTool("Groups");
  EXPECT_EQ(saved().groups.at("Monday"),
            (Labels{pathOf("Plan.docx"), pathOf("Report.docx"), pathOf("Notes.docx")}));
}

}  // namespace
}  // namespace pellar
