// What opening a file from the drop-down does.

#include <gtest/gtest.h>

#include "tests/support/RecentStory.h"

namespace pellar {
namespace {

class RecentOpening : public RecentStory {};

TEST_F(RecentOpening, ADoubleClickOpensTheFileAndCloses) {
  used("Report.txt", 300);
  const auto plan = used("Plan.txt", 100);
  openDropdown();
  mac.pointer().doubleClick(pointOf("Plan.txt"));
  EXPECT_EQ(opened(), Names{plan});
  EXPECT_FALSE(isOpen());
  EXPECT_FALSE(strip().panel().isKey());
  EXPECT_EQ(mac.workspace().requestedActivations().back(), editor.pid());
}

TEST_F(RecentOpening, AClickBelowTheLastRowSelectsNothingAndADoubleClickThereOpensNothing) {
  used("Report.txt", 300);
  openDropdown();
  mac.pressKey("moveDown:");
  const ScreenPoint below{dropdown().frame().midX(), dropdown().frame().minY() + 20};
  mac.pointer().click(below);
  EXPECT_EQ(selected(), std::nullopt);
  mac.pointer().doubleClick(below);
  EXPECT_TRUE(opened().empty());
  EXPECT_TRUE(isOpen());
}

TEST_F(RecentOpening, TwoClicksOnTwoRowsAreNoDoubleClick) {
  used("Report.txt", 300);
  used("Plan.txt", 100);
  openDropdown();
  mac.pointer().click(pointOf("Report.txt"));
  mac.pointer().click(pointOf("Plan.txt"));
  EXPECT_TRUE(opened().empty());
  EXPECT_EQ(selected(), "Plan.txt");
}

TEST_F(RecentOpening, TheUseIsRecordedNowUnderTheApplicationItHad) {
  const auto path = used("Report.txt", 300);
  openDropdown();
  mac.advance(std::chrono::seconds(50));
  mac.pressKey("insertNewline:");
  EXPECT_EQ(state().recent.at(path), SimMainLoop::startSeconds + 50);
  EXPECT_EQ(state().recentApp.at(path), "org.example.editor");
  EXPECT_EQ(StateStore(pellar.store().url()).state(), state()) << "and saved";
}

TEST_F(RecentOpening, TheUseIsSavedBeforeTheFileIsOpened) {
  const auto path = used("Report.txt", 300);
  double saved = 0;
  mac.workspace().onOpen = [&](const std::string& asked) {
    EXPECT_EQ(asked, path);
    EXPECT_TRUE(isOpen()) << "closing comes last";
    saved = StateStore(pellar.store().url()).state().recent.at(path);
  };
  openDropdown();
  mac.pressKey("insertNewline:");
  EXPECT_EQ(saved, SimMainLoop::startSeconds);
}

TEST_F(RecentOpening, ItsWindowGetsATab) {
  const auto path = used("Report.txt", 300);
  mac.workspace().onOpen = [&](const std::string& asked) {
    open("Report.txt").setDocument("file://" + asked);
  };
  openDropdown();
  mac.pressKey("insertNewline:");
  EXPECT_EQ(strip().tabs(), (Labels{"Plan", "Report.txt"}));
  EXPECT_EQ(strip().activeTab(), "Report.txt");
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(opened(), Names{path});
}

TEST_F(RecentOpening, AReportThatClosesTheDropdownMeanwhileOpensTheSameFileOnce) {
  const auto path = used("Report.txt", 300);
  used("Plan.txt", 100);
  mac.workspace().onOpen = [&](const std::string&) {
    // The application is quick: its window is in front before the call returns.
    open("Report.txt");
    pellar.tracker().refresh();
    EXPECT_FALSE(isOpen());
  };
  openDropdown();
  mac.pressKey("insertNewline:");
  EXPECT_EQ(opened(), Names{path});
  EXPECT_FALSE(isOpen());
}

TEST_F(RecentOpening, AFileThatVanishedSinceIsLeftToTheSystem) {
  const auto path = used("Report.txt", 300);
  openDropdown();
  std::filesystem::remove(path);
  mac.pressKey("insertNewline:");
  EXPECT_EQ(opened(), Names{path});
  EXPECT_FALSE(isOpen());
}

TEST_F(RecentOpening, AThreeHundredAndFirstFilePushesOutTheOldest) {
  const auto oldest = used("Oldest.txt", 0);
  pellar.store().update([](AppState& state) {
    for (int i = 1; i < 300; ++i) state.recent["/nowhere/" + std::to_string(i)] = longAgo + i;
  });
  const auto seeded = file("Seeded.txt");
  openDropdown();
  EXPECT_EQ(titles(), Names{"Oldest.txt"});
  open("Seeded.txt").setDocument("file://" + seeded);
  mac.settle();
  EXPECT_EQ(state().recent.size(), 300);
  EXPECT_FALSE(state().recent.contains(oldest));
  EXPECT_FALSE(state().recentApp.contains(oldest));
}

}  // namespace
}  // namespace pellar
