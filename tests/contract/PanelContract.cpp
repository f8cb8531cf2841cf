#include "tests/contract/PanelTest.h"

namespace pellar::contract {

class PanelContract : public PanelTest {};

TEST_F(PanelContract, IsOutOfSightUntilItIsShown) {
  EXPECT_FALSE(panel->isVisible());
  EXPECT_FALSE(panel->isKey());
  EXPECT_EQ(panel->frame().size(), (Size{400, 32}));
  show();
  EXPECT_TRUE(panel->isVisible());
  panel->orderOut();
  EXPECT_FALSE(panel->isVisible());
}

TEST_F(PanelContract, ComesUpOverItsWindow) {
  panel->setView(&view);
  panel->setFrame(place, true);
  panel->orderAbove(elementOf(pid, "Under.txt"));
  EXPECT_TRUE(panel->isVisible());
  settle();
  click(at(20, 10));
  EXPECT_TRUE(wait([this] { return view.heard("up"); }));
  EXPECT_TRUE(isInFront(pid));
  panel->orderOut();
  EXPECT_FALSE(panel->isVisible());
}

TEST_F(PanelContract, LeavesTheFocusWhereItIsWhenShownAndClicked) {
  show();
  click(at(20, 10));
  ASSERT_TRUE(wait([this] { return view.heard("up"); }));
  letPass(std::chrono::milliseconds(100));
  EXPECT_TRUE(isInFront(pid));
  EXPECT_TRUE(isFocused(pid, elementOf(pid, "Under.txt")));
}

TEST_F(PanelContract, KeepsTheFrameItIsGiven) {
  show();
  EXPECT_EQ(panel->frame(), place);
  const ScreenRect elsewhere{260, 340, 300, 40};
  panel->setFrame(elsewhere, true);
  EXPECT_EQ(panel->frame(), elsewhere);
  EXPECT_EQ(panel->host().bounds(), (ViewRect{0, 0, 300, 40}));
}

TEST_F(PanelContract, NamesTheVisibleFrameOfItsScreen) {
  show();
  EXPECT_EQ(panel->screenVisibleFrame(), world().platform().screens.screens().front().visibleFrame);
}

TEST_F(PanelContract, ConvertsBetweenItsViewAndTheScreen) {
  EXPECT_FALSE(panel->host().toScreen({0, 0, 1, 1}).has_value()) << "no view, no place on the screen";
  show();
  EXPECT_EQ(panel->host().toScreen({10, 4, 50, 20}), (ScreenRect{210, 308, 50, 20}));
  EXPECT_EQ(panel->host().fromScreen({210, 328}), (ViewPoint{10, 4}));
}

TEST_F(PanelContract, LaysItsViewOutBeforePaintingIt) {
  show();
  EXPECT_TRUE(view.laidOutBeforeDrawing);
  const int layouts = view.layouts;
  const int draws = view.draws;
  panel->setFrame({200, 300, 500, 32}, true);
  EXPECT_TRUE(wait([&] { return view.layouts > layouts && view.draws > draws; })) << "a new size";
}

TEST_F(PanelContract, RepaintsWhenAskedToAndNotBetween) {
  show();
  const int draws = view.draws;
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(view.draws, draws);
  panel->host().setNeedsDisplay({0, 0, 20, 20});
  panel->host().setNeedsDisplay({30, 0, 20, 20});
  EXPECT_EQ(view.draws, draws) << "not inside the call";
  EXPECT_TRUE(wait([&] { return view.draws > draws; }));
}

TEST_F(PanelContract, DeliversAPressADragAlsoOutsideAndTheRelease) {
  show();
  world().pressLeft(at(50, 12));
  ASSERT_TRUE(wait([this] { return view.heard("down"); }));
  EXPECT_TRUE(near(view.events.back().location.x, 50));
  EXPECT_TRUE(near(view.events.back().location.y, 12));
  EXPECT_TRUE(near(view.events.back().screenLocation.x, at(50, 12).x));
  EXPECT_TRUE(near(view.events.back().screenLocation.y, at(50, 12).y));
  EXPECT_EQ(view.events.back().clickCount, 1);
  EXPECT_FALSE(view.events.back().control);
  world().movePointer(at(80, 100));
  ASSERT_TRUE(wait([this] { return view.heard("dragged") && near(view.events.back().location.y, 100); }));
  EXPECT_TRUE(near(view.events.back().location.x, 80));
  world().releaseLeft();
  ASSERT_TRUE(wait([this] { return view.heard("up"); }));
}

TEST_F(PanelContract, CountsTheSecondPressOfADoubleClick) {
  show();
  click(at(50, 12));
  click(at(50, 12));
  ASSERT_TRUE(wait([this] { return std::count(view.calls.begin(), view.calls.end(), "down") == 2; }));
  int clickCount = 0;
  for (std::size_t index = 0, event = 0; index < view.calls.size(); ++index) {
    if (view.calls[index] == "entered" || view.calls[index] == "exited") continue;
    if (view.calls[index] == "down") clickCount = view.events[event].clickCount;
    ++event;
  }
  EXPECT_EQ(clickCount, 2);
}

TEST_F(PanelContract, DeliversTheOtherButtons) {
  show();
  world().clickRight(at(30, 10));
  EXPECT_TRUE(wait([this] { return view.heard("right"); }));
  world().clickMiddle(at(30, 10));
  EXPECT_TRUE(wait([this] { return view.heard("middle"); }));
  EXPECT_FALSE(view.heard("down"));
}

TEST_F(PanelContract, TellsOfThePointerComingMovingAndLeaving) {
  world().movePointer({5, 5});
  show();
  view.forget();
  world().movePointer(at(40, 16));
  ASSERT_TRUE(wait([this] { return view.heard("moved") && near(view.events.back().location.x, 40); }));
  EXPECT_FALSE(view.heard("exited"));
  world().movePointer(at(40, 200));
  EXPECT_TRUE(wait([this] { return view.heard("exited"); }));
}

TEST_F(PanelContract, TellsOfThePointerComingInBeforeItMovesThere) {
  world().movePointer({5, 5});
  show();
  view.forget();
  for (int visit = 0; visit < 2; ++visit) {
    view.forget();
    world().movePointer(at(40, 16));
    world().movePointer(at(60, 16));
    ASSERT_TRUE(wait([this] { return view.heard("moved") && near(view.events.back().location.x, 60); }));
    EXPECT_EQ(view.calls.front(), "entered");
    EXPECT_EQ(std::ranges::count(view.calls, "entered"), 1);
    world().movePointer(at(40, 200));
    ASSERT_TRUE(wait([this] { return view.heard("exited"); }));
    EXPECT_EQ(view.calls.back(), "exited");
  }
}

TEST_F(PanelContract, TellsOnceAndFromTheLoopThatItLeftTheScreenUnderThePointer) {
  show();
  world().movePointer(at(40, 16));
  ASSERT_TRUE(wait([this] { return view.heard("moved"); }));
  panel->orderOut();
  EXPECT_FALSE(view.heard("exited")) << "not inside the call";
  EXPECT_TRUE(wait([this] { return view.heard("exited"); }));
  world().movePointer(at(40, 200));
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(std::ranges::count(view.calls, "exited"), 1);
}

TEST_F(PanelContract, ThatIsBackAtOnceIsLeftAndEnteredAnew) {
  show();
  world().movePointer(at(40, 16));
  ASSERT_TRUE(wait([this] { return view.heard("moved"); }));
  view.forget();
  panel->orderOut();
  panel->orderFrontRegardless();
  world().movePointer(at(60, 16));
  ASSERT_TRUE(wait([this] { return view.heard("moved") && near(view.events.back().location.x, 60); }));
  EXPECT_EQ(view.calls.front(), "exited");
  EXPECT_EQ(std::ranges::count(view.calls, "exited"), 1);
  EXPECT_EQ(std::ranges::count(view.calls, "entered"), 1);
}

TEST_F(PanelContract, ThatHidesInsideItsOwnPressIsLeftByThePointer) {
  show();
  view.onMouseDown = [this] { panel->orderOut(); };
  world().pressLeft(at(50, 12));
  EXPECT_TRUE(wait([this] { return view.heard("exited"); }));
  world().releaseLeft();
  EXPECT_TRUE(wait([this] { return view.heard("up"); }));
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(std::ranges::count(view.calls, "exited"), 1);
  EXPECT_EQ(std::ranges::count(view.calls, "up"), 1);
}

TEST_F(PanelContract, TakesNoPressThatArrivesOnceItIsOffTheScreen) {
  show();
  int observed = 0;
  const auto monitor =
      world().platform().eventMonitors.onLocalMouseDown([&](const ObservedClick&) { ++observed; });
  mainLoop().post([this] { panel->orderOut(); });
  click(at(50, 12));
  letPass(std::chrono::milliseconds(200));
  EXPECT_FALSE(view.heard("down"));
  EXPECT_EQ(observed, 0);
  EXPECT_FALSE(panel->isVisible());
}

TEST_F(PanelContract, IsLargeEnoughForAFrameOfFractions) {
  show();
  panel->setFrame({200, 300, 192.3, 58}, true);
  EXPECT_GE(panel->host().bounds().width, 192.3);
  EXPECT_LT(panel->host().bounds().width, 193.3);
  EXPECT_EQ(panel->host().bounds().height, 58);
}

TEST_F(PanelContract, WithoutGlassShowsWhatItsViewPaints) {
  constexpr Color green{0, 1, 0, 1, std::nullopt};
  PanelStyle style;
  style.contentSize = {200, 100};
  style.glass = false;
  style.cornerRadius = 10;
  const auto clear = world().platform().panels.makePanel(style);
  RecordingView own;
  own.paint = [&](Canvas& canvas) { canvas.fillRoundedRect({0, 0, 200, 100}, 10, green); };
  world().movePointer({5, 5});
  clear->setView(&own);
  clear->setFrame({200, 300, 200, 100}, true);
  clear->orderFrontRegardless();
  // No border lies over it, and its corners are its own.
  for (const ScreenPoint point : {ScreenPoint{300, 350}, {300.5, 399.5}, {200.5, 350.5}, {204.5, 395.5}}) {
    EXPECT_TRUE(wait([&] {
      const Color seen = world().colorAt(point);
      return near(seen.red, 0, 0.02) && near(seen.green, 1, 0.02) && near(seen.blue, 0, 0.02);
    })) << point.x
        << "," << point.y;
  }
  clear->setView(nullptr);
}

TEST_F(PanelContract, MayBeTakenOffTheScreenByThePointerComingIn) {
  world().movePointer({5, 5});
  show();
  view.onMouseEntered = [this] { panel->orderOut(); };
  world().movePointer(at(50, 12));
  EXPECT_TRUE(wait([this] { return view.heard("entered") && !panel->isVisible(); }));
  letPass(std::chrono::milliseconds(50));
}

TEST_F(PanelContract, MayBeTakenOffTheScreenByItsOwnPress) {
  show();
  view.onMouseDown = [this] { panel->orderOut(); };
  click(at(50, 12));
  EXPECT_TRUE(wait([this] { return view.heard("down") && !panel->isVisible(); }));
  letPass(std::chrono::milliseconds(50));
}

TEST_F(PanelContract, TakesAndGivesBackTheKeyboard) {
  show();
  int resigned = 0;
  const auto subscription = panel->onDidResignKey([&resigned] { ++resigned; });
  panel->makeKeyAndOrderFront();
  ASSERT_TRUE(wait([this] { return panel->isKey(); }));
  EXPECT_EQ(resigned, 0);
  panel->resignKey();
  EXPECT_TRUE(wait([&] { return !panel->isKey() && resigned == 1; }));
  panel->resignKey();
  letPass(std::chrono::milliseconds(50));
  EXPECT_EQ(resigned, 1) << "a panel without the keyboard has none to give";
}

TEST_F(PanelContract, TellsWhenTheUserGoesBackToTheWindow) {
  show();
  int resigned = 0;
  const auto subscription = panel->onDidResignKey([&resigned] { ++resigned; });
  panel->makeKeyAndOrderFront();
  ASSERT_TRUE(wait([this] { return panel->isKey(); }));
  world().focus(window);
  const double top = world().platform().screens.screens().front().frame.height;
  click({100, top - 350});
  EXPECT_TRUE(wait([&] { return resigned == 1; }));
  EXPECT_FALSE(panel->isKey());
}

TEST_F(PanelContract, LetsAResignCallbackUnsubscribeItself) {
  show();
  int once = 0;
  int kept = 0;
  Subscription self;
  self = panel->onDidResignKey([&] {
    ++once;
    self.cancel();
  });
  const auto other = panel->onDidResignKey([&kept] { ++kept; });
  for (int round = 1; round <= 2; ++round) {
    panel->makeKeyAndOrderFront();
    ASSERT_TRUE(wait([this] { return panel->isKey(); }));
    panel->resignKey();
    ASSERT_TRUE(wait([&] { return kept == round; }));
  }
  EXPECT_EQ(once, 1);
}

TEST_F(PanelContract, LetsAResignCallbackSilenceAnother) {
  show();
  int told = 0;
  Subscription one;
  Subscription other;
  one = panel->onDidResignKey([&] {
    ++told;
    other.cancel();
  });
  other = panel->onDidResignKey([&] {
    ++told;
    one.cancel();
  });
  panel->makeKeyAndOrderFront();
  ASSERT_TRUE(wait([this] { return panel->isKey(); }));
  panel->resignKey();
  ASSERT_TRUE(wait([&] { return !panel->isKey() && told > 0; }));
  letPass(std::chrono::milliseconds(50));
  EXPECT_EQ(told, 1) << "the second was called after the first had ended its registration";
}

TEST_F(PanelContract, PaintsNothingMoreOfAViewThatWasTakenAway) {
  show();
  panel->host().setNeedsDisplay();
  panel->setView(nullptr);
  const int draws = view.draws;
  letPass(std::chrono::milliseconds(80));
  EXPECT_EQ(view.draws, draws);
}

class EventMonitorContract : public PanelTest {
 protected:
  EventMonitors& monitors() { return world().platform().eventMonitors; }
  ScreenPoint inWindow() { return {100, world().platform().screens.screens().front().frame.height - 350}; }
};

TEST_F(EventMonitorContract, SeesAPressInAPanelBeforeThePanelDoes) {
  show();
  bool seenFirst = false;
  const Panel* where = nullptr;
  ScreenPoint point;
  const auto subscription = monitors().onLocalMouseDown([&](const ObservedClick& click) {
    seenFirst = !view.heard("down");
    where = click.panel;
    point = click.location;
  });
  click(at(60, 10));
  ASSERT_TRUE(wait([this] { return view.heard("down"); }));
  EXPECT_TRUE(seenFirst);
  EXPECT_EQ(where, panel.get());
  EXPECT_TRUE(near(point.x, at(60, 10).x));
  EXPECT_TRUE(near(point.y, at(60, 10).y));
}

TEST_F(EventMonitorContract, SeesAPressInAnotherApplication) {
  show();
  int elsewhere = 0;
  int here = 0;
  const auto global = monitors().onGlobalMouseDown([&elsewhere] { ++elsewhere; });
  const auto local = monitors().onLocalMouseDown([&here](const ObservedClick&) { ++here; });
  EXPECT_EQ(elsewhere, 0);
  click(inWindow());
  EXPECT_TRUE(wait([&elsewhere] { return elsewhere == 1; }));
  EXPECT_EQ(here, 0);
}

TEST_F(EventMonitorContract, SeesLeftAndRightPressesAndNothingElse) {
  show();
  int here = 0;
  const auto local = monitors().onLocalMouseDown([&here](const ObservedClick&) { ++here; });
  world().clickMiddle(at(60, 10));
  world().turnWheel(at(60, 10), 3);
  ASSERT_TRUE(wait([this] { return view.heard("middle"); }));
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(here, 0);
  world().clickRight(at(60, 10));
  EXPECT_TRUE(wait([&here] { return here == 1; }));
}

TEST_F(EventMonitorContract, LetsACallbackUnsubscribeItself) {
  show();
  int once = 0;
  Subscription self;
  self = monitors().onLocalMouseDown([&](const ObservedClick&) {
    ++once;
    self.cancel();
  });
  click(at(60, 10));
  ASSERT_TRUE(wait([this] { return view.heard("up"); }));
  view.forget();
  click(at(90, 10));
  ASSERT_TRUE(wait([this] { return view.heard("up"); }));
  EXPECT_EQ(once, 1);
  int global = 0;
  self = monitors().onGlobalMouseDown([&] {
    ++global;
    self.cancel();
  });
  click(inWindow());
  ASSERT_TRUE(wait([&global] { return global > 0; }));
  click(inWindow());
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(global, 1);
}

}  // namespace pellar::contract
