#include <gtest/gtest.h>

#include <cmath>

#include "app/panels/SnapView.h"
#include "app/strip/card/TabCardView.h"
#include "tests/pictures/PictureTest.h"

namespace pellar {
namespace {

class CardPicture : public testing::Test {
 protected:
  void show(const std::string& title, const std::optional<std::string>& folder) {
    view.set(1, title, folder);
    stage.resize({std::ceil(view.preferredWidth()), view.titleNeedsTwoLines() ? 74.0 : 58.0});
  }
  void pointAt(StripAction action) {
    for (const auto& [rect, each] : view.buttonRects())
      if (each == action) view.mouseMoved({{rect.midX(), rect.midY()}, {}, false, 1});
  }

  PictureStage stage{{200, 58}, PanelBackgroundKind::glass};
  TabCardView view{stage, [](WindowId, StripAction) {}};
};

TEST_F(CardPicture, OfAShortName) {
  show("Report.docx", "~/Documents/Reports");
  expectLikePicture(stage.pictureOf(view), "card");
}

TEST_F(CardPicture, OfALongNameInTwoLinesAndALongFolder) {
  show("Minutes of the yearly meeting.docx", "~/Clients/Anderson and Sons/Contracts/2024/Final drafts");
  expectLikePicture(stage.pictureOf(view), "card-two-lines");
}

TEST_F(CardPicture, OfAWindowWithoutFileUnderTheClosingButton) {
  show("Untitled 3", std::nullopt);
  pointAt(StripAction::closeWindow);
  expectLikePicture(stage.pictureOf(view), "card-closing");
}

TEST_F(CardPicture, UnderTheZoomButton) {
  show("Report.docx", "~/Documents/Reports");
  pointAt(StripAction::zoom);
  expectLikePicture(stage.pictureOf(view), "card-zooming");
}

TEST_F(CardPicture, OfALongNameAtOneAndAHalf) {
  stage.setScale(1.5);
  show("Minutes of the yearly meeting.docx", "~/Clients/Anderson and Sons/Contracts/2024/Final drafts");
  expectLikePicture(stage.pictureOf(view), "card-two-lines-150");
}

TEST_F(CardPicture, UnderTheClosingButtonAtTwice) {
  stage.setScale(2);
  show("Report.docx", "~/Documents/Reports");
  pointAt(StripAction::closeWindow);
  expectLikePicture(stage.pictureOf(view), "card-closing-200");
}

class PickerPicture : public testing::Test {
 protected:
  PictureStage stage{SnapView::size, PanelBackgroundKind::none};
  SnapView view{stage, [](Tile) {}};
};

TEST_F(PickerPicture, OfFiveLayouts) {
  expectLikePicture(stage.pictureOf(view), "picker");
}

TEST_F(PickerPicture, WithThePointerOnACell) {
  view.mouseMoved({{317, 27}, {}, false, 1});
  expectLikePicture(stage.pictureOf(view), "picker-top-right");
}

TEST_F(PickerPicture, AtOneAndAHalf) {
  stage.setScale(1.5);
  expectLikePicture(stage.pictureOf(view), "picker-150");
}

TEST_F(PickerPicture, AtTwice) {
  stage.setScale(2);
  expectLikePicture(stage.pictureOf(view), "picker-200");
}

}  // namespace
}  // namespace pellar
