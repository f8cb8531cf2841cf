#include <gtest/gtest.h>

#include <limits>

#include "app/tracking/WindowTracker.h"
#include "platform/sim/faults/ForwardingWorkspace.h"
#include "tests/app/tracking/TrackerFixture.h"

namespace pellar {
namespace {

TEST_F(TrackerTest, TheWindowsOfTheApplicationInFrontAreReported) {
  open("Plan");
  open("Report");
  start();
  ASSERT_TRUE(delegate->app);
  EXPECT_EQ(delegate->app->id, "org.example.editor");
  EXPECT_EQ(delegate->app->name, "Editor");
  EXPECT_EQ(delegate->app->office, std::nullopt);
  EXPECT_EQ(tabs(), (Titles{"Plan", "Report"}));
  EXPECT_EQ(frontTitle(), "Report");
  EXPECT_EQ(tracker->pid(), editor->description.pid);
}

TEST_F(TrackerTest, AnOfficeApplicationGoesByItsOwnName) {
  const auto word = launch("com.microsoft.Word", "Microsoft Word");
  bringToFront(word);
  start();
  EXPECT_EQ(delegate->app, TrackedApp::of(OfficeApp::word));
}

TEST_F(TrackerTest, AnApplicationWithoutANameGoesByItsIdentifier) {
  bringToFront(launch("org.example.nameless", std::nullopt));
  start();
  ASSERT_TRUE(delegate->app);
  EXPECT_EQ(delegate->app->name, "org.example.nameless");
}

TEST_F(TrackerTest, NothingIsReportedWhileNobodyIsInFront) {
  open("Plan");
  desktop.leaveNobodyInFront();
  start();
  EXPECT_GT(delegate->reports, 0);
  EXPECT_EQ(delegate->app, std::nullopt);
  EXPECT_TRUE(delegate->windows.empty());
  EXPECT_EQ(delegate->front, nullptr);
}

TEST_F(TrackerTest, ProcessesWithoutABundleAndAccessoriesAreNotTracked) {
  open("Plan");
  start();
  ASSERT_EQ(tabs(), Titles{"Plan"});
  bringToFront(launch(std::nullopt, "tool"));
  settle();
  EXPECT_EQ(delegate->app, std::nullopt);
  bringToFront(editor);
  settle();
  ASSERT_TRUE(delegate->app);
  bringToFront(launch("org.example.agent", "Agent", ActivationPolicy::accessory));
  settle();
  EXPECT_EQ(delegate->app, std::nullopt);
  EXPECT_TRUE(delegate->windows.empty());
  EXPECT_EQ(tracker->pid(), editor->description.pid);
}

TEST_F(TrackerTest, PellarItselfIsNotTracked) {
  open("Plan");
  start();
  desktop.activatePellar();
  settle();
  EXPECT_EQ(delegate->app, std::nullopt);
  EXPECT_EQ(delegate->front, nullptr);
}

// As when it was started from a terminal.
class DockIcon final : public ForwardingWorkspace {
 public:
  using ForwardingWorkspace::ForwardingWorkspace;
  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override {
    auto front = ForwardingWorkspace::frontmostApplication();
    if (front) front->policy = ActivationPolicy::regular;
    return front;
  }
};

TEST_F(TrackerTest, PellarItselfIsNotTrackedThoughItHasADockIcon) {
  DockIcon regular(workspace);
  tracker = WindowTracker::create(accessibility, regular, loop);
  tracker->delegate = delegate;
  desktop.activatePellar();
  start();
  EXPECT_EQ(delegate->app, std::nullopt);
}

TEST_F(TrackerTest, AnApplicationThatTheSettingsDoNotFollowIsNotTracked) {
  open("Plan");
  bool follow = false;
  tracker->isEnabled = [&](const TrackedApp& app) { return follow && app.id == "org.example.editor"; };
  start();
  EXPECT_EQ(delegate->app, std::nullopt);
  EXPECT_EQ(accessibility.liveObservers(), 0);
  follow = true;
  tracker->refresh();
  EXPECT_EQ(tabs(), Titles{"Plan"});
}

TEST_F(TrackerTest, DialogsAndNarrowWindowsGetNoTab) {
  open("Dialog", {0, 0, 400, 300}, "AXDialog");
  open("Tools", {0, 0, 199, 300});
  open("Just wide enough", {0, 0, 200, 300});
  const auto untold = open("Untold");
  untold->quirks.refusedAttributes = {"AXSubrole"};
  start();
  EXPECT_EQ(tabs(), Titles{"Just wide enough"});
}

TEST_F(TrackerTest, AWindowThatShrinksLosesItsTabAndIsNewWhenItGrowsAgain) {
  const auto plan = open("Plan");
  open("Report");
  start();
  const auto before = tab("Plan");
  desktop.setFrame(*plan, {0, 0, 150, 300});
  settle();
  EXPECT_EQ(tabs(), Titles{"Report"});
  desktop.setFrame(*plan, {0, 0, 300, 300});
  settle();
  EXPECT_EQ(tabs(), (Titles{"Report", "Plan"}));
  EXPECT_NE(tab("Plan"), before);
  EXPECT_EQ(tab("Plan")->id(), before->id());
}

TEST_F(TrackerTest, AWindowThatIsADialogForAWhileIsNewAfterwards) {
  const auto plan = open("Plan");
  open("Report");
  start();
  for (const auto* subrole : {"AXDialog", "AXStandardWindow"}) {
    plan->subrole = subrole;
    desktop.changedSilently();
    tracker->refresh();
  }
  EXPECT_EQ(tabs(), (Titles{"Report", "Plan"}));
}

TEST_F(TrackerTest, OfAWindowThatIsGoneNothingIsKept) {
  const auto plan = open("Plan");
  open("Report");
  start();
  const std::weak_ptr<OfficeWindow> record = tab("Plan");
  desktop.destroy(plan);
  settle();
  EXPECT_EQ(tabs(), Titles{"Report"});
  EXPECT_TRUE(record.expired());
}

TEST_F(TrackerTest, NewWindowsJoinAtTheEndAndRecordsStayTheSame) {
  editor->quirks.listsWindowsByCreation = false;
  open("A");
  const auto b = open("B");
  start();
  EXPECT_EQ(tabs(), (Titles{"B", "A"}));
  const auto record = tab("B");
  open("C");
  settle();
  EXPECT_EQ(tabs(), (Titles{"B", "A", "C"}));
  EXPECT_EQ(tab("B"), record);
  desktop.focus(b);
  desktop.destroy(b);
  settle();
  EXPECT_EQ(tabs(), (Titles{"A", "C"}));
}

TEST_F(TrackerTest, EveryKindOfChangeIsNoticed) {
  const auto plan = open("Plan");
  const auto report = open("Report");
  start();
  desktop.setTitle(*plan, "Plan 2");
  settle();
  EXPECT_EQ(tabs(), (Titles{"Plan 2", "Report"}));
  desktop.focus(plan);
  settle();
  EXPECT_EQ(frontTitle(), "Plan 2");
  desktop.setFrame(*plan, {5, 100, 640, 480});
  settle();
  EXPECT_EQ(tab("Plan 2")->frame.x, 5);
  desktop.setFrame(*plan, {5, 100, 700, 480});
  settle();
  EXPECT_EQ(tab("Plan 2")->frame.width, 700);
  desktop.setMinimised(plan, true);
  settle();
  EXPECT_TRUE(tab("Plan 2")->minimized);
  EXPECT_EQ(frontTitle(), "Report");
  desktop.setMinimised(plan, false);
  settle();
  EXPECT_FALSE(tab("Plan 2")->minimized);
  EXPECT_EQ(frontTitle(), "Plan 2");
  desktop.destroy(report);
  settle();
  EXPECT_EQ(tabs(), Titles{"Plan 2"});
  const int before = delegate->reports;
  desktop.setHidden(*launch("org.example.other", "Other"), true);
  settle();
  EXPECT_EQ(delegate->reports, before);  // never tracked, so not observed
  desktop.setHidden(*editor, true);
  settle();
  EXPECT_GT(delegate->reports, before);
}

TEST_F(TrackerTest, ABurstOfRequestsCostsOneRefresh) {
  open("Plan");
  start();
  const int before = delegate->reports;
  for (int i = 1; i <= 5; ++i) tracker->scheduleRefresh();
  EXPECT_EQ(delegate->reports, before);
  settle();
  EXPECT_EQ(delegate->reports, before + 1);
}

TEST_F(TrackerTest, ABurstOfNotificationsCostsOneRefresh) {
  const auto plan = open("Plan");
  start();
  for (const int burst : {5, 1000}) {
    const int before = delegate->reports;
    for (int i = 1; i <= burst; ++i) desktop.setTitle(*plan, "Plan " + std::to_string(i));
    EXPECT_EQ(delegate->reports, before);
    settle();
    EXPECT_EQ(tabs(), Titles{"Plan " + std::to_string(burst)});
    EXPECT_EQ(delegate->reports, before + 1);
  }
}

TEST_F(TrackerTest, ARefreshReportsAlsoWhenNothingChanged) {
  open("Plan");
  start();
  const int before = delegate->reports;
  tracker->refresh();
  tracker->refresh();
  EXPECT_EQ(delegate->reports, before + 2);
}

TEST_F(TrackerTest, AFocusedDialogLeavesTheFirstShownTabInFront) {
  const auto plan = open("Plan");
  const auto report = open("Report");
  open("Dialog", {0, 0, 400, 300}, "AXDialog");
  start();
  EXPECT_EQ(frontTitle(), "Plan");
  desktop.setMinimised(plan, true);
  settle();
  EXPECT_EQ(frontTitle(), "Report");
  desktop.setMinimised(report, true);
  settle();
  EXPECT_EQ(tabs(), (Titles{"Plan", "Report"}));
  EXPECT_EQ(frontTitle(), "(none)");
}

TEST_F(TrackerTest, AnApplicationThatNamesNoFocusedWindowHasItsFirstShownTabInFront) {
  editor->quirks.namesNoFocusedWindow = true;
  open("Plan");
  open("Report");
  start();
  EXPECT_EQ(frontTitle(), "Plan");
}

TEST_F(TrackerTest, SwitchingApplicationsForgetsTheOrderOfTabs) {
  open("A");
  open("B");
  start();
  tracker->move(tab("B")->id(), 0);
  ASSERT_EQ(tabs(), (Titles{"B", "A"}));
  const auto other = launch("org.example.other", "Other");
  desktop.open(*other, "Elsewhere", {0, 100, 400, 300}, "AXStandardWindow");
  bringToFront(other);
  settle();
  EXPECT_EQ(tabs(), Titles{"Elsewhere"});
  bringToFront(editor);
  settle();
  EXPECT_EQ(tabs(), (Titles{"A", "B"}));

  tracker->move(tab("B")->id(), 0);
  desktop.leaveNobodyInFront();
  settle();
  bringToFront(editor);
  settle();
  EXPECT_EQ(tabs(), (Titles{"A", "B"}));
}

TEST_F(TrackerTest, AWindowOfPellarsOwnInFrontForgetsTheOrderOfTabs) {
  open("A");
  open("B");
  start();
  tracker->move(tab("B")->id(), 0);
  desktop.activatePellar();
  settle();
  bringToFront(editor);
  settle();
  EXPECT_EQ(tabs(), (Titles{"A", "B"}));
}

TEST_F(TrackerTest, AnotherCopyOfTheApplicationHasAnOrderOfItsOwn) {
  open("A");
  open("B");
  start();
  tracker->move(tab("B")->id(), 0);
  const auto copy = launch("org.example.editor", "Editor");
  desktop.open(*copy, "Elsewhere", {0, 100, 400, 300}, "AXStandardWindow");
  bringToFront(copy);
  settle();
  EXPECT_EQ(tabs(), Titles{"Elsewhere"});
  bringToFront(editor);
  settle();
  EXPECT_EQ(tabs(), (Titles{"A", "B"}));
}

TEST_F(TrackerTest, AProcessThatGoesOnAsAnotherApplicationHasItsWindowsUnderTheNewName) {
  open("A");
  start();
  editor->description.bundleId = "org.example.successor";
  desktop.changedSilently();
  tracker->refresh();
  ASSERT_EQ(tabs(), Titles{"A"});
  EXPECT_EQ(tab("A")->app.id, "org.example.successor");
}

TEST_F(TrackerTest, AMovedTabStaysWhereTheUserPutIt) {
  open("A");
  open("B");
  open("C");
  start();
  tracker->move(tab("A")->id(), 1);
  EXPECT_EQ(tabs(), (Titles{"B", "A", "C"}));
  EXPECT_TRUE(log.has(R"(tabs reordered: ["B", "A", "C"])"));
  open("D");
  settle();
  EXPECT_EQ(tabs(), (Titles{"B", "A", "C", "D"}));
  tracker->move(tab("B")->id(), 99);
  EXPECT_EQ(tabs(), (Titles{"A", "C", "D", "B"}));
  tracker->move(tab("D")->id(), -7);
  EXPECT_EQ(tabs(), (Titles{"D", "A", "C", "B"}));
  tracker->move(tab("C")->id(), std::numeric_limits<int>::max());
  EXPECT_EQ(tabs(), (Titles{"D", "A", "B", "C"}));
}

TEST_F(TrackerTest, MovingATabThatIsGoneDoesNothing) {
  open("A");
  start();
  const int before = delegate->reports;
  tracker->move(12345, 0);
  EXPECT_EQ(delegate->reports, before);
  EXPECT_TRUE(log.messages().empty());
}

TEST_F(TrackerTest, ATitleCannotBreakTheLogLine) {
  open("two\nlines \"quoted\"");
  start();
  tracker->move(delegate->windows.front()->id(), 0);
  EXPECT_EQ(log.messages(), Titles{R"(tabs reordered: ["two\nlines \"quoted\""])"});
}

TEST_F(TrackerTest, AWindowListedTwiceGetsOneTab) {
  open("A")->quirks.listedTwice = true;
  open("B")->quirks.listedTwice = true;
  tracker->start();
  EXPECT_EQ(tabs(), (Titles{"A", "B"}));
  tracker->refresh();
  EXPECT_EQ(tabs(), (Titles{"A", "B"}));
}

TEST_F(TrackerTest, AnApplicationThatAnswersNothingIsTrackedWithoutWindows) {
  open("A");
  start();
  desktop.setHung(*editor, true);
  accessibility.forgetRoundTrips();
  tracker->refresh();
  EXPECT_TRUE(delegate->app);
  EXPECT_TRUE(delegate->windows.empty());
  EXPECT_EQ(delegate->front, nullptr);
  EXPECT_EQ(accessibility.roundTrips().total(), 1);  // each is a long wait
  desktop.setHung(*editor, false);
  tracker->refresh();
  EXPECT_EQ(tabs(), Titles{"A"});
  EXPECT_TRUE(log.messages().empty());
}

TEST_F(TrackerTest, AnApplicationWithoutWindowsIsAskedOnce) {
  start();
  accessibility.forgetRoundTrips();
  tracker->refresh();
  EXPECT_EQ(accessibility.roundTrips().total(), 1);
}

TEST_F(TrackerTest, ARefreshAsksTheApplicationTwiceAndEachWindowOnce) {
  for (int i = 0; i < 500; ++i) open("Window " + std::to_string(i));
  start();
  ASSERT_EQ(delegate->windows.size(), 500U);
  accessibility.forgetRoundTrips();
  tracker->refresh();
  EXPECT_EQ(accessibility.roundTrips().reads, 2);
  EXPECT_EQ(accessibility.roundTrips().batches, 500);
  EXPECT_EQ(accessibility.roundTrips().total(), 502);
}

TEST_F(TrackerTest, TitlesOfAnyBytesAreTakenAsTheyAre) {
  const std::vector<std::string> hostile{"", std::string(100'000, 'x'), "\u05e9\u05dc\u05d5\u05dd",
                                         "\xFF\xFE\xC3", std::string("a\0b\n\x1b[2J", 8)};
  for (const auto& title : hostile) open(title);
  start();
  EXPECT_EQ(tabs(), hostile);
  tracker->move(delegate->windows.back()->id(), 0);
  EXPECT_EQ(log.messages().size(), 1U);
}

TEST_F(TrackerTest, ATrackerThatIsGoneHearsNothing) {
  open("A");
  start();
  const int before = delegate->reports;
  tracker->scheduleRefresh();
  tracker.reset();
  open("B");
  desktop.activatePellar();
  desktop.terminate(*editor);
  settle();
  EXPECT_EQ(delegate->reports, before);
  EXPECT_EQ(accessibility.liveObservers(), 0);
}

TEST_F(TrackerTest, ADelegateThatIsGoneIsNotCalled) {
  open("A");
  start();
  delegate.reset();
  tracker->refresh();
  EXPECT_EQ(tracker->windows().size(), 1U);
}

}  // namespace
}  // namespace pellar
