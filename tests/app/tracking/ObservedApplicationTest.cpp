// What is registered with an application and its windows, and who hears of a window that goes.

#include <gtest/gtest.h>

#include <string>

#include "app/tracking/ObservedApplication.h"
#include "platform/sim/faults/ForwardingAccessibility.h"
#include "tests/app/tracking/TrackerFixture.h"

namespace pellar {
namespace {

using ObservedApplicationTest = TrackerTest;

TEST_F(ObservedApplicationTest, AnApplicationThatIsStillLaunchingIsObservedLater) {
  editor->quirks.refuses = SimRefusal::observers;
  open("A");
  start();
  const std::string line = "AXObserverCreate failed for pid " + std::to_string(editor->description.pid);
  const auto failures = log.count(line);
  EXPECT_GT(failures, 0);
  tracker->refresh();
  EXPECT_EQ(log.count(line), failures + 1);
  editor->quirks.refuses = SimRefusal::nothing;
  tracker->refresh();
  EXPECT_EQ(log.count(line), failures + 1);
  open("B");
  settle();
  EXPECT_EQ(tabs(), (Titles{"A", "B"}));
}

TEST_F(ObservedApplicationTest, ARefusedNotificationIsNotTriedAgainAndTheOthersArrive) {
  editor->quirks.refusedNotifications = {"AXTitleChanged"};
  const auto plan = open("A");
  start();
  EXPECT_EQ(accessibility.roundTrips().registrations, 10 + 3);
  desktop.setTitle(*plan, "B");
  settle();
  EXPECT_EQ(tabs(), Titles{"A"});
  desktop.setFrame(*plan, {1, 100, 640, 480});
  settle();
  EXPECT_EQ(tabs(), Titles{"B"});
  EXPECT_EQ(accessibility.roundTrips().registrations, 10 + 3);
  EXPECT_EQ(accessibility.liveObservers(), 1);
}

TEST_F(ObservedApplicationTest, AnObserverLastsUntilItsApplicationEnds) {
  open("A");
  start();
  const auto other = launch("org.example.other", "Other");
  bringToFront(other);
  settle();
  EXPECT_EQ(accessibility.liveObservers(), 2);
  const int before = delegate->reports;
  open("B");  // in the background
  settle();
  EXPECT_GT(delegate->reports, before);
  EXPECT_EQ(delegate->app->id, "org.example.other");
  desktop.terminate(*editor);
  settle();
  EXPECT_EQ(accessibility.liveObservers(), 1);
  desktop.terminate(*other);
  settle();
  EXPECT_EQ(accessibility.liveObservers(), 0);
  EXPECT_EQ(delegate->app, std::nullopt);
}

TEST_F(ObservedApplicationTest, ADeafApplicationIsNotAskedForEachNotificationInTurn) {
  editor->quirks.refuses = SimRefusal::registrations;
  start();
  accessibility.forgetRoundTrips();
  tracker->refresh();
  EXPECT_EQ(accessibility.roundTrips().registrations, 1);
}

// Its application ends just when it is made.
class ObserverOfNothing final : public ElementObserver {
 public:
  explicit ObserverOfNothing(int& asked) : asked_(asked) {}
  Registration add(const Element&, std::string_view) override {
    ++asked_;
    return Registration::gone;
  }
  void remove(const Element&, std::string_view) override {}

 private:
  int& asked_;
};

class EndingApplication final : public ForwardingAccessibility {
 public:
  using ForwardingAccessibility::ForwardingAccessibility;
  [[nodiscard]] std::unique_ptr<ElementObserver> observe(ProcessId, std::function<void()>) override {
    return std::make_unique<ObserverOfNothing>(asked);
  }
  int asked = 0;
};

TEST_F(ObservedApplicationTest, AnApplicationThatEndsMeanwhileIsNotObserved) {
  EndingApplication ending(accessibility);
  const auto pid = editor->description.pid;
  EXPECT_EQ(ObservedApplication::observe(ending, pid, ending.applicationElement(pid), [] {}), nullptr);
  EXPECT_EQ(ending.asked, 1);
}

TEST_F(ObservedApplicationTest, AnApplicationThatStopsListeningIsAskedOnceAPictureForItsNewWindows) {
  editor->quirks.listsWindowsByCreation = false;  // so that the new ones come first
  open("Plan");
  start();
  editor->quirks.refuses = SimRefusal::registrations;
  const auto notes = open("Notes");
  const auto list = open("List");
  settle();
  accessibility.forgetRoundTrips();
  tracker->refresh();
  EXPECT_EQ(accessibility.roundTrips().registrations, 1);
  editor->quirks.refuses = SimRefusal::nothing;
  accessibility.forgetRoundTrips();
  tracker->refresh();
  EXPECT_EQ(accessibility.roundTrips().registrations, 2 * 3) << "those of the old one were made long ago";
  desktop.destroy(notes);
  settle();
  EXPECT_EQ(tabs(), (Titles{"Plan", "List"}));
}

TEST_F(ObservedApplicationTest, RegistrationsOnWindowsAreMadeOnceAndTakenBackWithTheirWindows) {
  const auto plan = open("Plan");
  open("Notes");
  start();
  EXPECT_EQ(accessibility.roundTrips().registrations, 10 + 2 * 3);
  bringToFront(launch("org.example.other", "Other"));
  settle();
  bringToFront(editor);
  settle();
  EXPECT_EQ(accessibility.roundTrips().registrations, 10 + 2 * 3 + 10) << "those of the other application";
  EXPECT_EQ(accessibility.liveRegistrations(), 10 + 2 * 3 + 10);
  desktop.destroy(plan);
  settle();
  EXPECT_EQ(accessibility.liveRegistrations(), 10 + 1 * 3 + 10);
  accessibility.forgetRoundTrips();
  open("List");
  settle();
  EXPECT_EQ(accessibility.roundTrips().registrations, 3);
}

TEST_F(ObservedApplicationTest, ABackgroundWindowThatGoesLosesItsTab) {
  const auto plan = open("Plan");
  open("Notes");
  start();
  desktop.destroy(plan);
  settle();
  EXPECT_EQ(tabs(), Titles{"Notes"});
}

TEST_F(ObservedApplicationTest, AClosedWindowLosesItsTabThoughOneIsNamedBeforeItThatIsGone) {
  const auto gone = open("Gone");
  const auto report = open("Report");
  const auto plan = open("Plan");
  desktop.destroy(gone, /*stillListed=*/true);
  start();
  ASSERT_EQ(tabs(), (Titles{"Report", "Plan"}));
  // Behind the other, so that nothing but its own end is told.
  desktop.destroy(report);
  settle();
  EXPECT_EQ(tabs(), Titles{"Plan"});
}

TEST_F(ObservedApplicationTest, AWindowOpenedLaterIsListenedToAsWell) {
  open("Plan");
  start();
  const auto notes = open("Notes");
  settle();
  open("List");
  settle();
  desktop.setMinimised(notes, true);
  settle();
  EXPECT_TRUE(tab("Notes")->minimized);
  desktop.setMinimised(notes, false);
  settle();
  EXPECT_FALSE(tab("Notes")->minimized);
}

TEST_F(ObservedApplicationTest, AWindowWhoseEndIsToldToNobodyGoesWithTheNextPicture) {
  editor->quirks.untoldNotifications = {"AXUIElementDestroyed"};
  const auto plan = open("Plan");
  open("Notes");
  start();
  desktop.destroy(plan);
  settle();
  EXPECT_EQ(tabs(), (Titles{"Plan", "Notes"}));
  tracker->refresh();
  EXPECT_EQ(tabs(), Titles{"Notes"});
}

}  // namespace
}  // namespace pellar
