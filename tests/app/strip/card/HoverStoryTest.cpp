#include <gtest/gtest.h>

#include <chrono>

#include "core/Tile.h"
#include "tests/support/HoverStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

TEST_F(HoverStory, RestingOnATabShowsItsCardUnderIt) {
  auto report = open("Report.docx");
  report.setDocument("file:///Volumes/Shared/Team/Q3/Report.docx");
  open("Plan");
  start();
  strip().hoverTab("Report");
  mac.advance(cardDelay - 1ms);
  EXPECT_FALSE(hover.cardShown());
  mac.advance(1ms);
  EXPECT_EQ(hover.cardTexts(),
            (Labels{"Report.docx", "\u2026/Team/Q3", tool::minimize, tool::zoom, tool::closeWindow}));
  EXPECT_EQ(hover.card()->frame().minX(), tabOnScreen(0).minX());
  EXPECT_EQ(hover.card()->frame().maxY(), tabOnScreen(0).minY() - 4);
  EXPECT_EQ(mac.frontWindow()->title(), "Plan");
}

TEST_F(HoverStory, TheCardsButtonsActOnItsTabsWindowAndPutTheCardAway) {
  auto report = open("Report");
  auto plan = open("Plan");
  start();
  restOnTab("Report");
  pressOnCard(tool::zoom);
  EXPECT_EQ(report.frame(), area);
  EXPECT_FALSE(report.isMinimised());
  EXPECT_FALSE(hover.cardShown());
  EXPECT_EQ(plan.frame(), (AxRect{100, 200, 1200, 600}));

  restOnTab("Report");
  pressOnCard(tool::minimize);
  EXPECT_TRUE(report.isMinimised());
  EXPECT_EQ(report.frame(), area);
  EXPECT_FALSE(plan.isMinimised());
  EXPECT_FALSE(hover.cardShown());

  restOnTab("Report");
  pressOnCard(tool::closeWindow);
  EXPECT_FALSE(report.exists());
  EXPECT_TRUE(plan.exists());
  EXPECT_FALSE(hover.cardShown());
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
}

TEST_F(HoverStory, ThePointerTravelsFromTheTabToTheCard) {
  open("Report");
  start();
  restOnTab("Report");
  mac.pointer().moveTo({tabOnScreen(0).midX(), strip().frame().minY() - 0.5});
  mac.advance(closeDelay - 1ms);
  mac.pointer().moveTo({hover.card()->frame().midX(), hover.card()->frame().midY()});
  mac.advance(60s);
  EXPECT_TRUE(hover.cardShown());
  mac.pointer().moveTo({5, 5});
  mac.advance(closeDelay);
  EXPECT_FALSE(hover.cardShown());
}

TEST_F(HoverStory, MovingQuicklyOverTheTabsShowsOnlyTheLastOnesCard) {
  for (const char* title : {"A", "B", "C"}) open(title);
  start();
  for (const char* title : {"A", "B", "C"}) {
    strip().hoverTab(title);
    mac.advance(200ms);
    EXPECT_FALSE(hover.cardShown());
  }
  mac.advance(100ms);
  EXPECT_EQ(hover.cardTexts().front(), "C");
}

TEST_F(HoverStory, ACardKeepsItsTabWhileThePointerIsOnItsWayOverAnother) {
  auto a = open("A");
  auto b = open("B");
  start();
  restOnTab("A");
  strip().hoverTab("B");
  mac.advance(100ms);
  EXPECT_EQ(hover.cardTexts().front(), "A");
  pressOnCard(tool::closeWindow);
  EXPECT_FALSE(a.exists());
  EXPECT_TRUE(b.exists());
  mac.advance(60s);
  EXPECT_FALSE(hover.cardShown());
}

TEST_F(HoverStory, APressOnTheStripPutsTheCardAwayInAMoment) {
  open("Report");
  start();
  restOnTab("Report");
  strip().clickTab("Report");
  mac.advance(closeDelay - 1ms);
  EXPECT_TRUE(hover.cardShown());
  mac.advance(1ms);
  EXPECT_FALSE(hover.cardShown());
  mac.advance(60s);
  EXPECT_FALSE(hover.cardShown());
}

TEST_F(HoverStory, TheCardGoesAtOnceWithTheStrip) {
  auto report = open("Report");
  start();
  restOnTab("Report");
  ASSERT_TRUE(hover.cardShown());
  report.minimise();
  ASSERT_FALSE(stripShown());
  EXPECT_FALSE(hover.cardShown());
}

TEST_F(HoverStory, ACardThatWaitsDoesNotComeOnceTheStripIsHidden) {
  auto report = open("Report");
  start();
  strip().hoverTab("Report");
  report.enterFullScreen();
  mac.advance(60s);
  EXPECT_FALSE(hover.cardShown());
}

TEST_F(HoverStory, ThePickerGoesAtOnceWithTheStrip) {
  auto report = open("Report");
  start();
  const auto timers = mac.mainLoop().activeTimers();
  restOnZoom();
  ASSERT_TRUE(hover.pickerShown());
  report.minimise();
  mac.settle();
  EXPECT_FALSE(hover.pickerShown());
  EXPECT_EQ(mac.mainLoop().activeTimers(), timers);
}

TEST_F(HoverStory, CardAndPickerComeAgainAfterTheStripWasHidden) {
  auto report = open("Report");
  start();
  restOnTab("Report");
  report.minimise();
  mac.settle();
  mac.pointer().moveTo({5, 5});
  report.restore();
  mac.settle();
  restOnTab("Report");
  EXPECT_TRUE(hover.cardShown());
  restOnZoom();
  EXPECT_TRUE(hover.pickerShown());
}

TEST_F(HoverStory, ATabThatComesBackUnderTheRestingPointerHasItsCardAgain) {
  auto report = open("Report");
  start();
  restOnTab("Report");
  ASSERT_TRUE(hover.cardShown());
  // By the keyboard: the pointer stays where it is.
  report.minimise();
  mac.settle();
  report.restore();
  mac.settle();
  EXPECT_FALSE(hover.cardShown());
  const ScreenPoint resting = mac.pointer().location();
  mac.pointer().moveTo({resting.x + 1, resting.y});
  mac.advance(cardDelay);
  EXPECT_TRUE(hover.cardShown());
}

TEST_F(HoverStory, AZoomToolThatComesBackUnderTheRestingPointerHasItsPickerAgain) {
  auto report = open("Report");
  start();
  restOnZoom();
  report.enterFullScreen();
  mac.settle();
  report.leaveFullScreen();
  mac.settle();
  EXPECT_FALSE(hover.pickerShown());
  const ScreenPoint resting = mac.pointer().location();
  mac.pointer().moveTo({resting.x + 1, resting.y});
  EXPECT_TRUE(hover.pickerShown());
}

TEST_F(HoverStory, ThePickerTilesWhateverWindowIsInFrontByThen) {
  auto report = open("Report");
  auto plan = open("Plan");
  start();
  restOnZoom();
  editor.focus(report);
  mac.settle();
  ASSERT_TRUE(hover.pickerShown());
  pick(0.25, 0.5, SnapView::groupRects().front());
  EXPECT_EQ(report.frame(), tileFrame(Tile::left, area));
  EXPECT_EQ(plan.frame(), (AxRect{100, 200, 1200, 600}));
}

TEST_F(HoverStory, NothingIsWaitedForOnceCardPickerAndDropdownAreClosed) {
  open("Report");
  start();
  mac.advance(30s);
  const auto timers = mac.mainLoop().activeTimers();
  restOnTab("Report");
  restOnZoom();
  strip().clickSearchField();
  mac.type("r");
  mac.pressKey("moveDown:");
  mac.pressKey("cancelOperation:");
  mac.pointer().moveTo({5, 5});
  mac.advance(closeDelay);
  EXPECT_FALSE(hover.cardShown());
  EXPECT_FALSE(hover.pickerShown());
  EXPECT_FALSE(dropdown().isVisible());
  EXPECT_FALSE(mac.eventMonitors().watched());
  EXPECT_EQ(mac.mainLoop().activeTimers(), timers);
  const auto turns = mac.mainLoop().turns();
  mac.accessibility().forgetRoundTrips();
  mac.advance(600s);
  EXPECT_EQ(mac.mainLoop().turns(), turns);
  EXPECT_EQ(mac.accessibility().roundTrips().total(), 0);
}

TEST_F(HoverStory, ACardOnALeftScreenStaysThere) {
  mac.screens().add({-1440, 0, 1440, 900});
  open("Report", {-600, 200, 590, 500});
  start();
  restOnTab("Report");
  ASSERT_TRUE(hover.cardShown());
  EXPECT_EQ(hover.card()->frame().minX(), strip().frame().x + 6);
  EXPECT_LT(hover.card()->frame().maxX(), 0);
  restOnZoom();
  EXPECT_EQ(hover.picker()->frame().maxX(), -8) << "its end, eight points inside the left screen";
}

TEST_F(HoverStory, ACardAtTheRightEdgeOfTheScreenIsPushedLeft) {
  open("Report", {1280, 200, 1200, 500});
  start();
  restOnTab("Report");
  ASSERT_TRUE(hover.cardShown());
  EXPECT_EQ(hover.card()->frame().maxX(), 1440 - 8);
}

TEST_F(HoverStory, WithoutAnyScreenHoveringShowsNothing) {
  open("Report");
  start();
  mac.screens().set({});
  restOnTab("Report");
  restOnZoom();
  mac.advance(60s);
  EXPECT_FALSE(hover.cardShown());
  EXPECT_FALSE(hover.pickerShown());
}

TEST_F(HoverStory, ACardThatIsShownWaitsForNothing) {
  open("Report");
  start();
  const auto timers = mac.mainLoop().activeTimers();
  restOnTab("Report");
  EXPECT_EQ(mac.mainLoop().activeTimers(), timers);
  mac.advance(600s);
  EXPECT_TRUE(hover.cardShown());
}

TEST_F(HoverStory, RestingOnTheZoomToolShowsThePickerUnderIt) {
  open("Report", {100, 200, 1000, 600});
  start();
  EXPECT_FALSE(hover.pickerShown());
  restOnZoom();
  ASSERT_TRUE(hover.pickerShown());
  // The tool is 30 wide; the closing tool and the margin come after it.
  const double middle = strip().frame().maxX() - 6 - 30 - 2 - 15;
  EXPECT_EQ(hover.picker()->frame(),
            (ScreenRect{middle - 186, strip().frame().minY() + 4 - 2 - 150, 372, 150}));
}

TEST_F(HoverStory, CardAndPickerComeUpInTheirPlace) {
  open("Report", {100, 200, 1000, 600});
  start();
  restOnTab("Report");
  EXPECT_EQ(hover.card()->cameUpAt(), hover.card()->frame());
  restOnZoom();
  EXPECT_EQ(hover.picker()->cameUpAt(), hover.picker()->frame());
}

TEST_F(HoverStory, ThePickerIsTheSameOneEachTime) {
  open("Report");
  start();
  restOnZoom();
  const SimPanel* const picker = hover.picker();
  mac.pointer().moveTo({hover.picker()->frame().midX(), hover.picker()->frame().minY() + 5});
  restOnZoom();
  EXPECT_EQ(hover.picker(), picker);
  EXPECT_TRUE(hover.pickerShown());
}

TEST_F(HoverStory, EachCellTilesTheFocusedWindow) {
  auto behind = open("Behind");
  auto report = open("Report");
  start();
  for (const Tile tile : allTiles) {
    restOnZoom();
    ASSERT_TRUE(hover.pickerShown()) << rawValue(tile);
    for (const auto& [rect, each] : SnapView::cellRects()) {
      if (each != tile) continue;
      mac.pointer().click(PanelReader::onScreen(*hover.picker(), {rect.midX(), rect.midY()}));
    }
    mac.settle();
    EXPECT_EQ(report.frame(), tileFrame(tile, area)) << rawValue(tile);
    EXPECT_FALSE(hover.pickerShown());
    EXPECT_EQ(mac.frontWindow(), report);
    expectStripOver(report);
  }
  EXPECT_EQ(behind.frame(), (AxRect{100, 200, 1200, 600}));
}

TEST_F(HoverStory, APickRaisesTheWindow) {
  auto report = open("Report");
  start();
  const int before = report.raises();
  restOnZoom();
  mac.pointer().click(PanelReader::onScreen(*hover.picker(), {30, 40}));
  EXPECT_EQ(report.raises(), before + 1);
  EXPECT_EQ(mac.workspace().requestedActivations().back(), editor.pid());
}

TEST_F(HoverStory, AClickIntoAGapOfThePickerLeavesItOpen) {
  auto report = open("Report");
  start();
  restOnZoom();
  mac.pointer().click(PanelReader::onScreen(*hover.picker(), {120, 40}));
  mac.advance(60s);
  EXPECT_TRUE(hover.pickerShown());
  EXPECT_EQ(report.frame(), (AxRect{100, 200, 1200, 600}));
}

TEST_F(HoverStory, ClickingTheZoomToolStillZoomsWhileThePickerShows) {
  auto report = open("Report");
  start();
  restOnZoom();
  strip().clickTool(tool::zoom);
  EXPECT_EQ(report.frame(), area);
}

}  // namespace
}  // namespace pellar
