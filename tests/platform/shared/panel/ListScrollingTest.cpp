#include <gtest/gtest.h>

#include "platform/shared/panel/ListScrolling.h"

namespace pellar {
namespace {

using Rows = ListScrolling::Rows;

// Rows of 10 in a height of 100.
ListScrolling listOf(std::size_t rows) {
  ListScrolling list(10);
  list.setHeight(100);
  list.setRowCount(rows);
  return list;
}

TEST(ListScrolling, AShortListDoesNotScroll) {
  auto list = listOf(10);
  EXPECT_EQ(list.visibleRows(), (Rows{0, 10}));
  EXPECT_FALSE(list.scrollBy(50));
  EXPECT_FALSE(list.scrollBy(-50));
  EXPECT_EQ(list.knob(), std::nullopt);
  list.dragKnob(30);
  EXPECT_EQ(list.offset(), 0);
}

TEST(ListScrolling, ALongListScrollsToItsEndsAndNoFurther) {
  auto list = listOf(30);
  EXPECT_TRUE(list.scrollBy(15));
  EXPECT_EQ(list.visibleRows(), (Rows{1, 12})) << "of the first and last, only a part";
  EXPECT_EQ(list.topOf(1), -5);
  EXPECT_TRUE(list.scrollBy(1e9));
  EXPECT_EQ(list.visibleRows(), (Rows{20, 30}));
  EXPECT_FALSE(list.scrollBy(1));
  EXPECT_TRUE(list.scrollBy(-1e9));
  EXPECT_EQ(list.offset(), 0);
}

TEST(ListScrolling, RevealingScrollsAsLittleAsPossible) {
  auto list = listOf(30);
  list.reveal(9);
  EXPECT_EQ(list.offset(), 0);
  list.reveal(10);
  EXPECT_EQ(list.offset(), 10);
  list.reveal(29);
  EXPECT_EQ(list.offset(), 200);
  list.reveal(20);
  EXPECT_EQ(list.offset(), 200);
  list.reveal(0);
  EXPECT_EQ(list.offset(), 0);
}

TEST(ListScrolling, ARowIsFoundWhereItIsSeen) {
  auto list = listOf(30);
  list.scrollBy(25);
  EXPECT_EQ(list.rowAt(0), 2U);
  EXPECT_EQ(list.rowAt(5), 3U);
  EXPECT_EQ(list.rowAt(99.9), 12U);
  EXPECT_EQ(list.rowAt(100), std::nullopt);
  EXPECT_EQ(list.rowAt(-0.1), std::nullopt);
  EXPECT_EQ(listOf(3).rowAt(30), std::nullopt) << "below the last row";
  EXPECT_EQ(listOf(0).rowAt(0), std::nullopt);
}

TEST(ListScrolling, OtherRowsBeginAtTheTop) {
  auto list = listOf(30);
  list.scrollBy(100);
  list.setRowCount(30);
  EXPECT_EQ(list.offset(), 0);
}

TEST(ListScrolling, AGrowingFrameStaysFull) {
  auto list = listOf(30);
  list.scrollBy(200);
  list.setHeight(250);
  EXPECT_EQ(list.visibleRows(), (Rows{5, 30}));
  list.setHeight(0);
  EXPECT_EQ(list.visibleRows(), (Rows{0, 0}));
  EXPECT_EQ(list.knob(), std::nullopt);
  EXPECT_EQ(list.rowsPerPage(), 1U);
}

TEST(ListScrolling, TheKnobShowsWhereOneIs) {
  auto list = listOf(20);
  EXPECT_EQ(list.knob(), (ListScrolling::Knob{0, 50}));
  list.scrollBy(50);
  EXPECT_EQ(list.knob(), (ListScrolling::Knob{25, 50}));
  list.scrollBy(50);
  EXPECT_EQ(list.knob(), (ListScrolling::Knob{50, 50}));
  EXPECT_EQ(listOf(100'000).knob()->height, 24) << "long enough to be gripped";
}

TEST(ListScrolling, DraggingTheKnobDownScrollsToTheEnd) {
  auto list = listOf(100'000);
  list.dragKnob(100 - 24);
  EXPECT_EQ(list.visibleRows(), (Rows{99'990, 100'000}));
  list.dragKnob(-1000);
  EXPECT_EQ(list.offset(), 0);
}

}  // namespace
}  // namespace pellar
