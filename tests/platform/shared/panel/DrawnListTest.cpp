#include <gtest/gtest.h>

#include <set>

#include "platform/VirtualKey.h"
#include "platform/shared/panel/DrawnList.h"
#include "platform/sim/drawing/RecordingCanvas.h"

namespace pellar {
namespace {

constexpr ListStyle style{.rowHeight = 20,
                          .title = {.inset = 4, .top = 1, .height = 10, .font = {9}, .color = Color::white()},
                          .subtitle = {.inset = 6,
                                       .top = 11,
                                       .height = 8,
                                       .font = {7},
                                       .color = Color::white(0.5),
                                       .truncation = ListLabel::Truncation::middle}};
constexpr ViewRect frame{30, 40, 200, 100};

class DrawnListTest : public testing::Test {
 protected:
  void show(std::size_t rows) {
    list.setFrame(frame);
    list.reload(rows, [this](std::size_t row) {
      asked.insert(row);
      return ListRow{"title " + std::to_string(row), "subtitle " + std::to_string(row)};
    });
  }
  std::vector<DrawnItem> drawn(bool focused = true) {
    RecordingCanvas canvas({0, 0, 400, 300});
    list.draw(canvas, focused);
    return canvas.items();
  }
  static ViewPoint inRow(int row) { return {frame.minX() + 50, frame.minY() + 20 * row + 10}; }

  DrawnList list{style};
  std::set<std::size_t> asked;
};

TEST_F(DrawnListTest, RowsAreAskedForOnlyWhenTheyAreDrawn) {
  show(100'000);
  EXPECT_TRUE(asked.empty());
  drawn();
  EXPECT_EQ(asked, (std::set<std::size_t>{0, 1, 2, 3, 4}));
  list.selectRow(99'999);
  asked.clear();
  drawn();
  EXPECT_EQ(asked, (std::set<std::size_t>{99'995, 99'996, 99'997, 99'998, 99'999}));
}

TEST_F(DrawnListTest, LabelsStandAsTheStyleSays) {
  show(2);
  const auto items = drawn();
  ASSERT_EQ(items.size(), 4U);
  EXPECT_EQ(items[2].text, "title 1");
  EXPECT_EQ(items[2].kind, DrawnItem::Kind::truncatedText);
  EXPECT_EQ(items[2].rect, (ViewRect{34, 61, 192, 10}));
  EXPECT_EQ(items[3].text, "subtitle 1");
  EXPECT_EQ(items[3].kind, DrawnItem::Kind::middleTruncatedText);
  EXPECT_EQ(items[3].rect, (ViewRect{36, 71, 188, 8}));
}

TEST_F(DrawnListTest, TheHighlightIsStrongerWhileTheListHasTheKeys) {
  show(2);
  list.selectRow(1);
  EXPECT_EQ(drawn(true)[2].rect, (ViewRect{30, 60, 200, 20}));
  EXPECT_EQ(drawn(true)[2].color, Color::of(SystemColor::blue));
  EXPECT_NE(drawn(false)[2].color, Color::of(SystemColor::blue));
}

TEST_F(DrawnListTest, AScrollerIsDrawnOnlyWhenThereIsMoreToSee) {
  show(5);
  EXPECT_EQ(drawn().size(), 10U);
  show(6);
  const auto items = drawn();
  EXPECT_EQ(items.back().kind, DrawnItem::Kind::roundedRect);
  EXPECT_GT(items.back().rect.minX(), frame.maxX() - 12);
}

TEST_F(DrawnListTest, APressSelectsWhatIsUnderIt) {
  show(3);
  list.press(inRow(1), 1);
  EXPECT_EQ(list.selectedRow(), 1U);
  EXPECT_FALSE(list.release());
  list.press(inRow(4), 1);
  EXPECT_EQ(list.selectedRow(), std::nullopt);
}

TEST_F(DrawnListTest, OnlyTheSecondClickOnARowIsADoubleClick) {
  show(3);
  list.press(inRow(1), 1);
  EXPECT_FALSE(list.release());
  list.press(inRow(1), 2);
  EXPECT_TRUE(list.release());
  EXPECT_FALSE(list.release());
  list.press(inRow(1), 3);
  EXPECT_FALSE(list.release());
  list.press(inRow(4), 2);
  EXPECT_FALSE(list.release()) << "below the last row";
}

TEST_F(DrawnListTest, RowsThatChangeDuringADoubleClickEndIt) {
  show(3);
  list.press(inRow(1), 2);
  show(3);
  EXPECT_FALSE(list.release());
}

TEST_F(DrawnListTest, APartlyHiddenRowComesWhollyIntoSightWhenPressed) {
  show(30);
  list.scroll(1);
  list.press({frame.minX() + 5, frame.maxY() - 5}, 1);
  EXPECT_EQ(list.selectedRow(), 6U);
}

TEST_F(DrawnListTest, TheScrollerIsDraggedAndSelectsNothing) {
  show(30);
  list.press({frame.maxX() - 5, frame.minY() + 5}, 1);
  EXPECT_TRUE(list.drag({frame.maxX() + 60, frame.minY() + 500}));
  EXPECT_FALSE(list.release());
  EXPECT_EQ(list.selectedRow(), std::nullopt);
  asked.clear();
  drawn();
  EXPECT_EQ(*asked.rbegin(), 29U);
  EXPECT_FALSE(list.drag({frame.maxX(), frame.minY()})) << "released";
}

TEST_F(DrawnListTest, TheWheelStopsAtTheEnds) {
  show(30);
  EXPECT_FALSE(list.scroll(-1));
  EXPECT_TRUE(list.scroll(1));
  EXPECT_TRUE(list.scroll(100));
  EXPECT_FALSE(list.scroll(1));
}

TEST_F(DrawnListTest, ArrowsStopAtTheEnds) {
  show(3);
  EXPECT_TRUE(list.takeKey(VirtualKey::up));
  EXPECT_EQ(list.selectedRow(), 2U) << "up from nothing is the last";
  EXPECT_TRUE(list.takeKey(VirtualKey::down));
  EXPECT_EQ(list.selectedRow(), 2U);
  list.takeKey(VirtualKey::pageUp);
  EXPECT_EQ(list.selectedRow(), 0U);
  list.takeKey(VirtualKey::up);
  EXPECT_EQ(list.selectedRow(), 0U);
  list.takeKey(VirtualKey::pageDown);
  EXPECT_EQ(list.selectedRow(), 2U);
  EXPECT_FALSE(list.takeKey(36));
}

TEST_F(DrawnListTest, KeysOnAnEmptyListAreTakenAndSelectNothing) {
  show(0);
  EXPECT_TRUE(list.takeKey(VirtualKey::down));
  EXPECT_TRUE(list.takeKey(VirtualKey::up));
  EXPECT_EQ(list.selectedRow(), std::nullopt);
  list.selectRow(0);
  EXPECT_EQ(list.selectedRow(), std::nullopt);
}

}  // namespace
}  // namespace pellar
