#include <gtest/gtest.h>

#include <vector>

#include "tests/app/strip/search/SearchStory.h"

namespace pellar {
namespace {

// Tabs so many that the strip shows the search as a tool: the unfolded field takes its room from them.
class UnfoldedSearch : public SearchStory {
 protected:
  UnfoldedSearch() {
    for (const auto* title : {"A", "B", "C", "D", "E"}) windows.push_back(open(title));
    start();
  }
  void unfold() {
    strip().clickSearchTool();
    ASSERT_NE(strip().searchField(), nullptr);
  }
  void expectFolded() {
    expectClosed();
    EXPECT_EQ(strip().searchField(), nullptr);
    EXPECT_TRUE(strip().searchToolShown());
  }

  std::vector<SimWindow> windows;
};

TEST_F(UnfoldedSearch, TheSearchToolUnfoldsTheFieldUntilItIsClosed) {
  ASSERT_TRUE(strip().searchToolShown());
  ASSERT_EQ(strip().searchField(), nullptr);
  strip().clickSearchTool();
  EXPECT_TRUE(isOpen());
  ASSERT_NE(strip().searchField(), nullptr);
  EXPECT_TRUE(strip().searchField()->isFocused());
  EXPECT_EQ(dropdown().frame().maxX(), field().maxX());
  mac.pressKey("cancelOperation:");
  mac.settle();
  EXPECT_TRUE(strip().searchToolShown());
  EXPECT_EQ(strip().searchField(), nullptr);
}

TEST_F(UnfoldedSearch, ATabClickedBesideItIsTheOneThatComes) {
  for (const auto& window : windows) {
    unfold();
    strip().clickTab(window.title());
    EXPECT_EQ(mac.frontWindow(), window) << window.title();
    expectFolded();
  }
}

TEST_F(UnfoldedSearch, ACloseMarkClickedBesideItClosesItsOwnWindow) {
  unfold();
  strip().closeTab("C");
  EXPECT_EQ(strip().tabs(), (Labels{"A", "B", "D", "E"}));
  expectClosed();
}

TEST_F(UnfoldedSearch, ATabClickedRightBesideItHasItsOwnMenu) {
  unfold();
  mac.menus().nextChoose({"Close"});
  strip().rightClickTab("D");
  EXPECT_EQ(strip().tabs(), (Labels{"A", "B", "C", "E"}));
  expectClosed();
}

TEST_F(UnfoldedSearch, ATabDraggedBesideItIsTheOneThatMoves) {
  unfold();
  strip().dragTab("E").to(0);
  EXPECT_EQ(strip().tabs(), (Labels{"E", "A", "B", "C", "D"}));
  expectFolded();
}

TEST_F(UnfoldedSearch, ASearchThatTheClickWhichEndedOneOpensKeepsItsField) {
  unfold();
  // Heard after the search has heard it.
  const auto monitor = mac.eventMonitors().onLocalMouseDown([&](const ObservedClick&) {
    EXPECT_FALSE(PanelReader(mac).dropdown()->isVisible());
    pellar.strip()->openRecent();
  });
  mac.pointer().rightClick(strip().emptyPoint());
  EXPECT_TRUE(isOpen());
  EXPECT_NE(strip().searchField(), nullptr);
}

}  // namespace
}  // namespace pellar
