// What the judge is made of, before files, panels, log lines and orders that are wrong.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/sim/SimMac.h"
#include "tests/simulation/DocumentWatch.h"
#include "tests/simulation/LogWatch.h"
#include "tests/simulation/PanelWatch.h"
#include "tests/simulation/ShortStory.h"
#include "tests/simulation/TabPlaces.h"
#include "tests/simulation/Titles.h"
#include "tests/simulation/UpdateWatch.h"

namespace pellar {
namespace {

using Labels = std::vector<std::string>;

TEST(ShortStory, KeepsTheStepsThatTheFindingNeedsAndNoOther) {
  const auto needs = [](const std::vector<unsigned>& steps) {
    return std::ranges::count(steps, 17U) + std::ranges::count(steps, 63U) == 2;
  };
  EXPECT_EQ(shortened(everyStep(), needs), (std::vector<unsigned>{17, 63}));
  EXPECT_EQ(shortened(everyStep(), [](const auto&) { return true; }), std::vector<unsigned>{});
}

TEST(Titles, AreWorkedOutAsTabsShowThem) {
  EXPECT_EQ(titles::plainName("Report.xlsx - Excel"), "Report");
  EXPECT_EQ(titles::plainName("Memo.doc - Read-Only - Word"), "Memo");
  EXPECT_EQ(titles::plainName("Budget [Compatibility Mode]"), "Budget");
  EXPECT_EQ(titles::plainName("A-1-Final"), "A-1-Final");
  EXPECT_EQ(titles::fileOf("file:///a%20b"), "/a b");
  EXPECT_EQ(titles::fileOf("https://example.org/a"), std::nullopt);
}

class WatchedLog : public testing::Test {
 protected:
  void write(const std::string& message) {
    std::ofstream(file, std::ios::app) << "2023-11-14T22:13:20Z " << message << "\n";
  }

  SimMac mac;
  std::filesystem::path file = mac.home() / "log";
  UpdateWatch updates;
  LogWatch log{file, updates};
};

TEST_F(WatchedLog, HasOnlyLinesThatTheProgramMayWrite) {
  write("tracking started");
  EXPECT_EQ(log.compare(), std::nullopt);
  write("something else");
  EXPECT_NE(log.compare(), std::nullopt);
  EXPECT_EQ(log.compare(), std::nullopt);
}

TEST_F(WatchedLog, SpeaksOfADragOnlyAfterOne) {
  log.userDragged();
  write("tabs reordered: [\"Plan\"]");
  EXPECT_EQ(log.compare(), std::nullopt);
  log.dragsAreOver();
  write("tabs reordered: [\"Plan\"]");
  EXPECT_NE(log.compare(), std::nullopt);
}

TEST_F(WatchedLog, SpeaksOfAFailedSaveOnlyWhileTheDiskRefuses) {
  log.disk(/*refuses=*/true);
  write("state save failed: no space");
  EXPECT_EQ(log.compare(), std::nullopt);
  EXPECT_EQ(log.failedSaves(), 1U);
  log.disk(/*refuses=*/false);
  write("state save failed: no space");
  EXPECT_NE(log.compare(), std::nullopt);
}

TEST_F(WatchedLog, SpeaksOfUpdatesThatWereOfferedAlone) {
  updates.offered("1.5.0");
  write("update available: 1.5.0 (running 1.4.0), notify=true");
  EXPECT_EQ(log.compare(), std::nullopt);
  write("update available: 1.6.0 (running 1.4.0), notify=true");
  EXPECT_NE(log.compare(), std::nullopt);
}

TEST_F(WatchedLog, BeginsEachLineWithATime) {
  std::ofstream(file, std::ios::app) << "tracking started\n";
  EXPECT_NE(log.compare(), std::nullopt);
}

TEST(UpdateWatch, KnowsAnAnnouncementThatNobodyMade) {
  UpdateWatch updates;
  const UserNotification shown{
      .identifier = "pellar-update-1.5.0", .title = "Pellar 1.5.0 is available", .body = ""};
  EXPECT_NE(updates.compare({shown}), std::nullopt);
  updates.offered("1.5.0");
  EXPECT_EQ(updates.compare({shown}), std::nullopt);
}

class WatchedDocuments : public testing::Test {
 protected:
  WatchedDocuments() {
    std::filesystem::create_directories(program);
    std::ofstream(home / "Plan") << documents.contentOfNext();
    documents.put(home / "Plan");
    EXPECT_EQ(documents.compare(), std::nullopt);
  }

  SimMac mac;
  std::filesystem::path home = mac.home();
  std::filesystem::path program = home / "program";
  DocumentWatch documents{home, program};
};

TEST_F(WatchedDocuments, MayBearTheNameThatTheUserGave) {
  documents.renaming("Budget");
  std::filesystem::rename(home / "Plan", home / "Budget");
  EXPECT_EQ(documents.compare(), std::nullopt);
}

TEST_F(WatchedDocuments, MayBearNoOther) {
  documents.renaming("Budget");
  std::filesystem::rename(home / "Plan", home / "Nonsense");
  EXPECT_NE(documents.compare(), std::nullopt);
}

TEST_F(WatchedDocuments, KeepTheirContent) {
  documents.renaming("Plan");
  std::ofstream(home / "Plan") << "other";
  EXPECT_NE(documents.compare(), std::nullopt);
}

TEST_F(WatchedDocuments, AreNotGone) {
  std::filesystem::remove(home / "Plan");
  EXPECT_NE(documents.compare(), std::nullopt);
}

TEST_F(WatchedDocuments, HaveNothingLeftBesideTheState) {
  std::ofstream(program / "state.json.1.tmp") << "{";
  EXPECT_NE(documents.compare(), std::nullopt);
}

class WatchedPanels : public testing::Test {
 protected:
  SimMac mac;
  PanelWatch panels{mac};
};

TEST_F(WatchedPanels, DoNotStandWithoutTheStrip) {
  EXPECT_EQ(panels.compare(), std::nullopt);
  const auto card = mac.panels().makePanel({.contentSize = {200, 58}, .level = PanelLevel::popUpMenu});
  card->orderFrontRegardless();
  EXPECT_EQ(panels.compare(), "the card stands without the strip");
  EXPECT_TRUE(panels.anyStays());
}

TEST_F(WatchedPanels, AreWatchedForClicksOutsideTheDropdown) {
  const auto dropdown = mac.panels().makePanel({.contentSize = {480, 300}, .level = PanelLevel::popUpMenu});
  dropdown->orderFrontRegardless();
  EXPECT_NE(panels.compare(), std::nullopt);
}

TEST_F(WatchedPanels, DoNotStayOverAnotherWindow) {
  auto application = mac.launch({.bundleId = "org.example.editor", .name = "Editor"});
  const auto plan = application.open("Plan");
  const auto report = application.open("Report");
  const auto dropdown = mac.panels().makePanel({.contentSize = {480, 300}, .level = PanelLevel::popUpMenu});
  dropdown->orderFrontRegardless();
  EXPECT_FALSE(panels.dropdownStays(plan));
  EXPECT_FALSE(panels.dropdownStays(plan));
  EXPECT_TRUE(panels.dropdownStays(report));
}

class WatchedPlaces : public testing::Test {
 protected:
  WatchedPlaces() {
    application.quirks().listsWindowsByCreation = true;
    for (const auto* title : {"Plan", "Report", "Budget"}) windows.push_back(application.open(title));
    EXPECT_TRUE(mayRead({"Plan", "Report", "Budget"}));
  }
  // Whether the tabs may read so at this rest.
  bool mayRead(const Labels& labels) {
    constexpr double stripWidth = 900;
    std::vector<std::string> wrong;
    places.begin(application);
    static_cast<void>(places.expect(application));
    places.look(labels, stripWidth, wrong);
    places.end();
    return wrong.empty();
  }

  SimMac mac;
  SimApplication application = mac.launch({.bundleId = "org.example.editor", .name = "Editor"});
  std::vector<SimWindow> windows;
  TabPlaces places{[](const SimWindow& window) { return std::set<std::string>{window.title()}; }};
};

TEST_F(WatchedPlaces, StayWhenNothingHappens) {
  EXPECT_TRUE(mayRead({"Plan", "Report", "Budget"}));
  EXPECT_FALSE(mayRead({"Report", "Plan", "Budget"}));
}

TEST_F(WatchedPlaces, AreWhereTheUserDroppedTheTab) {
  places.happened();
  places.dropped(windows[0], 2);
  EXPECT_TRUE(mayRead({"Report", "Budget", "Plan"}));
  places.happened();
  places.dropped(windows[0], 0);
  EXPECT_FALSE(mayRead({"Report", "Budget", "Plan"}));
}

TEST_F(WatchedPlaces, OfAWindowOnAnotherSpaceAreKept) {
  places.happened();
  windows[1].moveToSpace(1);
  EXPECT_TRUE(mayRead({"Plan", "Budget"}));
  places.happened();
  windows[1].moveToSpace(0);
  EXPECT_FALSE(mayRead({"Plan", "Budget", "Report"}));
}

TEST_F(WatchedPlaces, OfOthersAreKeptWhereSeveralThingsHappened) {
  const auto twoThingsHappenTo = [this](const SimWindow& window) {
    places.happened();
    places.happened();
    places.touched(window);
  };
  twoThingsHappenTo(windows[0]);
  EXPECT_TRUE(mayRead({"Report", "Budget", "Plan"}));
  twoThingsHappenTo(windows[0]);
  EXPECT_FALSE(mayRead({"Budget", "Report", "Plan"}));
}

TEST_F(WatchedPlaces, AreOnesOfWindowsThatAreThere) {
  places.happened();
  places.happened();
  EXPECT_FALSE(mayRead({"Plan", "Report", "Nonsense"}));
  EXPECT_FALSE(mayRead({"Plan", "Report"}));
}

TEST_F(WatchedPlaces, AreLostByAWindowThatWasTooNarrow) {
  places.happened();
  windows[0].resizeTo({199, 300});
  places.noteNarrow();
  windows[0].resizeTo({900, 300});
  EXPECT_TRUE(mayRead({"Report", "Budget", "Plan"}));
}

}  // namespace
}  // namespace pellar
