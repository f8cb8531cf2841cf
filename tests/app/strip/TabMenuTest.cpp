#include <gtest/gtest.h>

#include <array>

#include "tests/support/MenuStory.h"

namespace pellar {
namespace {

using TabMenu = MenuStory;
using WordTabMenu = WordStory;

TEST_F(WordTabMenu, OffersEverythingForADocumentOfWord) {
  openThree();
  start();
  EXPECT_EQ(tabMenu("Plan"),
            (Rows{"Close", "Close others", "Close all", "Save all", "---", "Rename…",
                  "Open containing folder", "Copy path", "---", "Layout ▸", "Colour tag ▸"}));
}

TEST_F(WordTabMenu, OffersNothingThatNeedsAFileForADocumentNeverSaved) {
  const auto fresh = newInWord("Document1");
  start();
  EXPECT_EQ(tabMenu("Document1"),
            (Rows{"Close", "Close others", "Close all", "Save all", "---", "(Rename…)",
                  "(Open containing folder)", "(Copy path)", "---", "Layout ▸", "Colour tag ▸"}));
}

TEST_F(TabMenu, HasNoSaveAllAndNoRenamingInAnotherApplication) {
  open("Plan").setDocument("file:///Users/ann/Plan.txt");
  open("Untitled");
  start();
  const Rows rows{
      "Close",     "Close others", "Close all", "---",         "(Rename…)", "Open containing folder",
      "Copy path", "---",          "Layout ▸",  "Colour tag ▸"};
  EXPECT_EQ(tabMenu("Plan.txt"), rows);
  EXPECT_EQ(tabMenu("Untitled"),
            (Rows{"Close", "Close others", "Close all", "---", "(Rename…)", "(Open containing folder)",
                  "(Copy path)", "---", "Layout ▸", "Colour tag ▸"}));
  EXPECT_TRUE(mac.scripts().sources().empty());
}

TEST_F(TabMenu, NeverRenamesInOutlook) {
  auto outlook = mac.launch({.bundleId = "com.microsoft.Outlook", .name = "Microsoft Outlook"});
  outlook.open("Inbox");
  start();
  EXPECT_EQ(tabMenu("Inbox"),
            (Rows{"Close", "Close others", "Close all", "Save all", "---", "(Rename…)",
                  "(Open containing folder)", "(Copy path)", "---", "Layout ▸", "Colour tag ▸"}));
  choose("Inbox", {"Save all"});
  EXPECT_TRUE(mac.scripts().sources().empty());
}

TEST_F(TabMenu, RenamesInExcelAndPowerPointToo) {
  start();
  std::filesystem::create_directories(mac.home() / "Documents");
  const std::vector<std::pair<std::string, std::string>> kinds{{"com.microsoft.Excel", "Sums.xlsx"},
                                                               {"com.microsoft.Powerpoint", "Talk.pptx"}};
  for (const auto& [bundle, file] : kinds) {
    auto application = mac.launch({.bundleId = bundle, .name = bundle});
    const auto document =
        mac.office().openInWindow(application, {.path = (mac.home() / "Documents" / file).string()});
    mac.settle();
    mac.alerts().nextType("Better");
    choose(strip().tabs().front(), {"Rename…"});
    EXPECT_EQ(strip().tabs(), Labels{"Better"}) << bundle;
    EXPECT_EQ(document->path, (mac.home() / "Documents" / "Better").string() + file.substr(4)) << bundle;
  }
}

TEST_F(TabMenu, OpensWhereTheUserPressed) {
  open("Plan");
  start();
  const auto place = strip().tabPoint("Plan");
  strip().rightClickTab("Plan");
  strip().controlClickTab("Plan");
  EXPECT_EQ(mac.menus().places(), (std::vector<ScreenPoint>{place, place}));
  EXPECT_EQ(mac.menus().shown().at(0), mac.menus().shown().at(1));
}

TEST_F(TabMenu, DoesNotOpenOverTheEmptyStrip) {
  open("Plan");
  start();
  strip().rightClickEmptyStrip();
  EXPECT_TRUE(mac.menus().shown().empty());
}

TEST_F(TabMenu, ClosedWithoutAChoiceChangesNothing) {
  const auto plan = open("Plan");
  start();
  const AppState before = state();
  strip().rightClickTab("Plan");
  EXPECT_TRUE(plan.exists());
  EXPECT_EQ(state(), before);
  expectStripOver(plan);
}

TEST_F(WordTabMenu, KnowsAFileThatWasGivenToTheDocumentAMomentAgo) {
  const auto fresh = newInWord("Letter");
  start();
  EXPECT_EQ(knownFile(), std::nullopt);
  fresh->path = pathOf("Letter.docx");
  choose("Letter", {"Copy path"});
  EXPECT_EQ(mac.pasteboard().string(), pathOf("Letter.docx"));
  EXPECT_EQ(knownFile(), pathOf("Letter.docx"));
  const auto asked = mac.scripts().sources().size();
  choose("Letter", {"Open containing folder"});
  EXPECT_EQ(mac.workspace().revealed(), Labels{pathOf("Letter.docx")});
  EXPECT_EQ(mac.scripts().sources().size(), asked);
}

TEST_F(TabMenu, ClosesTheTabsWindow) {
  const auto plan = open("Plan");
  const auto report = open("Report");
  start();
  choose("Plan", {"Close"});
  EXPECT_FALSE(plan.exists());
  EXPECT_TRUE(report.exists());
  EXPECT_EQ(strip().tabs(), Labels{"Report"});
}

TEST_F(TabMenu, LeavesAWindowToItsApplicationThatAsksAboutUnsavedChanges) {
  auto plan = open("Plan");
  plan.quirks().asksBeforeClosing = true;
  start();
  choose("Plan", {"Close"});
  EXPECT_EQ(plan.closePresses(), 1);
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
}

TEST_F(TabMenu, ClosesEveryOtherWindow) {
  for (const auto* title : {"A", "B", "C", "D"}) open(title);
  start();
  choose("B", {"Close others"});
  EXPECT_EQ(strip().tabs(), Labels{"B"});
}

TEST_F(TabMenu, ClosesAllWindowsThatHaveACloseButton) {
  open("A");
  auto b = open("B");
  open("C");
  b.quirks().hasCloseButton = false;
  start();
  choose("C", {"Close all"});
  EXPECT_EQ(strip().tabs(), Labels{"B"});
  expectStripOver(b);
}

TEST_F(WordTabMenu, SavesEveryDocumentThatHasAFile) {
  const auto plan = openInWord("Plan.docx");
  const auto report = openInWord("Report.docx");
  const auto fresh = newInWord("Document1");
  start();
  SimOffice::edit(*plan, "a new plan");
  SimOffice::edit(*fresh, "nowhere yet");
  choose("Report", {"Save all"});
  EXPECT_TRUE(plan->saved);
  EXPECT_EQ(report->saves, 1);
  EXPECT_FALSE(fresh->saved);
  EXPECT_EQ(mac.office().saveDialogs(), 0);
}

TEST_F(TabMenu, OpensTheFolderAndCopiesThePath) {
  open("Plan").setDocument("file:///Users/ann/My%20%22Plan%22.txt");
  start();
  choose("My \"Plan\".txt", {"Open containing folder"});
  EXPECT_EQ(mac.workspace().revealed(), Labels{"/Users/ann/My \"Plan\".txt"});
  mac.pasteboard().setString("something else");
  choose("My \"Plan\".txt", {"Copy path"});
  EXPECT_EQ(mac.pasteboard().string(), "/Users/ann/My \"Plan\".txt");
}

struct TilePlace {
  const char* title;
  AxRect frame;
};

// On the simulated screen of 1440 x 900 points, less the menu bar and the strip's own room.
constexpr std::array<TilePlace, 12> tilePlaces{{{"Tile left half", {0, 57, 720, 843}},
                                                {"Tile right half", {720, 57, 720, 843}},
                                                {"Tile top half", {0, 57, 1440, 421.5}},
                                                {"Tile bottom half", {0, 478.5, 1440, 421.5}},
                                                {"Fill screen", {0, 57, 1440, 843}},
                                                {"Left third", {0, 57, 480, 843}},
                                                {"Middle third", {480, 57, 480, 843}},
                                                {"Right third", {960, 57, 480, 843}},
                                                {"Top left quarter", {0, 57, 720, 421.5}},
                                                {"Top right quarter", {720, 57, 720, 421.5}},
                                                {"Bottom left quarter", {0, 478.5, 720, 421.5}},
                                                {"Bottom right quarter", {720, 478.5, 720, 421.5}}}};

TEST_F(TabMenu, ListsTheTwelveTilesInOneRow) {
  open("Plan");
  start();
  Rows titles;
  for (const auto& place : tilePlaces) titles.emplace_back(place.title);
  EXPECT_EQ(tabMenu("Plan", "Layout"), titles);
}

TEST_F(TabMenu, PutsTheWindowOnEachTileAndTheStripOverIt) {
  const auto plan = open("Plan");
  start();
  for (const auto& place : tilePlaces) {
    mac.menus().nextChoose({"Layout", place.title});
    mac.pointer().rightClick(strip().tabPoint(0));
    EXPECT_NEAR(plan.frame().x, place.frame.x, 1e-9) << place.title;
    EXPECT_NEAR(plan.frame().y, place.frame.y, 1e-9) << place.title;
    EXPECT_NEAR(plan.frame().width, place.frame.width, 1e-9) << place.title;
    EXPECT_NEAR(plan.frame().height, place.frame.height, 1e-9) << place.title;
    expectStripOver(plan);
  }
}

TEST_F(TabMenu, ATiledWindowComesToTheFrontEvenFromTheDock) {
  auto plan = open("Plan");
  open("Report");
  plan.minimise();
  start();
  choose("Plan", {"Layout", "Tile right half"});
  EXPECT_FALSE(plan.isMinimised());
  EXPECT_EQ(mac.frontWindow(), plan);
  EXPECT_EQ(plan.frame(), (AxRect{720, 57, 720, 843}));
  EXPECT_EQ(plan.raises(), 1);
  EXPECT_EQ(mac.workspace().requestedActivations().back(), editor.pid());
  EXPECT_EQ(strip().activeTab(), "Plan");
}

TEST_F(TabMenu, AWindowThatWasMovedWhileTheMenuWasOpenIsTiledOnTheScreenItIsOn) {
  mac.screens().add({1440, 0, 1000, 900});
  auto plan = open("Plan");
  start();
  chooseAfter("Plan", [&] { plan.moveTo({1500, 200}); }, {"Layout", "Tile left half"});
  EXPECT_EQ(plan.frame(), (AxRect{1440, 57, 500, 843}));
}

}  // namespace
}  // namespace pellar
