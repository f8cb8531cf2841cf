#include <gtest/gtest.h>

#include "tests/app/strip/tabs/StripFixture.h"
#include "tests/support/LogReader.h"

namespace pellar {
namespace {

using Words = std::vector<std::string>;

class StripPress : public StripTest {
 protected:
  LogReader log;
};

TEST_F(StripPress, ATabIsSelectedOnRelease) {
  press(onTab("Report"));
  EXPECT_EQ(happened(), (Words{"hover none"}));
  release();
  EXPECT_EQ(happened(), (Words{"select 102"}));
}

TEST_F(StripPress, AReleaseElsewhereStillSelectsWhatWasPressed) {
  press(onTab("Report"));
  release(600);
  EXPECT_EQ(happened(), (Words{"hover none", "select 102"}));
}

TEST_F(StripPress, MovingUpToFourPointsStillSelects) {
  press(at(200, 16));
  dragTo(204, 16);
  dragTo(202, 19);
  dragTo(200, 12);
  release(203);
  EXPECT_EQ(happened(), (Words{"hover none", "select 102"}));
}

TEST_F(StripPress, MovingFurtherNeverSelects) {
  press(at(200, 16));
  dragTo(203, 19);  // 4.24 points away
  dragTo(200, 16);
  release();
  EXPECT_EQ(happened(), (Words{"hover none", "reorder 102 to 1"}));
}

TEST_F(StripPress, TheCloseMarkClosesOnReleaseWhereverThatIs) {
  press(onClose(1));
  EXPECT_EQ(happened(), (Words{"hover none"}));
  release(900, 100);
  EXPECT_EQ(happened(), (Words{"close 102"}));
}

TEST_F(StripPress, ADragFromACloseMarkDoesNothing) {
  press(onClose(1));
  dragTo(100);
  dragTo(400);
  release();
  EXPECT_EQ(happened(), (Words{"hover none"}));
}

TEST_F(StripPress, ADragWithinTheThresholdFromACloseMarkCloses) {
  const MouseEvent mark = onClose(0);
  press(mark);
  dragTo(mark.location.x + 4, mark.location.y);
  release(mark.location.x + 4);
  EXPECT_EQ(happened(), (Words{"hover none", "close 101"}));
}

TEST_F(StripPress, ATabIsDraggedToEveryPlace) {
  const auto dragPlanTo = [this](double x) {
    press(onTab("Plan"));
    dragTo(x);
    release();
    return happened().back();
  };
  EXPECT_EQ(dragPlanTo(60), "reorder 101 to 0");
  EXPECT_EQ(dragPlanTo(256), "reorder 101 to 0");
  EXPECT_EQ(dragPlanTo(257), "reorder 101 to 1");
  EXPECT_EQ(dragPlanTo(430), "reorder 101 to 2");
  EXPECT_EQ(dragPlanTo(5000), "reorder 101 to 2");
  EXPECT_EQ(dragPlanTo(-300), "reorder 101 to 0");
}

TEST_F(StripPress, TheLastPlaceOfThePointerDecidesNotTheRelease) {
  press(onTab("Notes"));
  dragTo(300);
  dragTo(20);
  release(400);
  EXPECT_EQ(happened(), (Words{"hover none", "reorder 103 to 0"}));
}

TEST_F(StripPress, ALoneTabIsDroppedWhereItWas) {
  view.setTabs({tab(101, "Plan")});
  press(onTab("Plan"));
  dragTo(700);
  release();
  EXPECT_EQ(happened(), (Words{"hover none", "reorder 101 to 0"}));
}

TEST_F(StripPress, ADragOfTheEmptyStripReportsOffsetsFromThePressUpwards) {
  press(at(515, 16));
  dragTo(518, 14);
  dragTo(520, 20);
  dragTo(525, 6);
  release(525, 6);
  EXPECT_EQ(happened(), (Words{"hover none", "drag 5,-4", "drag 10,10", "drag end"}));
}

TEST_F(StripPress, AClickOnTheEmptyStripDoesNothing) {
  press(onEmptyStrip());
  dragTo(517);
  release();
  EXPECT_EQ(happened(), (Words{"hover none"}));
}

TEST_F(StripPress, ADoubleClickOnTheEmptyStripZooms) {
  press(onEmptyStrip());
  release();
  happened();
  press(secondClick(onEmptyStrip()));
  EXPECT_EQ(happened(), (Words{"action 9 at " + place(onEmptyStrip())}));
  dragTo(560);
  release();
  EXPECT_EQ(happened(), Words{});
}

TEST_F(StripPress, ADoubleClickWhoseFirstPressClosedTheLastTabDoesNotZoom) {
  const MouseEvent mark = onClose(2);
  press(at(515));
  release(515);
  press(mark);
  release(mark.location.x);
  view.setTabs({tab(101, "Plan"), tab(102, "Report")});
  happened();
  press(secondClick(mark));
  EXPECT_EQ(happened(), (Words{"hover none"}));
}

TEST_F(StripPress, ADoubleClickWhoseFirstPressMetAToolThatIsGoneDoesNotZoom) {
  host.size.width = 900;
  view.setTabs(numberedTabs(6));
  const MouseEvent magnifier = on(StripAction::search);
  press(magnifier);
  view.setTabs({});
  view.setOfficeTools(false);
  happened();
  press(secondClick(at(magnifier.location.x - 200)));
  EXPECT_EQ(happened(), (Words{"hover none"}));
}

TEST_F(StripPress, ADoubleClickAfterAControlClickDoesNotZoom) {
  press(at(515));
  release();
  happened();
  press(withControl(at(515)));
  press(secondClick(at(515)));
  EXPECT_EQ(happened(), (Words{"hover none"}));
}

TEST_F(StripPress, ADoubleClickWhoseFirstPressWentElsewhereDoesNotZoom) {
  press(secondClick(at(515)));
  EXPECT_EQ(happened(), (Words{"hover none"}));
}

TEST_F(StripPress, ADoubleClickWhoseSecondPressMeetsATabThatCameDoesNotZoom) {
  view.setTabs({tab(101, "Plan")});
  press(at(300));
  release();
  view.setTabs({tab(101, "Plan"), tab(102, "Report")});
  happened();
  press(secondClick(at(300)));
  release();
  EXPECT_EQ(happened(), (Words{"hover none", "select 102"}));
}

TEST_F(StripPress, AThirdClickOnTheEmptyStripIsAPressAgain) {
  MouseEvent event = onEmptyStrip();
  event.clickCount = 3;
  press(event);
  EXPECT_EQ(happened(), (Words{"hover none"}));
}

TEST_F(StripPress, ADoubleClickOnATabSelectsTwice) {
  press(onTab("Plan"));
  release();
  press(secondClick(onTab("Plan")));
  release();
  EXPECT_EQ(happened(), (Words{"hover none", "select 101", "hover none", "select 101"}));
}

TEST_F(StripPress, EveryToolActsWhenPressed) {
  using enum StripAction;
  for (const StripAction action :
       {rename, autoSave, saveAll, closeAll, groups, newDoc, minimize, zoom, closeWindow}) {
    const MouseEvent event = on(action);
    press(event);
    EXPECT_EQ(happened(),
              (Words{words("action ", static_cast<int>(action), " at ", event.location.x, ",16")}));
    dragTo(515);
    release();
    EXPECT_EQ(happened(), Words{});
  }
}

TEST_F(StripPress, TheFoldedToolsActWhenPressed) {
  host.size.width = 900;
  view.setTabs(numberedTabs(12));
  press(on(StripAction::search));
  press(on(StripAction::more));
  EXPECT_EQ(happened(), (Words{"action 0 at 749,16", "action 1 at 777,16"}));
}

TEST_F(StripPress, ADoubleClickOnAToolPressesItTwice) {
  press(on(StripAction::newDoc));
  press(secondClick(on(StripAction::newDoc)));
  EXPECT_EQ(happened(), (Words{"action 7 at 1079,16", "action 7 at 1079,16"}));
}

TEST_F(StripPress, ControlClickIsARightClick) {
  press(withControl(onTab("Report")));
  EXPECT_EQ(happened(), (Words{"menu 102 at " + place(onTab("Report"))}));
  dragTo(300);
  release();
  EXPECT_EQ(happened(), Words{});
  press(withControl(on(StripAction::zoom)));
  press(withControl(secondClick(onEmptyStrip())));
  EXPECT_EQ(happened(), Words{});
}

TEST_F(StripPress, ARightClickOpensTheMenuOfATabOnly) {
  view.rightMouseDown(onTab("Plan"));
  view.rightMouseDown(onClose(2));
  EXPECT_EQ(happened(), (Words{"menu 101 at " + place(onTab("Plan")), "menu 103 at " + place(onClose(2))}));
  view.rightMouseDown(onEmptyStrip());
  view.rightMouseDown(on(StripAction::rename));
  EXPECT_EQ(happened(), Words{});
}

TEST_F(StripPress, AMiddleClickClosesATabOnly) {
  view.otherMouseDown(onTab("Plan"));
  EXPECT_EQ(happened(), (Words{"close 101"}));
  view.otherMouseDown(onClose(1));
  EXPECT_EQ(happened(), (Words{"close 102"})) << "on its mark, too";
  view.otherMouseDown(onEmptyStrip());
  view.otherMouseDown(on(StripAction::closeWindow));
  EXPECT_EQ(happened(), Words{});
}

TEST_F(StripPress, WithoutAPressNeitherDragNorReleaseDoesAnything) {
  dragTo(50);
  release();
  EXPECT_EQ(happened(), Words{});
  EXPECT_EQ(log.messages(), Words{});
}

TEST_F(StripPress, GesturesWithoutAListenerAreSkipped) {
  view.onSelect = nullptr;
  view.onClose = nullptr;
  view.onMenu = nullptr;
  view.onAction = nullptr;
  view.onZoomHover = nullptr;
  view.onReorder = nullptr;
  view.onDrag = nullptr;
  view.onDragEnd = nullptr;
  view.onTabHover = nullptr;
  for (const double x : {50.0, 158.0, 515.0, 1140.0}) {
    moveTo(x);
    press(at(x));
    release();
    press(at(x));
    dragTo(x + 60);
    release(x + 60);
    press(secondClick(at(x)));
    release();
    view.rightMouseDown(at(x));
    view.otherMouseDown(at(x));
    view.mouseExited();
  }
  EXPECT_EQ(happened(), Words{});
}

TEST_F(StripPress, DragEventsAreLoggedUntilTheDragBegins) {
  press(at(400));
  dragTo(401);
  dragTo(403);
  dragTo(410);
  dragTo(420);
  release(420);
  EXPECT_EQ(log.messages(), (Words(3, "strip mouseDragged tab=2")));
}

TEST_F(StripPress, DragEventsOnTheEmptyStripAreLoggedWithoutATab) {
  press(onEmptyStrip());
  dragTo(540);
  dragTo(560);
  EXPECT_EQ(log.messages(), (Words{"strip mouseDragged tab=nil"}));
}

TEST_F(StripPress, AClickLogsNothing) {
  press(onTab("Plan"));
  release();
  EXPECT_EQ(log.messages(), Words{});
}

// Reports go on arriving while a button is down.

TEST_F(StripPress, ATabThatMovedUnderThePressIsStillTheOneSelected) {
  press(onTab("Report"));
  view.setTabs({tab(102, "Report"), tab(101, "Plan"), tab(103, "Notes"), tab(104, "New")});
  release();
  EXPECT_EQ(happened().back(), "select 102");
}

TEST_F(StripPress, ATabThatVanishedUnderThePressIsNotSelected) {
  press(onTab("Report"));
  view.setTabs({tab(101, "Plan"), tab(103, "Notes")});
  release();
  EXPECT_EQ(happened(), (Words{"hover none"}));
}

TEST_F(StripPress, ATabThatVanishedUnderItsCloseMarkIsNotClosed) {
  press(onClose(1));
  view.setTabs({});
  release(320);
  EXPECT_EQ(happened(), (Words{"hover none"}));
}

TEST_F(StripPress, ATabThatVanishedBeforeTheDragNeitherReordersNorMovesTheStrip) {
  press(onTab("Report"));
  view.setTabs({tab(101, "Plan"), tab(103, "Notes")});
  dragTo(300);
  dragTo(400);
  release();
  EXPECT_EQ(happened(), (Words{"hover none"}));
}

TEST_F(StripPress, ADraggedTabThatVanishesEndsNowhere) {
  press(onTab("Report"));
  dragTo(300);
  view.setTabs({tab(101, "Plan"), tab(103, "Notes")});
  const auto without = painted();
  dragTo(400);
  EXPECT_EQ(painted(), without);
  release();
  EXPECT_EQ(happened(), (Words{"hover none"}));
}

TEST_F(StripPress, ADragGoesOnWhenTheTabsChangeAroundIt) {
  press(onTab("Plan"));
  dragTo(430);
  view.setTabs({tab(104, "New"), tab(101, "Plan"), tab(102, "Report")});
  release();
  EXPECT_EQ(happened(), (Words{"hover none", "reorder 101 to 2"}));

  press(onTab("New"));
  dragTo(430);
  view.setTabs({tab(104, "New"), tab(101, "Plan")});
  release();
  EXPECT_EQ(happened(), (Words{"hover none", "reorder 104 to 1"}));
}

TEST_F(StripPress, ATitleChangeDuringADragLeavesItAlone) {
  press(onTab("Plan"));
  dragTo(300);
  view.setTabs({tab(101, "Plan 2"), tab(102, "Report"), tab(103, "Notes")});
  dragTo(430);
  release();
  EXPECT_EQ(happened(), (Words{"hover none", "reorder 101 to 2"}));
}

TEST_F(StripPress, AListenerMayReplaceTheTabsWhileItIsCalled) {
  const auto takeAway = [this] { view.setTabs({}); };
  view.onTabHover = [&](auto, auto) { takeAway(); };
  press(onTab("Report"));
  release();
  EXPECT_EQ(happened(), Words{});

  listen();
  view.onTabHover = nullptr;
  view.setTabs(numberedTabs(3));
  view.onReorder = [&](WindowId id, int index) {
    takeAway();
    events.push_back(words("reorder ", id, " to ", index));
  };
  press(onTab("2"));
  dragTo(450);
  release();
  EXPECT_EQ(happened(), (Words{"reorder 2 to 2"}));
}

TEST_F(StripPress, AListenerMayTakeItselfAway) {
  std::string kept = "a text too long to be kept inside the callback itself";
  view.onSelect = [this, kept](WindowId) {
    view.onSelect = nullptr;
    events.push_back(kept);
  };
  press(onTab("Plan"));
  release();
  press(onTab("Plan"));
  release();
  EXPECT_EQ(happened(), (Words{"hover none", kept, "hover none"}));
}

TEST_F(StripPress, ADragOfTheStripWhoseReleaseWasLostEndsAtTheNextPress) {
  press(onEmptyStrip());
  dragTo(560);
  happened();
  press(onTab("Plan"));
  EXPECT_EQ(happened(), (Words{"drag end", "hover none"}));
  release();
  EXPECT_EQ(happened(), (Words{"select 101"}));
}

TEST_F(StripPress, APressOnTheEmptyStripWhoseReleaseWasLostWasNoDrag) {
  press(onEmptyStrip());
  press(onTab("Plan"));
  release();
  EXPECT_EQ(happened(), (Words{"hover none", "hover none", "select 101"}));
}

TEST_F(StripPress, ADragOfATabWhoseReleaseWasLostIsForgotten) {
  press(onTab("Plan"));
  dragTo(430);
  happened();
  press(on(StripAction::newDoc));
  release(430);
  EXPECT_EQ(happened(), (Words{"action 7 at 1079,16"}));
}

}  // namespace
}  // namespace pellar
