#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include "platform/sim/faults/FaultyAccessibility.h"
#include "tests/app/tracking/TrackerFixture.h"
#include "tests/support/ReusedNumbers.h"

namespace pellar {
namespace {

class TrackerFaultTest : public TrackerTest {
 protected:
  TrackerFaultTest() {
    tracker = WindowTracker::create(faulty, workspace, loop);
    tracker->delegate = delegate;
  }
  // Lets something happen just before the n-th read from now, once.
  void interrupt(int read, std::function<void()> event) {
    interrupted = false;
    faulty.beforeRead(
        [this, left = read, event = std::move(event)](const Element&, std::string_view) mutable {
          if (interrupted || --left > 0) return;
          interrupted = true;
          event();
        });
  }

  FaultyAccessibility faulty{accessibility};
  bool interrupted = false;
};

TEST_F(TrackerFaultTest, AWindowMayVanishAtAnyPointOfARefresh) {
  start();
  for (int read = 1;; ++read) {
    while (!editor->byCreation.empty()) desktop.destroy(editor->byCreation.front());
    open("A");
    const auto victim = open("B");
    open("C");
    settle();
    ASSERT_EQ(tabs(), (Titles{"A", "B", "C"}));

    interrupt(read, [&] { desktop.destroy(victim); });
    tracker->refresh();
    for (const auto& window : delegate->windows) ASSERT_NE(window, nullptr);
    if (!interrupted) break;  // past the last read
    settle();
    EXPECT_EQ(tabs(), (Titles{"A", "C"})) << "read " << read;
    EXPECT_EQ(frontTitle(), "C") << "read " << read;
  }
  EXPECT_TRUE(log.messages().empty());
}

TEST_F(TrackerFaultTest, AnApplicationMayEndAtAnyPointOfARefresh) {
  for (int read = 1;; ++read) {
    const auto victim = launch("org.example.victim", "Victim");
    desktop.open(*victim, "A", {0, 100, 400, 300}, "AXStandardWindow");
    bringToFront(victim);
    settle();
    tracker->start();
    settle();
    ASSERT_EQ(tabs(), Titles{"A"});

    interrupt(read, [&] { desktop.terminate(*victim); });
    tracker->refresh();
    if (!interrupted) break;
    settle();
    EXPECT_EQ(tracker->app()->id, "org.example.editor");
    EXPECT_TRUE(tabs().empty());
  }
}

TEST_F(TrackerFaultTest, ARequestInTheMiddleOfARefreshIsAnsweredAfterwards) {
  open("A");
  start();
  for (int read = 1;; ++read) {
    const int before = delegate->reports;
    interrupt(read, [&] {
      tracker->refresh();
      EXPECT_EQ(delegate->reports, before);
    });
    tracker->refresh();
    EXPECT_EQ(delegate->reports, before + 1);
    if (!interrupted) break;
    settle();
    EXPECT_EQ(delegate->reports, before + 2);
  }
}

TEST_F(TrackerFaultTest, ManyRequestsInTheMiddleOfARefreshAreAnsweredOnceAndTheLoopRestsMeanwhile) {
  open("A");
  start();
  for (int read = 1;; ++read) {
    const int before = delegate->reports;
    interrupt(read, [&] {
      for (int i = 0; i < 5; ++i) tracker->refresh();
      tracker->scheduleRefresh();
      // As while another program takes its time over an answer.
      settle();
      const auto turns = loop.turns();
      loop.advance(std::chrono::seconds(5));
      EXPECT_EQ(loop.turns(), turns);
    });
    tracker->refresh();
    if (!interrupted) break;
    settle();
    EXPECT_EQ(delegate->reports, before + 2) << "read " << read;
  }
}

TEST_F(TrackerFaultTest, ATabMovedAtAnyPointOfARefreshStaysMoved) {
  open("A");
  open("B");
  start();
  for (int read = 1;; ++read) {
    tracker->move(tab("A")->id(), 0);
    ASSERT_EQ(tabs(), (Titles{"A", "B"}));
    const auto b = tab("B")->id();
    interrupt(read, [&] { tracker->move(b, 0); });
    tracker->refresh();
    if (!interrupted) break;
    EXPECT_EQ(tabs(), (Titles{"B", "A"})) << "read " << read;
  }
}

TEST_F(TrackerFaultTest, ATabOfTheApplicationThatTheUserLeavesMayBeMovedMeanwhile) {
  open("A");
  open("B");
  start();
  const auto other = launch("org.example.other", "Other");
  desktop.open(*other, "Elsewhere", {0, 100, 400, 300}, "AXStandardWindow");
  for (int read = 1;; ++read) {
    bringToFront(editor);
    settle();
    ASSERT_EQ(tabs(), (Titles{"A", "B"})) << "read " << read;
    const auto a = tab("A")->id();
    interrupt(read, [&] { tracker->move(a, 1); });
    bringToFront(other);
    settle();
    EXPECT_EQ(tabs(), Titles{"Elsewhere"}) << "read " << read;
    if (!interrupted) break;
  }
}

TEST_F(TrackerFaultTest, AnApplicationThatFreezesWhenAskedForItsAbsentWindowsIsWaitedForOnceAndLosesNone) {
  const auto plan = open("Plan");
  open("Notes");
  open("List");
  start();
  tracker->move(tab("List")->id(), 0);
  ASSERT_EQ(tabs(), (Titles{"List", "Plan", "Notes"}));
  const auto shownHere = [&](const Element& asked) {
    for (const auto& window : editor->byCreation)
      if (SimElement::ofWindow(window) == asked) return true;
    return false;
  };
  faulty.beforeRead([&](const Element& element, std::string_view attribute) {
    if (attribute == "AXSubrole" && shownHere(element)) desktop.setHung(*editor, true);
  });
  const auto before = loop.uptime();
  desktop.showSpace(1);
  settle();
  EXPECT_EQ(loop.uptime() - before, SimAccessibility::messagingTimeout);
  faulty.beforeRead(nullptr);
  desktop.setHung(*editor, false);
  desktop.showSpace(0);
  settle();
  EXPECT_EQ(tabs(), (Titles{"List", "Plan", "Notes"}));
}

TEST_F(TrackerFaultTest, TheReceiverMayAskForTheNextPictureFromWithinOne) {
  open("A");
  open("B");
  start();
  int nested = 0;
  delegate->onReport = [&] {
    if (++nested < 3) tracker->refresh();
    if (nested == 3 && delegate->windows.size() == 2) tracker->move(delegate->windows[1]->id(), 0);
  };
  tracker->refresh();
  delegate->onReport = nullptr;
  EXPECT_EQ(nested, 4);
  EXPECT_EQ(tabs(), (Titles{"B", "A"}));
}

TEST_F(TrackerFaultTest, TheReceiverMayEndTheTracker) {
  open("A");
  start();
  delegate->onReport = [&] { tracker.reset(); };
  auto* raw = tracker.get();
  raw->refresh();
  EXPECT_EQ(tracker, nullptr);
  settle();
}

TEST_F(TrackerFaultTest, AWindowUnderTheNumberOfAnOldOneIsReadAnew) {
  ReusedNumbers reused(accessibility);
  tracker = WindowTracker::create(reused, workspace, loop);
  tracker->delegate = delegate;
  const auto old = open("Old");
  start();
  ASSERT_EQ(tabs(), Titles{"Old"});
  desktop.destroy(old);
  open("New");
  settle();
  EXPECT_EQ(tabs(), Titles{"New"});
  EXPECT_EQ(frontTitle(), "New");
}

}  // namespace
}  // namespace pellar
