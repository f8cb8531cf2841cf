#include <gtest/gtest.h>

#include "app/panels/SnapPicker.h"
#include "tests/support/PanelReader.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class Picker : public testing::Test {
 protected:
  static constexpr ScreenRect button{700, 604, 30, 24};

  [[nodiscard]] ScreenRect frame() const { return hover.picker()->frame(); }
  [[nodiscard]] ScreenPoint middleOf(Tile tile) const {
    for (const auto& [rect, each] : SnapView::cellRects())
      if (each == tile) return PanelReader::onScreen(*hover.picker(), {rect.midX(), rect.midY()});
    throw std::runtime_error("no such cell");
  }

  SimMac mac;
  PanelReader hover{mac};
  std::vector<Tile> picked;
  SnapPicker picker{mac.platform().panels, mac.platform().mainLoop, mac.platform().screens,
                    [this](Tile tile) { picked.push_back(tile); }};
};

TEST_F(Picker, IsAFloatingPanelWithoutGlass) {
  const PanelStyle expected{
      .contentSize = {372, 150}, .level = PanelLevel::popUpMenu, .glass = false, .cornerRadius = 10};
  EXPECT_EQ(hover.picker()->style(), expected);
}

TEST_F(Picker, ComesAtOnceCentredTwoPointsUnderTheButton) {
  picker.show(button);
  EXPECT_TRUE(hover.pickerShown());
  EXPECT_EQ(frame(), (ScreenRect{715 - 186, 604 - 2 - 150, 372, 150}));
}

TEST_F(Picker, AtTheRightEdgeEndsEightPointsInsideTheScreen) {
  picker.show({1400, 604, 30, 24});
  EXPECT_EQ(frame().maxX(), 1440 - 8);
}

TEST_F(Picker, AtTheLeftEdgeBeginsEightPointsInsideTheScreen) {
  picker.show({20, 604, 30, 24});
  EXPECT_EQ(frame().minX(), 8);
}

TEST_F(Picker, NeverComesCloserThanEightPointsToTheMenuBar) {
  picker.show({700, 880, 30, 24});
  EXPECT_EQ(frame().maxY(), 900 - 25 - 8);
}

TEST_F(Picker, StaysOnTheButtonsScreenAlsoAtNegativeCoordinates) {
  mac.screens().add({-1920, -300, 1920, 1080}, 0, 40);
  picker.show({-60, -100, 30, 24});
  EXPECT_EQ(frame(), (ScreenRect{-372 - 8, -102 - 150, 372, 150}));
}

TEST_F(Picker, DoesNotComeWithoutAnyScreen) {
  mac.screens().set({});
  picker.show(button);
  EXPECT_FALSE(hover.pickerShown());
  picker.scheduleClose();
  mac.advance(10s);
}

TEST_F(Picker, GoesAMomentAfterThePointer) {
  picker.show(button);
  picker.scheduleClose();
  mac.advance(closeDelay - 1ms);
  EXPECT_TRUE(hover.pickerShown());
  mac.advance(1ms);
  EXPECT_FALSE(hover.pickerShown());
}

TEST_F(Picker, StaysWhenThePointerReachesItInTime) {
  picker.show(button);
  picker.scheduleClose();
  mac.advance(closeDelay - 1ms);
  mac.pointer().moveTo(middleOf(Tile::left));
  mac.advance(10s);
  EXPECT_TRUE(hover.pickerShown());
  mac.pointer().moveTo({5, 5});
  mac.advance(closeDelay - 1ms);
  EXPECT_TRUE(hover.pickerShown());
  mac.advance(1ms);
  EXPECT_FALSE(hover.pickerShown());
}

TEST_F(Picker, StaysWhenItIsEnteredBeforeTheStripReportsTheExit) {
  picker.show(button);
  mac.pointer().moveTo(middleOf(Tile::left));
  picker.scheduleClose();
  mac.advance(10s);
  EXPECT_TRUE(hover.pickerShown());
}

TEST_F(Picker, StaysWhenThePointerComesBackToTheButtonInTime) {
  picker.show(button);
  picker.scheduleClose();
  mac.advance(closeDelay - 1ms);
  picker.show(button);
  mac.advance(10s);
  EXPECT_TRUE(hover.pickerShown());
}

TEST_F(Picker, ComesUpUnderAnotherWindowsButtonWithoutBeingSeenElsewhere) {
  picker.show(button);
  picker.hide();
  picker.show({300, 304, 30, 24});
  EXPECT_EQ(frame().maxY(), 302);
  EXPECT_EQ(hover.picker()->cameUpAt(), frame());
}

TEST_F(Picker, GoesAtOnceWithAPick) {
  picker.show(button);
  mac.pointer().click(middleOf(Tile::rightThird));
  EXPECT_EQ(picked, std::vector<Tile>{Tile::rightThird});
  EXPECT_FALSE(hover.pickerShown());
}

TEST_F(Picker, StaysWhenAGapIsClicked) {
  picker.show(button);
  mac.pointer().click(PanelReader::onScreen(*hover.picker(), {60, 40}));
  mac.pointer().click(PanelReader::onScreen(*hover.picker(), {3, 3}));
  EXPECT_TRUE(picked.empty());
  EXPECT_TRUE(hover.pickerShown());
}

TEST_F(Picker, AScreenReaderSaysWhatThePlacesAreForAndPressesOne) {
  picker.show(button);
  SimScreenReader& reader = mac.screenReader();
  EXPECT_EQ(reader.element("Layout").help, "Places for this window");
  for (const Tile tile : allTiles) {
    const auto place = reader.element(title(tile));
    EXPECT_EQ(place.help, "Puts this window there");
    EXPECT_TRUE(place.canBePressed);
    EXPECT_THROW(reader.showMenu(title(tile)), std::runtime_error);
  }
  EXPECT_TRUE(picked.empty());
  reader.press(title(Tile::rightThird));
  EXPECT_EQ(picked, std::vector<Tile>{Tile::rightThird});
  EXPECT_FALSE(hover.pickerShown());
}

TEST_F(Picker, IsHiddenAtOnce) {
  picker.show(button);
  picker.scheduleClose();
  picker.hide();
  EXPECT_FALSE(hover.pickerShown());
  EXPECT_EQ(mac.mainLoop().activeTimers(), 0U);
}

}  // namespace
}  // namespace pellar
