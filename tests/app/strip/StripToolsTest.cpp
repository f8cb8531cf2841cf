#include <gtest/gtest.h>

#include "tests/support/MenuStory.h"

namespace pellar {
namespace {

using EditorTools = MenuStory;
using WordTools = WordStory;

// A strip too narrow for the text tools has the "more" tool in their place.
constexpr AxRect narrow{100, 200, 250, 600};

TEST_F(WordTools, MoreHoldsWhatANarrowStripHasNoRoomFor) {
  const auto plan = openInWord("Plan.docx");
  plan->window->setFrame(narrow);
  start();
  EXPECT_EQ(toolMenu(tool::overflow),
            (Rows{"Rename…", "Auto-save: off", "Save all", "New document", "---", "Groups…", "Close all"}));
  EXPECT_EQ(mac.menus().places().back(), strip().toolPoint(tool::overflow));
}

TEST_F(EditorTools, MoreHoldsLessForOtherApplications) {
  open("Plan", narrow);
  start();
  EXPECT_EQ(toolMenu(tool::overflow), (Rows{"Groups…", "Close all"}));
}

TEST_F(WordTools, MoreTogglesAutoSave) {
  const auto plan = openInWord("Plan.docx");
  plan->window->setFrame(narrow);
  start();
  chooseInTool(tool::overflow, {"Auto-save: off"});
  EXPECT_EQ(saved().settings.autoSaveMinutes, 1);
  chooseInTool(tool::overflow, {"Auto-save: on"});
  EXPECT_EQ(saved().settings.autoSaveMinutes, 0);
}

TEST_F(WordTools, MoreSaysWhetherAutoSaveIsOn) {
  const auto plan = openInWord("Plan.docx");
  plan->window->setFrame(narrow);
  start();
  const auto rowFor = [&](std::int64_t minutes) {
    pellar.store().update([&](AppState& state) { state.settings.autoSaveMinutes = minutes; });
    return toolMenu(tool::overflow).at(1);
  };
  EXPECT_EQ(rowFor(-3), "Auto-save: off");
  EXPECT_EQ(rowFor(0), "Auto-save: off");
  EXPECT_EQ(rowFor(1), "Auto-save: on");
  EXPECT_EQ(rowFor(60), "Auto-save: on");
}

TEST_F(WordTools, MoreOfOutlookHasTheSameRowsAndRenamesNothing) {
  start();
  auto outlook = mac.launch({.bundleId = "com.microsoft.Outlook", .name = "Microsoft Outlook"});
  outlook.open("Inbox", narrow);
  mac.settle();
  EXPECT_EQ(toolMenu(tool::overflow),
            (Rows{"Rename…", "Auto-save: off", "Save all", "New document", "---", "Groups…", "Close all"}));
  chooseInTool(tool::overflow, {"Rename…"});
  EXPECT_TRUE(mac.alerts().shown().empty());
  EXPECT_TRUE(mac.scripts().sources().empty());
}

TEST_F(WordTools, MoreRenamesTheFocusedDocument) {
  const auto fresh = newInWord("Letter");
  fresh->window->setFrame(narrow);
  start();
  chooseInTool(tool::overflow, {"Rename…"});
  EXPECT_TRUE(mac.alerts().shown().empty());
  fresh->name = "Letter.docx";
  fresh->path = pathOf("Letter.docx");
  SimOffice::edit(*fresh, "Dear Ann");
  chooseInTool(tool::overflow, {"Save all"});
  EXPECT_TRUE(fresh->saved);
  mac.alerts().nextType("Answer");
  chooseInTool(tool::overflow, {"Rename…"});
  EXPECT_EQ(strip().tabs(), Labels{"Answer"});
  EXPECT_EQ(fresh->path, pathOf("Answer.docx"));
}

TEST_F(WordTools, MoreRenamesTheDocumentItWasOpenedOver) {
  openThree();
  const auto notes = mac.office().documents(word).back();
  notes->window->setFrame(narrow);
  start();
  mac.menus().next([&](SimOpenMenu& menu) {
    word.focus(*mac.office().documents(word).front()->window);
    mac.settle();
    menu.choose({"Rename…"});
  });
  mac.alerts().nextCancel();
  strip().clickTool(tool::overflow);
  EXPECT_EQ(mac.alerts().shown().back().fieldText, "Notes");
}

TEST_F(WordTools, MoreMakesANewDocument) {
  const auto plan = openInWord("Plan.docx");
  plan->window->setFrame(narrow);
  start();
  chooseInTool(tool::overflow, {"New document"});
  EXPECT_EQ(mac.office().documents(word).size(), 2U);
}

TEST_F(WordTools, MoreLeadsToTheGroupsAtTheSamePlace) {
  const auto plan = openInWord("Plan.docx");
  plan->window->setFrame(narrow);
  start();
  mac.menus().nextChoose({"Groups…"});
  mac.menus().nextChoose({"Save open tabs as group…"});
  mac.alerts().nextType("Monday");
  strip().clickTool(tool::overflow);
  ASSERT_EQ(mac.menus().places().size(), 2U);
  EXPECT_EQ(mac.menus().places().at(0), mac.menus().places().at(1));
  EXPECT_EQ(saved().groups.at("Monday"), Labels{pathOf("Plan.docx")});
}

TEST_F(EditorTools, MoreClosesAllWindows) {
  open("Plan", narrow);
  open("Report", narrow);
  start();
  chooseInTool(tool::overflow, {"Close all"});
  EXPECT_TRUE(editor.windowsFrontToBack().empty());
  EXPECT_FALSE(stripShown());
}

TEST_F(WordTools, SaveAllSavesTheDocumentsOfWord) {
  const auto plan = openInWord("Plan.docx");
  const auto report = openInWord("Report.docx");
  start();
  SimOffice::edit(*plan, "a new plan");
  strip().clickTool("Save all");
  EXPECT_TRUE(plan->saved);
  EXPECT_EQ(report->saves, 1);
}

TEST_F(WordTools, NewMakesADocumentOfWord) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  strip().clickTool(tool::newDocument);
  EXPECT_EQ(mac.office().documents(word).size(), 2U);
}

TEST_F(EditorTools, SaveAllPressesSaveForEachWindowWithAFile) {
  auto plan = open("Plan", {100, 200, 1300, 600});
  plan.setDocument("file:///Users/ann/Plan.txt");
  open("Untitled", {100, 200, 1300, 600});
  auto report = open("Report", {100, 200, 1300, 600});
  report.setDocument("file:///Users/ann/Report.txt");
  int saves = 0;
  editor.setMenuBar({{"Apple", {}}, {"Editor", {}}, {"File", {{"New"}, {"Save", [&] { ++saves; }}}}});
  start();
  strip().clickTool("Save all");
  EXPECT_EQ(saves, 2);
  EXPECT_TRUE(log.has("save all: 2 of 3 windows"));
  EXPECT_TRUE(mac.scripts().sources().empty());
}

TEST_F(EditorTools, NewPressesTheFirstOfTheUsualItems) {
  open("Plan", {100, 200, 1300, 600});
  std::string pressed;
  const auto item = [&](const std::string& title) {
    return SimMenuItem{title, [&pressed, title] { pressed = title; }};
  };
  const auto pressedOf = [&](const std::vector<std::string>& titles) {
    pressed = "nothing";
    std::vector<SimMenuItem> items;
    for (const auto& title : titles) items.push_back(item(title));
    editor.setMenuBar({{"Apple", {}}, {"File", items}});
    strip().clickTool(tool::newDocument);
    return pressed;
  };
  start();
  EXPECT_EQ(pressedOf({"New Tab", "New Window", "New File", "New Document", "New"}), "New");
  EXPECT_EQ(pressedOf({"New Tab", "New Window", "New File", "New Document"}), "New Document");
  EXPECT_EQ(pressedOf({"New Tab", "New Window", "New File"}), "New File");
  EXPECT_EQ(pressedOf({"New Tab", "New Window"}), "New Window");
  EXPECT_EQ(pressedOf({"Open", "New Tab"}), "New Tab");
  EXPECT_EQ(pressedOf({"Open", "New Folder"}), "nothing");
}

TEST_F(EditorTools, WithoutAMenuBarTheyDoNothing) {
  open("Plan", {100, 200, 1300, 600}).setDocument("file:///Users/ann/Plan.txt");
  start();
  strip().clickTool(tool::newDocument);
  strip().clickTool("Save all");
  EXPECT_TRUE(log.has("save all: 0 of 1 windows"));
  EXPECT_TRUE(stripShown());
}

TEST_F(WordTools, OutlookMakesANewMessage) {
  start();
  auto outlook = mac.launch({.bundleId = "com.microsoft.Outlook", .name = "Microsoft Outlook"});
  outlook.open("Inbox", {100, 200, 1300, 600});
  strip().clickTool("Save all");
  EXPECT_TRUE(mac.scripts().sources().empty());
  strip().clickTool(tool::newDocument);
  ASSERT_EQ(mac.scripts().sources().size(), 1U);
  EXPECT_NE(mac.scripts().sources().front().find("outgoing message"), std::string::npos);
  EXPECT_EQ(log.messages(), Labels{"tracking started"});
}

}  // namespace
}  // namespace pellar
