#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>

#include "platform/sim/faults/FaultyAccessibility.h"
#include "platform/sim/faults/FaultyWorkspace.h"
#include "platform/sim/faults/ForwardingAccessibility.h"
#include "tests/support/MenuStory.h"
#include "tests/support/ReusedNumbers.h"

namespace pellar {
namespace {

// Lets something happen inside every write and action, as a nested loop would.
class InterruptedWrites final : public ForwardingAccessibility {
 public:
  using ForwardingAccessibility::ForwardingAccessibility;

  std::function<void()> happening;

  void set(const Element& element, std::string_view name, const AttributeValue& value) override {
    ForwardingAccessibility::set(element, name, value);
    interrupt();
  }
  Performed perform(const Element& element, std::string_view action) override {
    const Performed performed = ForwardingAccessibility::perform(element, action);
    interrupt();
    return performed;
  }

 private:
  void interrupt() {
    if (inside_ || !happening) return;
    inside_ = true;
    happening();
    inside_ = false;
  }
  bool inside_ = false;
};

class StripFault : public MenuStory {
 protected:
  [[nodiscard]] std::unique_ptr<AppDelegate> startOn(Platform platform) {
    auto other = std::make_unique<AppDelegate>(platform);
    acceptTerms(*other);
    other->applicationDidFinishLaunching();
    mac.settle();
    return other;
  }
};

TEST_F(StripFault, ReportsThatArriveInsideAWriteAreTakenOver) {
  InterruptedWrites interrupted(mac.accessibility());
  auto plan = open("Plan", {100, 25, 1200, 600});
  auto report = open("Report");
  const auto faulted = startOn(mac.platformWith(interrupted));
  interrupted.happening = [&] { faulted->tracker().refresh(); };

  editor.focus(plan);
  mac.settle();
  EXPECT_EQ(plan.frame().y, 57);
  expectStripOver(plan);
  strip().clickTab("Report");
  expectStripOver(report);
  strip().clickTool(tool::zoom);
  expectStripOver(report);
  strip().clickTool(tool::zoom);
  EXPECT_EQ(report.frame(), (AxRect{100, 200, 1200, 600}));
  strip().dragEmptyStrip(30, -40);
  EXPECT_EQ(report.frame().origin(), (AxPoint{130, 240}));
  expectStripOver(report);
  strip().closeTab("Plan");
  EXPECT_EQ(strip().tabs(), Labels{"Report"});
}

TEST_F(StripFault, AnotherWindowFocusedWhileTheFirstIsPushedDownHasTheStrip) {
  InterruptedWrites interrupted(mac.accessibility());
  auto high = open("High");
  const auto other = open("Other", {50, 300, 1000, 500});
  const auto faulted = startOn(mac.platformWith(interrupted));
  interrupted.happening = [&] {
    editor.focus(other);
    faulted->tracker().refresh();
    interrupted.happening = nullptr;
  };
  editor.focus(high);
  high.moveTo({100, 30});
  faulted->tracker().refresh();
  expectStripOver(other);
  EXPECT_EQ(strip().activeTab(), "Other");
}

TEST_F(StripFault, AWindowThatLosesItsWidthWhileItIsPushedDownHasNoStrip) {
  InterruptedWrites interrupted(mac.accessibility());
  auto high = open("High");
  const auto faulted = startOn(mac.platformWith(interrupted));
  ASSERT_TRUE(stripShown());
  interrupted.happening = [&] { high.resizeTo({0, 600}); };
  high.moveTo({100, 30});
  faulted->tracker().refresh();
  EXPECT_FALSE(mac.strip().visible());
  interrupted.happening = nullptr;
  high.resizeTo({1200, 600});
  expectStripOver(high);
}

TEST_F(StripFault, TheApplicationMayEndWhileItsWindowIsPushedDown) {
  InterruptedWrites interrupted(mac.accessibility());
  auto high = open("High");
  const auto faulted = startOn(mac.platformWith(interrupted));
  interrupted.happening = [&] {
    mac.terminate(editor);
    faulted->tracker().refresh();
  };
  high.moveTo({100, 30});
  EXPECT_FALSE(stripShown());
}

TEST_F(StripFault, EveryWindowMayCloseWhileCloseAllRuns) {
  InterruptedWrites interrupted(mac.accessibility());
  open("A");
  auto b = open("B");
  open("C");
  const auto faulted = startOn(mac.platformWith(interrupted));
  interrupted.happening = [&] {
    b.close();
    faulted->tracker().refresh();
  };
  strip().clickTool("Close all");
  EXPECT_FALSE(stripShown());
  EXPECT_TRUE(editor.windowsFrontToBack().empty());
}

TEST_F(StripFault, AWindowThatClosesUnderTheDragOfItsTabEndsIt) {
  open("A");
  auto b = open("B");
  open("C");
  start();
  const ScreenPoint from = strip().tabPoint("B");
  mac.pointer().press(from);
  mac.pointer().moveTo({from.x + 20, from.y});
  b.close();
  mac.pointer().moveTo({from.x + 400, from.y});
  mac.pointer().release();
  EXPECT_EQ(strip().tabs(), (Labels{"A", "C"}));
  for (const auto& message : log.messages()) EXPECT_FALSE(message.starts_with("tabs reordered")) << message;
  strip().dragTab("C").to(0);
  EXPECT_EQ(strip().tabs(), (Labels{"C", "A"}));
}

TEST_F(StripFault, EveryWindowMayCloseUnderADragOfTheStrip) {
  auto plan = open("Plan");
  auto report = open("Report");
  start();
  const ScreenPoint from = strip().emptyPoint();
  mac.pointer().press(from);
  mac.pointer().moveTo({from.x + 20, from.y});
  plan.close();
  report.close();
  mac.pointer().moveTo({from.x + 40, from.y});
  EXPECT_FALSE(stripShown());
  mac.pointer().moveTo({from.x + 60, from.y});
  mac.pointer().release();
  EXPECT_FALSE(stripShown());
  const auto notes = open("Notes", {50, 300, 1200, 400});
  expectStripOver(notes);
  strip().dragEmptyStrip(30, 0);
  EXPECT_EQ(notes.frame().x, 80);
  EXPECT_TRUE(log.has("banner drag start: 1 windows from {{50, 300}, {1200, 400}}"));
}

TEST_F(StripFault, AnotherApplicationMayComeToTheFrontUnderADragOfTheStrip) {
  const auto plan = open("Plan");
  auto viewer = mac.launch({.bundleId = "org.example.viewer", .name = "Viewer", .inFront = false});
  const auto picture = viewer.open("Picture", {50, 300, 1000, 400});
  start();
  const ScreenPoint from = strip().emptyPoint();
  mac.pointer().press(from);
  mac.pointer().moveTo({from.x + 20, from.y});
  mac.activate(viewer);
  mac.settle();
  mac.pointer().moveTo({from.x + 40, from.y}, [&] { expectStripOver(picture); });
  EXPECT_EQ(plan.frame().x, 140) << "what is dragged stays what it was";
  expectStripOver(picture);
  EXPECT_EQ(picture.frame().x, 50);
  mac.terminate(editor);
  mac.pointer().moveTo({from.x + 60, from.y});
  mac.pointer().release();
  EXPECT_EQ(picture.frame().x, 50);
  expectStripOver(picture);
}

TEST_F(StripFault, AWindowThatIsGoneButStillListedDoesNotMoveTheStripAway) {
  auto plan = open("Plan");
  auto report = open("Report");
  start();
  report.vanishUnannounced();
  plan.retitle("Plan 2");
  EXPECT_EQ(strip().tabs(), Labels{"Plan 2"});
  expectStripOver(plan);
}

TEST_F(StripFault, GesturesOnAWindowThatVanishedDoNothing) {
  auto plan = open("Plan");
  auto report = open("Report");
  start();
  plan.vanishUnannounced();
  strip().clickTab("Plan");
  mac.settle();
  EXPECT_EQ(mac.frontWindow(), report);
  expectStripOver(report);
}

TEST_F(StripFault, AFrozenApplicationHidesTheStripAndHasItBackAfterwards) {
  auto plan = open("Plan");
  start();
  editor.freeze();
  pellar.tracker().refresh();
  EXPECT_FALSE(stripShown());
  plan.retitle("Plan 2");
  mac.settle();
  editor.resume();
  expectStripOver(plan);
  EXPECT_EQ(strip().tabs(), Labels{"Plan 2"});
  EXPECT_EQ(log.messages(), Labels{"tracking started"});
}

TEST_F(StripFault, AnApplicationThatFreezesUnderAClickHasItsStripBackWithItsNextSignOfLife) {
  const auto plan = open("Plan");
  auto report = open("Report");
  start();
  editor.freeze();
  strip().clickTab("Plan");
  EXPECT_FALSE(stripShown());
  editor.resume();
  report.retitle("Report 2");
  expectStripOver(plan);
  EXPECT_EQ(strip().activeTab(), "Plan") << "what was asked of it is done late";
  EXPECT_EQ(plan.raises(), 1);
}

TEST_F(StripFault, AWindowThatTellsAPlaceOrSizeThatIsNoNumberKeepsItsStripAndItsPlace) {
  const auto plan = open("Plan");
  FaultyAccessibility faulty(mac.accessibility());
  const auto faulted = startOn(mac.platformWith(faulty));
  constexpr double infinity = std::numeric_limits<double>::infinity();
  for (const double strange : {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity}) {
    for (const AxPoint position : {AxPoint{strange, 200}, AxPoint{100, strange}}) {
      faulty.answer("AXPosition", position);
      faulted->tracker().refresh();
      expectStripOver(plan);
    }
    faulty.repair();
    for (const Size size : {Size{strange, 600}, Size{1200, strange}}) {
      faulty.answer("AXSize", size);
      faulted->tracker().refresh();
      expectStripOver(plan);
    }
    faulty.repair();
  }
  EXPECT_EQ(plan.frame(), (AxRect{100, 200, 1200, 600}));
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
}

TEST_F(StripFault, AWindowThatTellsAPlaceOrSizeBeyondEveryScreenHasItsStripBackWhenItTellsTheTruth) {
  const auto plan = open("Plan");
  FaultyAccessibility faulty(mac.accessibility());
  const auto faulted = startOn(mac.platformWith(faulty));
  faulty.ignoreWrites(true);
  for (const double strange : {1e10, -1e10, 1e300, -1e300}) {
    faulty.answer("AXPosition", AxPoint{strange, strange});
    faulted->tracker().refresh();
    mac.settle();
    faulty.answer("AXSize", Size{std::abs(strange), std::abs(strange)});
    faulted->tracker().refresh();
    mac.settle();
  }
  faulty.repair();
  faulted->tracker().refresh();
  expectStripOver(plan);
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
}

TEST_F(StripFault, HostileTitlesAreShownAsFarAsTheyCanBe) {
  open("");
  open(std::string(100'000, 'x'));
  open("\u05E9\u05DC\u05D5\u05DD");
  open("bad \xFF\xC3 bytes");
  open(std::string("zero \0 and \n line", 17));
  start();
  ASSERT_EQ(strip().tabs().size(), 5U);
  EXPECT_EQ(strip().tabs().at(2), "\u05E9\u05DC\u05D5\u05DD");
  for (int index = 0; index < 5; ++index) {
    strip().clickTab(index);
    EXPECT_EQ(strip().activeTabIndex(), index);
  }
  strip().dragTab(4).to(0);
  EXPECT_EQ(log.messages().back().find("tabs reordered: ["), 0U);
}

TEST_F(StripFault, ATitleThatNeverRestsCostsOneRedrawATurn) {
  auto plan = open("Plan");
  start();
  const auto repaints = strip().panel().simHost().repaints().size();
  for (int i = 1; i <= 1000; ++i) plan.retitle("Plan " + std::to_string(i));
  EXPECT_EQ(strip().tabs(), Labels{"Plan 1000"});
  EXPECT_LE(strip().panel().simHost().repaints().size(), repaints + 2);
}

TEST_F(StripFault, WithoutCooperationOfTheWorkspaceTheWindowIsStillRaised) {
  FaultyWorkspace faulty(mac.workspace());
  faulty.ignoresActivate = true;
  const auto plan = open("Plan");
  open("Report");
  const auto faulted = startOn(mac.platformWith(faulty));
  strip().clickTab("Plan");
  EXPECT_EQ(mac.frontWindow(), plan);
  expectStripOver(plan);
}

TEST_F(StripFault, ATerminationThatDoesNotSayWhoseStillRefreshes) {
  FaultyWorkspace faulty(mac.workspace());
  faulty.withholdsTerminatedPid = true;
  open("Plan");
  const auto faulted = startOn(mac.platformWith(faulty));
  ASSERT_TRUE(stripShown());
  mac.terminate(editor);
  EXPECT_FALSE(stripShown());
}

TEST_F(StripFault, ActionsThatReachNobodyChangeNothing) {
  FaultyAccessibility faulty(mac.accessibility());
  faulty.ignoreActions(true);
  faulty.ignoreWrites(true);
  open("Plan");
  const auto report = open("Report");
  const auto faulted = startOn(mac.platformWith(faulty));
  strip().clickTab("Plan");
  strip().clickTool(tool::zoom);
  strip().clickTool(tool::minimize);
  strip().clickTool(tool::closeWindow);
  EXPECT_EQ(strip().tabs(), (Labels{"Plan", "Report"}));
  expectStripOver(report);
}

TEST_F(StripFault, AWindowUnderTheNumberOfOneThatWasZoomedHasNoOldFrameToGoBackTo) {
  ReusedNumbers reused(mac.accessibility());
  auto old = open("Old");
  const auto faulted = startOn(mac.platformWith(reused));
  strip().clickTool(tool::zoom);
  const AxRect zoomed = old.frame();
  ASSERT_NE(zoomed, (AxRect{100, 200, 1200, 600}));
  old.close();
  const auto fresh = open("New", zoomed);
  ASSERT_EQ(strip().tabs(), Labels{"New"});
  strip().clickTool(tool::zoom);
  EXPECT_EQ(fresh.frame(), zoomed);
}

TEST_F(StripFault, AMenuDoesNotActOnAWindowOfAnotherSpaceThatHasTheSameNumber) {
  ReusedNumbers reused(mac.accessibility());
  const auto plan = open("Plan");
  const auto faulted = startOn(mac.platformWith(reused));
  std::optional<SimWindow> notes;
  chooseAfter("Plan",
              [&] {
                mac.showSpace(1);
                notes = open("Notes");
                mac.settle();
                faulted->tracker().refresh();
              },
              {"Close"});
  EXPECT_FALSE(plan.exists());
  EXPECT_TRUE(notes->exists());
}

}  // namespace
}  // namespace pellar
