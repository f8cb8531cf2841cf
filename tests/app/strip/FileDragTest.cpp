// A file that the user drags out of another application, over the strip.

#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/StripStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class FileDrag : public StripStory {
 protected:
  FileDrag() { start(); }
  void dragOver(const std::string& label) { mac.fileDrag().moveTo(strip().tabPoint(label)); }
  void expectFront(const SimWindow& window) {
    EXPECT_EQ(mac.frontWindow(), window);
    expectStripOver(window);
  }

  SimWindow plan = open("Plan");
  SimWindow letter = open("Letter");
  SimWindow report = open("Report");
};

TEST_F(FileDrag, HalfASecondOverATabBringsItsWindowToTheFront) {
  dragOver("Plan");
  mac.advance(499ms);
  expectFront(report);
  mac.advance(1ms);
  expectFront(plan);
  EXPECT_EQ(strip().tabs(), (Labels{"Plan", "Letter", "Report"})) << "nothing closes and no tab moves";
}

TEST_F(FileDrag, AnotherTabOnTheWayStartsTheTimeAnew) {
  dragOver("Plan");
  mac.advance(400ms);
  dragOver("Letter");
  mac.advance(400ms);
  expectFront(report);
  mac.advance(100ms);
  expectFront(letter);
  EXPECT_EQ(plan.raises(), 0);
}

TEST_F(FileDrag, AMovementOnTheSameTabDoesNot) {
  dragOver("Plan");
  mac.advance(300ms);
  const ScreenPoint on = strip().tabPoint("Plan");
  mac.fileDrag().moveTo({on.x + 5, on.y});
  mac.advance(200ms);
  expectFront(plan);
}

TEST_F(FileDrag, OneThatGoesOnOrIsDroppedInTimeBringsNothing) {
  dragOver("Plan");
  mac.advance(400ms);
  mac.fileDrag().moveTo({5, 5});
  mac.advance(2s);
  expectFront(report);
  dragOver("Letter");
  mac.advance(400ms);
  mac.fileDrag().end();
  mac.advance(2s);
  expectFront(report);
}

TEST_F(FileDrag, ThatStaysBringsTheWindowOnce) {
  dragOver("Plan");
  mac.advance(500ms);
  expectFront(plan);
  editor.focus(letter);
  mac.settle();
  dragOver("Plan");
  mac.advance(5s);
  expectFront(letter);
  EXPECT_EQ(plan.raises(), 1);
  mac.fileDrag().moveTo({5, 5});
  dragOver("Plan");
  mac.advance(500ms);
  expectFront(plan);
}

TEST_F(FileDrag, ATabThatClosesUnderItBringsNothing) {
  dragOver("Plan");
  plan.close();
  mac.advance(1s);
  expectFront(report);
}

TEST_F(FileDrag, AStripThatHidesUnderItBringsNothing) {
  dragOver("Plan");
  for (auto* window : {&plan, &letter, &report}) window->minimise();
  mac.settle();
  ASSERT_FALSE(stripShown());
  mac.advance(1s);
  EXPECT_TRUE(plan.isMinimised());
}

}  // namespace
}  // namespace pellar
