#include <gtest/gtest.h>

#include <limits>

#include "platform/sim/faults/FaultyAccessibility.h"
#include "platform/sim/faults/ForwardingAccessibility.h"
#include "tests/app/tracking/TrackerFixture.h"

namespace pellar {
namespace {

class SetFrameTest : public TrackerTest {
 protected:
  // One window, followed and quiet.
  SimWindowPointer followed() {
    auto window = open("Plan");
    start();
    accessibility.forgetRoundTrips();
    return window;
  }
  // Three writes an attempt.
  [[nodiscard]] int attempts() const { return accessibility.roundTrips().writes / 3; }
  void place(const AxRect& rect) { tracker->setFrame(*tab("Plan"), rect); }

  const AxRect target{10, 60, 500, 300};
};

TEST_F(SetFrameTest, AWillingWindowIsPlacedAtOnce) {
  const auto window = followed();
  place(target);
  EXPECT_EQ(window->frame, target);
  EXPECT_EQ(tab("Plan")->frame, target);
  EXPECT_EQ(attempts(), 1);
}

TEST_F(SetFrameTest, PlacingReportsNothingByItself) {
  // Silent about what becomes of its windows, so that only the tracker itself could have brought a report.
  editor->quirks.refusedNotifications = {"AXWindowMoved", "AXWindowResized"};
  const auto window = followed();
  const int before = delegate->reports;
  place(target);
  settle();
  EXPECT_EQ(window->frame, target);
  EXPECT_EQ(delegate->reports, before);
}

TEST_F(SetFrameTest, AWindowThatRefusesIsLeftAfterTwoAttempts) {
  const auto window = followed();
  window->quirks.refusesMoves = true;
  window->quirks.refusesSizes = true;
  place(target);
  EXPECT_EQ(attempts(), 2);
  EXPECT_EQ(tab("Plan")->frame, (AxRect{100, 100, 640, 480}));
}

TEST_F(SetFrameTest, AWindowThatClampsItsSizeKeepsWhatItTook) {
  const auto window = followed();
  window->quirks.minimumSize = {600, 400};
  place(target);
  EXPECT_EQ(attempts(), 2);
  EXPECT_EQ(tab("Plan")->frame, (AxRect{10, 60, 600, 400}));
}

TEST_F(SetFrameTest, AWindowThatIsWrongInOneDimensionAloneIsAskedAgain) {
  const auto window = followed();
  for (const Size least : {Size{600, 0}, Size{0, 400}}) {
    accessibility.forgetRoundTrips();
    window->quirks.minimumSize = least;
    place(target);
    EXPECT_EQ(attempts(), 2) << least.width << 'x' << least.height;
  }
}

TEST_F(SetFrameTest, ASizeInStepsOfLessThanTwoPointsIsCloseEnough) {
  const auto window = followed();
  window->quirks.sizeIncrement = {1.5, 1.5};
  place(target);
  EXPECT_EQ(attempts(), 1);
  EXPECT_EQ(tab("Plan")->frame, window->frame);
}

TEST_F(SetFrameTest, AWindowThatCannotBeReadBackIsTriedOnceAndTakenAtItsWord) {
  const auto window = followed();
  window->quirks.refusedAttributes = {"AXPosition"};
  place(target);
  EXPECT_EQ(attempts(), 1);
  EXPECT_EQ(tab("Plan")->frame, target);
}

TEST_F(SetFrameTest, AWindowThatReadsBackNoFiniteNumberIsTriedOnceAndTakenAtItsWord) {
  followed();
  FaultyAccessibility faulty(accessibility);
  const auto other = WindowTracker::create(faulty, workspace, loop);
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double infinity = std::numeric_limits<double>::infinity();
  for (const Size size : {Size{nan, 300}, Size{500, infinity}}) {
    accessibility.forgetRoundTrips();
    faulty.answer("AXSize", size);
    other->setFrame(*tab("Plan"), target);
    EXPECT_EQ(attempts(), 1);
    EXPECT_EQ(tab("Plan")->frame, target);
  }
}

TEST_F(SetFrameTest, AWindowThatIsGoneIsNoTrouble) {
  const auto window = followed();
  const auto record = tab("Plan");
  desktop.destroy(window);
  tracker->setFrame(*record, target);
  EXPECT_EQ(record->frame, target);
}

// A window that creeps towards where it is sent, a tenth of the way with each attempt.
class CreepingWindow final : public ForwardingAccessibility {
 public:
  using ForwardingAccessibility::ForwardingAccessibility;

  [[nodiscard]] std::optional<AttributeValue> attribute(const Element& element,
                                                        std::string_view name) override {
    if (name == "AXPosition") return AxPoint{x, y};
    return ForwardingAccessibility::attribute(element, name);
  }
  void set(const Element& element, std::string_view name, const AttributeValue& value) override {
    ForwardingAccessibility::set(element, name, value);
    if (name != "AXSize") return;
    ++attempts;
    x += step;
    y += stepDown;
  }

  double x = 1000;
  double y = 60;
  double step = -10;
  double stepDown = 0;
  int attempts = 0;
};

TEST_F(SetFrameTest, AWindowThatComesCloserIsAskedAtMostEightTimes) {
  followed();
  CreepingWindow creeping(accessibility);
  const auto patient = WindowTracker::create(creeping, workspace, loop);
  patient->setFrame(*tab("Plan"), target);
  EXPECT_EQ(creeping.attempts, 8);
  EXPECT_EQ(tab("Plan")->frame.x, 920);
}

TEST_F(SetFrameTest, AWindowThatComesCloserFromBelowIsAskedAgainToo) {
  followed();
  CreepingWindow creeping(accessibility);
  creeping.x = target.x;
  creeping.y = 360;
  creeping.step = 0;
  creeping.stepDown = -100;
  const auto patient = WindowTracker::create(creeping, workspace, loop);
  patient->setFrame(*tab("Plan"), target);
  EXPECT_EQ(creeping.attempts, 3);
  EXPECT_EQ(tab("Plan")->frame, target);
}

TEST_F(SetFrameTest, AWindowThatArrivesInTheEndIsNotAskedOn) {
  followed();
  CreepingWindow creeping(accessibility);
  creeping.step = -300;
  const auto patient = WindowTracker::create(creeping, workspace, loop);
  patient->setFrame(*tab("Plan"), {100, 60, 500, 300});
  EXPECT_EQ(creeping.attempts, 3);
  EXPECT_EQ(tab("Plan")->frame, (AxRect{100, 60, 500, 300}));
}

TEST_F(SetFrameTest, AWindowTwoPointsOffIsAskedAgain) {
  followed();
  CreepingWindow creeping(accessibility);
  creeping.x = 12;
  creeping.step = 0;
  const auto patient = WindowTracker::create(creeping, workspace, loop);
  patient->setFrame(*tab("Plan"), target);
  EXPECT_EQ(creeping.attempts, 2);
  creeping.x = 11.9;
  creeping.attempts = 0;
  patient->setFrame(*tab("Plan"), target);
  EXPECT_EQ(creeping.attempts, 1);
}

}  // namespace
}  // namespace pellar
