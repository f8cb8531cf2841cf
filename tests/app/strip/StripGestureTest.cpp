#include <gtest/gtest.h>

#include <locale>
#include <string>

#include "tests/support/StripStory.h"

namespace pellar {
namespace {

using StripGesture = StripStory;

TEST_F(StripGesture, EachTabOfFiveFocusesExactlyItsWindow) {
  std::vector<SimWindow> windows;
  for (const auto* title : {"A", "B", "C", "D", "E"}) windows.push_back(open(title));
  start();
  for (const auto& window : windows) {
    strip().clickTab(window.title());
    EXPECT_EQ(mac.frontWindow(), window);
    EXPECT_EQ(window.raises(), 1);
    EXPECT_EQ(strip().activeTab(), window.title());
    expectStripOver(window);
  }
  EXPECT_EQ(mac.workspace().requestedActivations().back(), editor.pid());
}

TEST_F(StripGesture, ClickingTheTabOfAMinimisedWindowBringsItBack) {
  auto plan = open("Plan");
  open("Report");
  plan.minimise();
  start();
  strip().clickTab("Plan");
  EXPECT_FALSE(plan.isMinimised());
  EXPECT_EQ(mac.frontWindow(), plan);
}

TEST_F(StripGesture, OnlyAMinimisedWindowIsToldToComeBack) {
  auto plan = open("Plan");
  open("Report");
  start();
  mac.accessibility().forgetRoundTrips();
  strip().clickTab("Plan");
  EXPECT_EQ(mac.accessibility().roundTrips().writes, 0);
  plan.minimise();
  mac.settle();
  mac.accessibility().forgetRoundTrips();
  strip().clickTab("Plan");
  EXPECT_EQ(mac.accessibility().roundTrips().writes, 1);
}

TEST_F(StripGesture, ATabsCloseMarkPressesItsWindowsCloseButton) {
  const auto plan = open("Plan");
  auto report = open("Report");
  report.quirks().asksBeforeClosing = true;
  start();
  strip().closeTab("Plan");
  EXPECT_FALSE(plan.exists());
  EXPECT_EQ(strip().tabs(), Labels{"Report"});
  // The application asks; until it is answered the tab stays.
  strip().middleClickTab("Report");
  EXPECT_EQ(report.closePresses(), 1);
  EXPECT_EQ(strip().tabs(), Labels{"Report"});
}

TEST_F(StripGesture, AWindowWithoutCloseButtonStays) {
  auto plan = open("Plan");
  plan.quirks().hasCloseButton = false;
  start();
  strip().closeTab("Plan");
  strip().clickTool(tool::closeWindow);
  strip().clickTool("Close all");
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
}

TEST_F(StripGesture, ADraggedTabStaysWhereItWasDropped) {
  open("A");
  open("B");
  open("C");
  start();
  strip().dragTab("C").to(0);
  EXPECT_EQ(strip().tabs(), (Labels{"C", "A", "B"}));
  EXPECT_TRUE(log.has(R"(tabs reordered: ["C", "A", "B"])"));
  open("D");
  EXPECT_EQ(strip().tabs(), (Labels{"C", "A", "B", "D"}));
  strip().dragTab("C").to(3);
  EXPECT_EQ(strip().tabs(), (Labels{"A", "B", "D", "C"}));
}

TEST_F(StripGesture, TheWindowToolsActOnTheFocusedWindow) {
  auto plan = open("Plan");
  auto report = open("Report");
  start();
  strip().clickTool(tool::minimize);
  EXPECT_TRUE(report.isMinimised());
  EXPECT_FALSE(plan.isMinimised());
  expectStripOver(plan);
  strip().clickTool(tool::closeWindow);
  EXPECT_FALSE(plan.exists());
  EXPECT_TRUE(report.exists());
}

TEST_F(StripGesture, CloseAllClosesEveryWindow) {
  const auto plan = open("Plan");
  const auto report = open("Report");
  start();
  strip().clickTool("Close all");
  EXPECT_FALSE(plan.exists());
  EXPECT_FALSE(report.exists());
  EXPECT_FALSE(stripShown());
}

TEST_F(StripGesture, CyclingWithoutAFocusedWindowDoesNothing) {
  auto a = open("A");
  a.minimise();
  start();
  mac.accessibility().forgetRoundTrips();
  pellar.strip()->cycle(true);
  mac.settle();
  EXPECT_EQ(mac.accessibility().roundTrips().total(), 0);
  EXPECT_TRUE(a.isMinimised());
}

TEST_F(StripGesture, DraggingTheStripMovesTheWindowsStackedBehindToo) {
  const auto behind = open("Behind");
  auto minimised = open("Minimised");
  const auto aside = open("Aside", {-100, 600, 300, 200});
  const auto front = open("Front");
  minimised.minimise();
  editor.focus(front);
  start();
  strip().dragEmptyStrip(40, -30);
  EXPECT_EQ(front.frame(), (AxRect{140, 230, 1200, 600}));
  EXPECT_EQ(behind.frame(), (AxRect{140, 230, 1200, 600}));
  EXPECT_EQ(minimised.frame(), (AxRect{100, 200, 1200, 600}));
  EXPECT_EQ(aside.frame(), (AxRect{-100, 600, 300, 200}));
  expectStripOver(front);
  EXPECT_TRUE(log.has("banner drag start: 2 windows from {{100, 200}, {1200, 600}}"));

  strip().dragEmptyStrip(-40, 30);
  EXPECT_EQ(front.frame(), (AxRect{100, 200, 1200, 600}));
  EXPECT_TRUE(log.has("banner drag start: 2 windows from {{140, 230}, {1200, 600}}"));
}

// As a program that reads the log expects them, whatever the user's language.
class CommasInNumbers final : public std::numpunct<char> {
  [[nodiscard]] char do_decimal_point() const override { return ','; }
  [[nodiscard]] char do_thousands_sep() const override { return '.'; }
  [[nodiscard]] std::string do_grouping() const override { return "\3"; }
};

TEST_F(StripGesture, TheLogTellsADragInTheSameNumbersInEveryLanguage) {
  open("Plan", {100, 200.0625, 1200.0625, 600});
  start();
  const auto before = std::locale::global(std::locale(std::locale::classic(), new CommasInNumbers));
  strip().dragEmptyStrip(40, -30);
  std::locale::global(before);
  EXPECT_TRUE(log.has("banner drag start: 1 windows from {{100, 200.0625}, {1200.0625, 600}}"));
}

TEST_F(StripGesture, AWindowComesAlongWhenMoreThanHalfOfItIsBehind) {
  const auto half = open("Half", {700, 200, 1200, 600});
  const auto more = open("More", {699, 200, 1200, 600});
  const auto large = open("Large", {0, 100, 1300, 700});
  const auto front = open("Front");
  start();
  strip().dragEmptyStrip(10, 0);
  EXPECT_EQ(front.frame().x, 110);
  EXPECT_EQ(half.frame().x, 700) << "exactly half is not more";
  EXPECT_EQ(more.frame().x, 709);
  EXPECT_EQ(large.frame().x, 10) << "larger than the one in front, which covers most of it";
  EXPECT_TRUE(log.has("banner drag start: 3 windows from {{100, 200}, {1200, 600}}"));
}

TEST_F(StripGesture, AFullScreenWindowIsNotDragged) {
  auto front = open("Front");
  start();
  const AxRect before = front.frame();
  const ScreenPoint from = strip().emptyPoint();
  mac.pointer().press(from);
  front.enterFullScreen();
  mac.settle();
  const AxRect full = front.frame();
  mac.pointer().moveTo({from.x + 50, from.y});
  mac.pointer().release();
  EXPECT_EQ(front.frame(), full);
  EXPECT_FALSE(log.has("banner drag start: 1 windows from {{100, 200}, {1200, 600}}"));
  front.leaveFullScreen();
  mac.settle();
  EXPECT_EQ(front.frame(), before);
}

TEST_F(StripGesture, TheStripMovesWithTheDragAndNotOnlyAfterIt) {
  const auto front = open("Front");
  open("Behind");
  editor.focus(front);
  start();
  const ScreenPoint from = strip().emptyPoint();
  mac.pointer().press(from);
  mac.pointer().moveTo({from.x + 10, from.y});
  mac.accessibility().forgetRoundTrips();
  bool looked = false;
  mac.pointer().moveTo({from.x + 25, from.y - 5}, [&] {
    looked = true;
    EXPECT_EQ(mac.accessibility().roundTrips().writes, 2);
    EXPECT_EQ(mac.accessibility().roundTrips().total(), 2) << "nothing is read on the way";
    EXPECT_EQ(front.frame().origin(), (AxPoint{125, 205}));
    expectStripOver(front);
  });
  EXPECT_TRUE(looked);
  mac.pointer().release();
  EXPECT_EQ(front.frame().origin(), (AxPoint{125, 205}));
}

TEST_F(StripGesture, AWindowThatVanishesUnderADragIsNoTrouble) {
  auto behind = open("Behind");
  auto front = open("Front");
  start();
  const ScreenPoint from = strip().emptyPoint();
  mac.pointer().press(from);
  mac.pointer().moveTo({from.x + 10, from.y});
  front.close();
  mac.pointer().moveTo({from.x + 20, from.y});
  EXPECT_EQ(behind.frame().x, 120);
  mac.pointer().release();
  expectStripOver(behind);
}

TEST_F(StripGesture, TheAutoSaveToolMeansOneMinuteOrOff) {
  open("Plan");
  start();
  const auto minutesAfterClick = [&](std::int64_t minutes, const char* tool) {
    pellar.store().update([&](AppState& state) { state.settings.autoSaveMinutes = minutes; });
    pellar.tracker().refresh();
    strip().clickTool(tool);
    const StateStore reread(pellar.store().url());
    return reread.state().settings.autoSaveMinutes;
  };
  EXPECT_EQ(minutesAfterClick(0, tool::autoSaveOff), 1);
  EXPECT_EQ(minutesAfterClick(-5, tool::autoSaveOff), 1);
  EXPECT_EQ(minutesAfterClick(15, tool::autoSaveOn), 0);
  EXPECT_EQ(minutesAfterClick(1, tool::autoSaveOn), 0);
  EXPECT_EQ(strip().tools().front(), tool::autoSaveOff);
}

TEST_F(StripGesture, ToolsDoNothingOnceTheApplicationIsGone) {
  open("Plan");
  start();
  const auto tool = strip().toolPoint(tool::closeWindow);
  mac.terminate(editor);
  EXPECT_FALSE(stripShown());
  mac.pointer().click(tool);
  EXPECT_FALSE(stripShown());
}

TEST_F(StripGesture, APressThatArrivesAfterTheApplicationWentDoesNothing) {
  open("Plan");
  start();
  auto& view = *strip().panel().simHost().view();
  const auto pressOn = [&](const char* tool) {
    const ScreenPoint point = strip().toolPoint(tool);
    return MouseEvent{strip().panel().host().fromScreen(point), point, false, 1};
  };
  const std::vector<MouseEvent> presses{pressOn(tool::autoSaveOff), pressOn("Groups")};
  mac.terminate(editor);
  ASSERT_FALSE(stripShown());
  mac.menus().next([](SimOpenMenu&) { ADD_FAILURE() << "a menu of no application's windows"; });
  for (const auto& press : presses) view.mouseDown(press);
  mac.settle();
  EXPECT_EQ(mac.menus().awaited(), 1U);
  EXPECT_EQ(pellar.store().state().settings.autoSaveMinutes, 0);
  EXPECT_FALSE(stripShown());
}

TEST_F(StripGesture, GesturesStillReachWindowsWhilePellarIsInFront) {
  const auto plan = open("Plan");
  open("Report");
  start();
  mac.activatePellar();
  strip().clickTab("Plan");
  EXPECT_EQ(mac.frontWindow(), plan);
  expectStripOver(plan);
  EXPECT_EQ(strip().activeTab(), "Plan");
}

class QuietApplication : public StripStory {
 protected:
  QuietApplication() { keepSilent(editor); }
};

TEST_F(QuietApplication, ItsWindowsAreLookedAtAgainAfterEveryAction) {
  open("A");
  const auto b = open("B");
  open("C");
  start();
  strip().clickTab("A");
  EXPECT_EQ(strip().activeTab(), "A");
  pellar.strip()->cycle(true);
  EXPECT_EQ(strip().activeTab(), "B");
  strip().clickTool(tool::zoom);
  expectStripOver(b);
  strip().clickTool(tool::minimize);
  EXPECT_NE(strip().activeTab(), "B");
  strip().closeTab("A");
  EXPECT_EQ(strip().tabs(), (Labels{"B", "C"}));
  strip().clickTool("Close all");
  EXPECT_FALSE(stripShown());
}

TEST_F(QuietApplication, ItsWindowsAreLookedAtAgainAfterADragOfTheStrip) {
  auto plan = open("Plan");
  plan.quirks().refusesMoves = true;
  start();
  strip().dragEmptyStrip(30, -40);
  EXPECT_EQ(plan.frame().origin(), (AxPoint{100, 200}));
  expectStripOver(plan);
}

}  // namespace
}  // namespace pellar
