#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "tests/app/tracking/TrackerFixture.h"
#include "tests/support/Named.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// Applications as a real desktop has them: deaf while they launch, silent while they are busy, and with
// windows on other spaces.
class UnkindApplication : public TrackerTest {
 protected:
  [[nodiscard]] std::string refusal() const {
    return "AXObserverCreate failed for pid " + std::to_string(editor->description.pid);
  }
  void ready() { editor->quirks.refuses = SimRefusal::nothing; }
  // Whether a change of a window is heard of.
  [[nodiscard]] bool isHeard() {
    open("Heard");
    settle();
    return tab("Heard") != nullptr;
  }
};

using Refusal = test::Named<SimRefusal>;

class ColdStart : public UnkindApplication, public testing::WithParamInterface<Refusal> {};

INSTANTIATE_TEST_SUITE_P(EachRefusal, ColdStart,
                         testing::Values(Refusal{"OfObservers", SimRefusal::observers},
                                         Refusal{"OfRegistrations", SimRefusal::registrations},
                                         Refusal{"OfEverything", SimRefusal::everything}),
                         test::byName<SimRefusal>);

TEST_P(ColdStart, AnApplicationThatBecomesReadyIsFollowedWithoutTheUserLeavingIt) {
  for (const auto ready : {400ms, 1900ms, 7900ms}) {
    editor = launch("org.example.cold" + std::to_string(ready.count()), "Cold");
    bringToFront(editor);
    editor->quirks.refuses = GetParam().value;
    const auto timer = loop.after(ready, [this] { this->ready(); });
    if (tracker->app())
      settle();
    else
      start();
    loop.advance(100ms);
    open("Document");
    settle();
    loop.advance(8s);
    EXPECT_EQ(tabs(), Titles{"Document"}) << ready.count();
    EXPECT_TRUE(isHeard()) << ready.count();
  }
}

TEST_P(ColdStart, ARefusalIsTriedThreeTimesMoreAndThenNoMore) {
  editor->quirks.refuses = GetParam().value;
  start();
  const auto tries = [this] { return log.count(refusal()); };
  const auto first = tries();
  loop.advance(499ms);
  EXPECT_EQ(tries(), first);
  loop.advance(1ms);
  EXPECT_EQ(tries(), first + 1);
  loop.advance(1500ms);
  EXPECT_EQ(tries(), first + 2);
  loop.advance(6s);
  EXPECT_EQ(tries(), first + 3);
  loop.advance(1h);
  EXPECT_EQ(tries(), first + 3);
}

TEST_F(UnkindApplication, ItsLaunchNotificationIsOneMoreTry) {
  editor->quirks.refuses = SimRefusal::registrations;
  start();
  loop.advance(1h);
  ready();
  EXPECT_FALSE(isHeard());
  desktop.finishLaunching(*editor);
  settle();
  EXPECT_TRUE(tab("Heard") != nullptr);
  EXPECT_EQ(accessibility.liveObservers(), 1);
}

TEST_F(UnkindApplication, TheLaunchNotificationOfOneThatListensCostsNothing) {
  start();
  const int before = delegate->reports;
  desktop.finishLaunching(*editor);
  settle();
  EXPECT_EQ(delegate->reports, before);
}

TEST_F(UnkindApplication, ALaunchInTheBackgroundIsNotTried) {
  editor->quirks.refuses = SimRefusal::observers;
  start();
  const auto tries = log.count(refusal());
  const auto other = launch("org.example.other", "Other");
  desktop.finishLaunching(*other);
  settle();
  EXPECT_EQ(log.count(refusal()), tries);
}

TEST_F(UnkindApplication, TheTriesEndWithAnotherApplicationInFront) {
  editor->quirks.refuses = SimRefusal::observers;
  start();
  bringToFront(launch("org.example.other", "Other"));
  settle();
  const auto tries = log.count(refusal());
  loop.advance(1h);
  EXPECT_EQ(log.count(refusal()), tries);
  bringToFront(editor);
  loop.advance(1h);
  EXPECT_EQ(log.count(refusal()), tries + 4) << "coming back begins anew";
}

TEST_F(UnkindApplication, TheTriesEndWithAWindowOfPellarsOwnInFront) {
  for (const bool isBusy : {false, true}) {
    editor->quirks.refuses = isBusy ? SimRefusal::nothing : SimRefusal::observers;
    desktop.setHung(*editor, false);
    bringToFront(editor);
    tracker->app() ? settle() : start();
    desktop.setHung(*editor, isBusy);
    tracker->refresh();
    desktop.activatePellar();
    settle();
    const int before = delegate->reports;
    loop.advance(1h);
    EXPECT_EQ(delegate->reports, before) << isBusy;
  }
}

TEST_F(UnkindApplication, ATrackerThatIsGoneIsNotTriedAgain) {
  editor->quirks.refuses = SimRefusal::observers;
  start();
  const auto tries = log.count(refusal());
  tracker.reset();
  loop.advance(1h);
  EXPECT_EQ(log.count(refusal()), tries);
}

TEST_F(UnkindApplication, ABusyApplicationIsSeenAgainSoonAfterItAnswers) {
  open("Plan");
  open("Notes");
  start();
  tracker->move(tab("Notes")->id(), 0);
  for (const auto busyFor : {100ms, 4000ms, 12000ms}) {
    desktop.setHung(*editor, true);
    tracker->refresh();
    EXPECT_TRUE(tabs().empty());
    const auto timer = loop.after(busyFor, [this] { desktop.setHung(*editor, false); });
    loop.advance(20s);
    EXPECT_EQ(tabs(), (Titles{"Notes", "Plan"})) << "in the user's order, after " << busyFor.count();
  }
}

TEST_F(UnkindApplication, ABusyApplicationIsAskedThreeTimesMoreAndThenLeftAlone) {
  open("Plan");
  start();
  desktop.setHung(*editor, true);
  tracker->refresh();
  const auto reads = [this] { return accessibility.roundTrips().reads; };
  const auto first = reads();
  loop.advance(1h);
  EXPECT_EQ(reads(), first + 3);
}

TEST_F(UnkindApplication, OneThatRefusesToAnswerIsAskedAgainAfterOneFiveAndTwentySeconds) {
  open("Plan");
  start();
  editor->quirks.refuses = SimRefusal::everything;
  tracker->refresh();
  const auto refused = loop.uptime();
  auto reads = accessibility.roundTrips().reads;
  for (const auto mark : {1s, 5s, 20s}) {
    loop.advance(refused + mark - 1ms - loop.uptime());
    EXPECT_EQ(accessibility.roundTrips().reads, reads) << mark.count();
    loop.advance(1ms);
    EXPECT_EQ(accessibility.roundTrips().reads, ++reads) << mark.count();
  }
}

TEST_F(UnkindApplication, OneThatAnswersAgainIsLeftAlone) {
  open("Plan");
  start();
  desktop.setHung(*editor, true);
  tracker->refresh();
  desktop.setHung(*editor, false);
  tracker->refresh();
  const int before = delegate->reports;
  loop.advance(1h);
  EXPECT_EQ(delegate->reports, before);
}

TEST_F(UnkindApplication, WhatAnswersInTheMiddleOfAPictureIsReadAgain) {
  open("Plan");
  open("Notes");
  start();
  editor->quirks.answerTime = 10ms;
  const auto timer = loop.after(5ms, [this] { desktop.setHung(*editor, true); });
  tracker->refresh();
  desktop.setHung(*editor, false);
  loop.advance(20s);
  EXPECT_EQ(tabs(), (Titles{"Plan", "Notes"}));
}

TEST_F(UnkindApplication, AGlanceAtAnotherSpaceKeepsTheUsersOrder) {
  open("Plan");
  open("Notes");
  const auto list = open("List");
  start();
  tracker->move(tab("List")->id(), 0);
  ASSERT_EQ(tabs(), (Titles{"List", "Plan", "Notes"}));
  const auto record = tab("Plan");

  desktop.showSpace(1);
  settle();
  EXPECT_TRUE(tabs().empty());
  EXPECT_EQ(frontTitle(), "(none)");
  open("Elsewhere");
  settle();
  EXPECT_EQ(tabs(), Titles{"Elsewhere"});

  desktop.showSpace(0);
  settle();
  EXPECT_EQ(tabs(), (Titles{"List", "Plan", "Notes"}));
  EXPECT_EQ(tab("Plan"), record) << "and what is known of it";
  desktop.showSpace(1);
  settle();
  EXPECT_EQ(tabs(), Titles{"Elsewhere"});
}

TEST_F(UnkindApplication, ATabMovedOnOneSpaceStaysAmongItsNeighbours) {
  open("A");
  open("B");
  open("C");
  const auto x = open("X");
  start();
  desktop.setSpace(*x, 1);
  tracker->refresh();
  ASSERT_EQ(tabs(), (Titles{"A", "B", "C"}));
  tracker->move(tab("C")->id(), 0);
  tracker->move(tab("A")->id(), 9);
  EXPECT_EQ(tabs(), (Titles{"C", "B", "A"}));
  desktop.setSpace(*x, 0);
  tracker->refresh();
  Titles others = tabs();
  std::erase(others, "X");
  EXPECT_EQ(others, (Titles{"C", "B", "A"}));
}

TEST_F(UnkindApplication, AWindowThatGoesWhileAnotherSpaceIsShownHasNoTabAfterwards) {
  const auto plan = open("Plan");
  open("Notes");
  start();
  desktop.showSpace(1);
  settle();
  desktop.destroy(plan);
  desktop.showSpace(0);
  settle();
  EXPECT_EQ(tabs(), Titles{"Notes"});
}

TEST_F(UnkindApplication, AWindowThatBecameTooNarrowWhileAwayHasLostItsPlace) {
  const auto plan = open("Plan");
  open("Notes");
  start();
  desktop.setSpace(*plan, 1);
  tracker->refresh();
  ASSERT_EQ(tabs(), Titles{"Notes"});
  desktop.setFrame(*plan, {100, 100, 150, 480});
  desktop.setSpace(*plan, 0);
  tracker->refresh();
  ASSERT_EQ(tabs(), Titles{"Notes"});
  desktop.setFrame(*plan, {100, 100, 300, 480});
  tracker->refresh();
  EXPECT_EQ(tabs(), (Titles{"Notes", "Plan"}));
}

TEST_F(UnkindApplication, NativeTabsComeAndGoWithTheirGroup) {
  const auto one = open("One");
  const auto two = open("Two");
  start();
  desktop.joinAsTabs({one, two});
  settle();
  EXPECT_EQ(tabs(), Titles{"Two"});
  desktop.selectNativeTab(one);
  settle();
  EXPECT_EQ(tabs(), Titles{"One"});
  EXPECT_EQ(frontTitle(), "One");
}

TEST_F(UnkindApplication, AFirstPictureCostsOneRoundTripAWindowAndTwoMore) {
  for (int i = 0; i < 10; ++i) open("Window " + std::to_string(i));
  start();
  const auto other = launch("org.example.other", "Other");
  desktop.open(*other, "Elsewhere", {0, 100, 400, 300}, "AXStandardWindow");
  bringToFront(other);
  settle();
  const auto cost = [this] {
    const auto& trips = accessibility.roundTrips();
    return trips.reads + trips.batches;
  };
  const int before = cost();
  bringToFront(editor);
  settle();
  EXPECT_EQ(tabs().size(), 10U);
  EXPECT_EQ(cost() - before, 10 + 2);
}

}  // namespace
}  // namespace pellar
