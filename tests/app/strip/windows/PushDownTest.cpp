#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "tests/support/StripStory.h"

namespace pellar {
namespace {

using RoomForTheStrip = StripStory;

TEST_F(RoomForTheStrip, AWindowDraggedToTheTopByItsStripLosesOnlyTheRoomOfTheStrip) {
  const auto plan = open("Plan", {100, 200, 1200, 604});
  start();
  const ScreenPoint from = strip().emptyPoint();
  mac.pointer().press(from);
  for (double way = 20; way <= 180; way += 20) {
    mac.pointer().moveTo({from.x, from.y + way});
    const double top = std::max(SimScreens::menuBarHeight, 200 - way);
    EXPECT_EQ(plan.frame(), (AxRect{100, top, 1200, 604})) << "on the way nothing is pushed";
  }
  mac.pointer().release();
  EXPECT_EQ(plan.frame(), (AxRect{100, 57, 1200, 572}));
  expectStripOver(plan);
}

// The title bar is the upper edge of the window.
TEST_F(RoomForTheStrip, AWindowDraggedToTheTopByItsTitleBarAndBackIsAsBefore) {
  const auto plan = open("Plan", {100, 200, 1200, 604});
  start();
  const ScreenPoint grip{700, 900 - 210};
  mac.pointer().press(grip);
  for (const double way : {60, 120, 180, 200, 190, 120, 60, 0}) {
    mac.pointer().moveTo({grip.x, grip.y + way});
    const double top = std::max(SimScreens::menuBarHeight, 200 - way);
    EXPECT_EQ(plan.frame(), (AxRect{100, top, 1200, 604})) << "it is the user's while the button is held";
    expectStripOver(plan);
  }
  mac.pointer().release();
  EXPECT_EQ(plan.frame(), (AxRect{100, 200, 1200, 604}));
  EXPECT_FALSE(mac.eventMonitors().watched()) << "nothing is waited for any more";
}

TEST_F(RoomForTheStrip, AWindowLeftAtTheTopByItsTitleBarMakesRoomOnceTheButtonIsReleased) {
  const auto plan = open("Plan", {100, 200, 1200, 604});
  start();
  mac.pointer().press({700, 900 - 210});
  mac.pointer().moveTo({700, 900 - 35});
  ASSERT_EQ(plan.frame(), (AxRect{100, 25, 1200, 604}));
  mac.accessibility().forgetRoundTrips();
  mac.advance(std::chrono::seconds(20));
  EXPECT_EQ(mac.accessibility().roundTrips().total(), 0) << "held still, it is not looked at";
  mac.pointer().release();
  EXPECT_EQ(plan.frame(), (AxRect{100, 57, 1200, 572}));
  expectStripOver(plan);
}

// A window that leaves full screen passes places where it has no room for the strip; a move on the way would
// become the frame that the system gives back.
TEST_F(RoomForTheStrip, AWindowOnItsWayOutOfFullScreenComesBackToItsOwnFrame) {
  auto plan = open("Plan", {100, 200, 1200, 604});
  start();
  plan.enterFullScreen();
  mac.settle();
  plan.setOnItsWay();
  plan.leaveFullScreen();
  plan.setFrame({0, 0, 1200, 604});
  mac.settle();
  EXPECT_EQ(plan.frame(), (AxRect{0, 0, 1200, 604}));
  plan.setFrame({100, 200, 1200, 604});
  plan.comeToRest();
  mac.settle();
  EXPECT_EQ(plan.frame(), (AxRect{100, 200, 1200, 604}));
  expectStripOver(plan);
}

TEST_F(RoomForTheStrip, AWindowThatComesToRestWithoutRoomMakesRoomOnce) {
  auto plan = open("Plan", {100, 200, 1200, 604});
  start();
  plan.setOnItsWay();
  plan.setFrame({100, 25, 1200, 604});
  mac.settle();
  EXPECT_EQ(plan.frame(), (AxRect{100, 25, 1200, 604}));
  plan.comeToRest();
  mac.settle();
  EXPECT_EQ(plan.frame(), (AxRect{100, 57, 1200, 572}));
  expectStripOver(plan);
}

// A panel that goes off the screen under a drag may never hear of the release.
TEST_F(RoomForTheStrip, AWindowMakesRoomAfterADragInWhichTheStripWasHidden) {
  auto plan = open("Plan", {100, 200, 1200, 604});
  start();
  const ScreenPoint from = strip().emptyPoint();
  mac.pointer().press(from);
  mac.pointer().moveTo({from.x, from.y + 20});
  plan.minimise();
  mac.settle();
  plan.restore();
  mac.settle();
  mac.pointer().moveTo({from.x, from.y + 60});
  EXPECT_EQ(plan.frame().origin(), (AxPoint{100, 180})) << "that drag is over";
  plan.moveTo({100, 25});
  mac.settle();
  mac.pointer().release();
  EXPECT_EQ(plan.frame(), (AxRect{100, 57, 1200, 572}));
  expectStripOver(plan);
}

TEST_F(RoomForTheStrip, AWindowThatRefusesTheMoveButTakesTheSizeGetsItsSizeBack) {
  auto plan = open("Plan", {100, 25, 1200, 600});
  plan.quirks().refusesMoves = true;
  start();
  EXPECT_EQ(plan.frame(), (AxRect{100, 25, 1200, 600}));
  expectStripOver(plan);
  for (const char* title : {"Plan 2", "Plan 3", "Plan 4"}) {
    plan.retitle(title);
    mac.settle();
    EXPECT_EQ(plan.frame(), (AxRect{100, 25, 1200, 600}));
  }
}

TEST_F(RoomForTheStrip, AWindowThatRefusedTheMoveMakesRoomOnceItTakesIt) {
  auto plan = open("Plan", {100, 25, 1200, 600});
  plan.quirks().refusesMoves = true;
  start();
  plan.quirks().refusesMoves = false;
  plan.retitle("Plan 2");
  mac.settle();
  EXPECT_EQ(plan.frame(), (AxRect{100, 57, 1200, 568}));
  expectStripOver(plan);
}

TEST_F(RoomForTheStrip, AWindowThatMovesOnlyPartOfTheWayKeepsItsSize) {
  auto plan = open("Plan", {100, 25, 1200, 600});
  plan.quirks().confinedTo = AxRect{0, 25, 1440, 15};
  start();
  EXPECT_EQ(plan.frame().size(), (Size{1200, 600}));
  expectStripOver(plan);
  plan.retitle("Plan 2");
  mac.settle();
  EXPECT_EQ(plan.frame().size(), (Size{1200, 600}));
}

// Growing to its least height takes the window onto the screen below, which is the first.
TEST_F(RoomForTheStrip, AWindowThatReachesAnotherScreenOnItsWayHasMadeRoomOnItsOwn) {
  mac.screens().add({0, 900, 1440, 220}, 0, 0);
  editor.quirks().refusedNotifications = {"AXWindowMoved", "AXWindowResized"};
  const auto plan = open("Plan", {100, -220, 800, 60});
  start();
  mac.settle();
  EXPECT_EQ(plan.frame().y, 57) << "looked at again, it stands on the first screen";
  expectStripOver(plan);
}

}  // namespace
}  // namespace pellar
