// Stories of a user who cannot see the strip.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "core/Tile.h"
#include "tests/support/PanelReader.h"
#include "tests/support/RecentStory.h"

namespace pellar {
namespace {

class ScreenReader : public RecentStory {
 protected:
  using Lines = std::vector<std::string>;

  // Report and, in front, Plan.
  void openTwo() {
    report = std::make_unique<SimWindow>(open("Report"));
    plan = std::make_unique<SimWindow>(open("Plan", {150, 250, 1200, 600}));
    start();
  }
  [[nodiscard]] SimScreenReader& reader() {
    mac.settle();
    return mac.screenReader();
  }
  std::unique_ptr<SimWindow> report;
  std::unique_ptr<SimWindow> plan;
};

TEST_F(ScreenReader, HearsTheTabsAndPressesOne) {
  openTwo();
  EXPECT_EQ(reader().reads("Tabs"),
            (Lines{"tab Report", "button Close", "tab Plan selected", "button Close"}));
  reader().press("Report");
  EXPECT_EQ(mac.frontWindow(), *report);
  EXPECT_EQ(reader().reads("Tabs"),
            (Lines{"tab Report selected", "button Close", "tab Plan", "button Close"}));
}

TEST_F(ScreenReader, PressesAToolByItsWord) {
  openTwo();
  reader().press("Minimise");
  EXPECT_TRUE(plan->isMinimised());
}

TEST_F(ScreenReader, ClosesTheWindowOfATabThatIsNotInFront) {
  openTwo();
  reader().press("Report > Close");
  EXPECT_EQ(strip().tabs(), (Labels{"Plan"}));
}

TEST_F(ScreenReader, OpensTheMenuOfATab) {
  openTwo();
  Lines rows;
  mac.menus().next([&](SimOpenMenu& menu) { rows = menu.rows(); });
  reader().showMenu("Report");
  ASSERT_FALSE(rows.empty());
  EXPECT_EQ(rows.front(), "Close");
}

// Where a word stands on the strip and in its menu, it is the same.
TEST_F(ScreenReader, CallsToolsByTheWordsOfTheMenuTheyFoldInto) {
  auto word = launchWord();
  word.open("Letter.docx", {100, 200, 1300, 600});
  start();
  const Lines wide = reader().reads("Tab strip");
  word.focusedWindow()->resizeTo({240, 600});
  Lines rows;
  mac.menus().next([&](SimOpenMenu& menu) { rows = menu.rows(); });
  reader().press("More");
  for (const char* const each : {"Save all", "New document", "Close all"}) {
    EXPECT_TRUE(std::ranges::count(rows, each) == 1) << each;
    EXPECT_TRUE(std::ranges::count(wide, "button " + std::string(each)) == 1) << each;
  }
  EXPECT_EQ(std::ranges::count(rows, "Auto-save: off"), 1);
  EXPECT_EQ(std::ranges::count(wide, "check box Auto-save not checked"), 1);
}

TEST_F(ScreenReader, HearsWhatChanges) {
  openTwo();
  reader().start();
  reader().press("Report");
  EXPECT_EQ(reader().heard(), (Lines{"tab Report selected", "tab Plan not selected"}));
  report->retitle("Report of May");
  EXPECT_EQ(reader().heard(), (Lines{"tab Report of May is its name now"}));
  open("Notes");
  EXPECT_EQ(reader().heard(), (Lines{"+ tab Notes", "tab Report of May not selected"}));
  reader().press("Auto-save");
  EXPECT_EQ(reader().heard(), (Lines{"check box Auto-save checked"}));
  editor.hide();
  EXPECT_EQ(reader().heard(), (Lines{"- group Tab strip"}));
}

TEST_F(ScreenReader, HearsNothingOnceItIsSwitchedOff) {
  openTwo();
  reader().start();
  reader().stop();
  reader().press("Report");
  EXPECT_EQ(reader().heard(), Lines{});
}

TEST_F(ScreenReader, FindsAFileInTheDropdownAndOpensIt) {
  used("Documents/Budget.txt", 1);
  const std::string letter = used("Documents/Letter.txt", 2);
  openTwo();
  reader().press("Search recent files");
  ASSERT_TRUE(isOpen());
  EXPECT_EQ(reader().reads("Recent files"), (Lines{"list Recent files", "row Letter.txt", "row Budget.txt"}));
  EXPECT_EQ(reader().element("Letter.txt").help, "~/Documents");
  reader().start();
  mac.pressKey("moveDown:");
  mac.pressKey("moveDown:");
  EXPECT_EQ(reader().heard(), (Lines{"row Letter.txt selected", "row Letter.txt has the keys",
                                     "row Letter.txt not selected", "row Letter.txt has the keys no more",
                                     "row Budget.txt selected", "row Budget.txt has the keys"}));
  reader().press("Letter.txt");
  EXPECT_EQ(opened(), Lines{letter});
  EXPECT_FALSE(isOpen());
}

TEST_F(ScreenReader, ARowIsWhereAClickMeetsIt) {
  for (int i = 0; i < 30; ++i) used("file" + std::to_string(i) + ".txt", i);
  openTwo();
  strip().clickSearchField();
  for (int i = 0; i < 25; ++i) mac.pressKey("moveDown:");
  const std::string name = *selected();
  const auto row = reader().element(name);
  EXPECT_EQ(row.selected, true);
  const auto place = dropdown().host().toScreen(row.frame);
  EXPECT_TRUE(place->contains(pointOf(name)));
}

TEST_F(ScreenReader, PressingAnotherTabEndsTheSearch) {
  openTwo();
  reader().press("Search recent files");
  ASSERT_TRUE(isOpen());
  reader().press("Close all");
  EXPECT_FALSE(isOpen());
}

TEST_F(ScreenReader, ReadsTheCardOfATabAndPressesItsButton) {
  auto docx = open("Report.docx");
  docx.setDocument("file:///Volumes/Shared/Team/Q3/Report.docx");
  open("Plan");
  start();
  strip().hoverTab("Report");
  mac.advance(cardDelay);
  EXPECT_EQ(reader().reads("Report.docx"), (Lines{"text Report.docx", "text \u2026/Team/Q3",
                                                  "button Minimise", "button Zoom", "button Close"}));
  EXPECT_EQ(reader().element("Report.docx").help, "\u2026/Team/Q3");
  reader().press("Report.docx > Minimise");
  EXPECT_TRUE(docx.isMinimised());
  EXPECT_FALSE(PanelReader(mac).cardShown());
}

TEST_F(ScreenReader, HearsOfTheCardThatBecomesTheNextTabsAndThatItHasNoFolder) {
  openTwo();
  strip().hoverTab("Report");
  mac.advance(cardDelay);
  EXPECT_EQ(reader().reads("Report"),
            (Lines{"text Report", "button Minimise", "button Zoom", "button Close"}));
  EXPECT_EQ(reader().element("Report").help, "");
  reader().start();
  strip().hoverTab("Plan");
  mac.advance(cardDelay);
  EXPECT_EQ(reader().heard(), (Lines{"group Plan is its name now", "text Plan is its name now"}));
}

TEST_F(ScreenReader, PicksAPlaceForTheWindow) {
  openTwo();
  strip().hoverTool(tool::zoom);
  ASSERT_TRUE(PanelReader(mac).pickerShown());
  Lines titles;
  for (const Tile tile : allTiles) titles.push_back("button " + std::string(title(tile)));
  auto read = reader().reads("Layout");
  std::ranges::sort(titles);
  std::ranges::sort(read);
  EXPECT_EQ(read, titles);
  reader().press("Tile left half");
  EXPECT_EQ(plan->frame(), (AxRect{0, 57, 720, 843}));
  EXPECT_FALSE(PanelReader(mac).pickerShown());
}

TEST_F(ScreenReader, NothingOfAHiddenStripIsThere) {
  openTwo();
  editor.hide();
  EXPECT_EQ(reader().reads(), Lines{});
}

// --- and of one who sees little ---

TEST_F(ScreenReader, WithMoreContrastNoTextRecedesAndTheTabInFrontHasAnOutline) {
  used("Documents/Letter.txt", 2);
  openTwo();
  strip().clickSearchField();
  const auto faintest = [this] {
    double alpha = 1;
    mac.settle();
    for (SimPanel* const panel : mac.panels().all()) {
      if (!panel->isVisible()) continue;
      for (const auto& item : panel->drawing().items())
        if (item.isText()) alpha = std::min(alpha, item.color.alpha);
    }
    return alpha;
  };
  const auto outlined = [this] {
    const ViewRect tab = reader().element("Plan").frame;
    return std::ranges::any_of(strip().panel().drawing().items(), [&](const DrawnItem& item) {
      return !item.isText() && item.rect == tab && item.color == Color::white();
    });
  };
  EXPECT_LT(faintest(), 0.6);
  EXPECT_FALSE(outlined());
  mac.panels().setIncreasesContrast(true);
  EXPECT_EQ(faintest(), 1);
  EXPECT_TRUE(outlined());
  mac.panels().setIncreasesContrast(false);
  EXPECT_LT(faintest(), 0.6);
}

}  // namespace
}  // namespace pellar
