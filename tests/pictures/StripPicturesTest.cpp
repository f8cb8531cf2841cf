#include <gtest/gtest.h>

#include "app/strip/tabs/TabStripView.h"
#include "core/TrackedApp.h"
#include "tests/pictures/PictureTest.h"

namespace pellar {
namespace {

class StripPicture : public testing::Test {
 protected:
  static std::vector<TabItem> fourTabs() {
    return {{1, "Report", std::nullopt, false},
            {2, "Plan", std::nullopt, true},
            {3, "Budget of the coming year", std::nullopt, false},
            {4, "Letter", std::nullopt, false}};
  }
  StripPicture() {
    const RGB accent = TrackedApp::of(OfficeApp::word).accentRGB();
    view.setAccent({accent.red, accent.green, accent.blue, 1, std::nullopt});
    view.setTabs(fourTabs());
  }
  void pointAt(std::size_t tab) {
    const ViewRect rect = view.geometry().tabRect(tab);
    view.mouseMoved({{rect.midX(), rect.midY()}, {}, false, 1});
  }

  PictureStage stage{{1400, 32}, PanelBackgroundKind::glass};
  TabStripView view{stage};
};

TEST_F(StripPicture, OfFourTabs) {
  expectLikePicture(stage.pictureOf(view), "strip");
}

TEST_F(StripPicture, AtOneAndAQuarter) {
  stage.setScale(1.25);
  expectLikePicture(stage.pictureOf(view), "strip-125");
}

TEST_F(StripPicture, AtOneAndAHalf) {
  stage.setScale(1.5);
  expectLikePicture(stage.pictureOf(view), "strip-150");
}

TEST_F(StripPicture, AtTwice) {
  stage.setScale(2);
  expectLikePicture(stage.pictureOf(view), "strip-200");
}

TEST_F(StripPicture, WithMoreContrast) {
  stage.setIncreasesContrast(true);
  expectLikePicture(stage.pictureOf(view), "strip-contrast");
}

TEST_F(StripPicture, WithThePointerOnATab) {
  pointAt(0);
  expectLikePicture(stage.pictureOf(view), "strip-hovered");
}

TEST_F(StripPicture, WithColourTagsAndAutoSave) {
  auto tabs = fourTabs();
  tabs[0].tag = Color::of(SystemColor::red);
  tabs[1].tag = Color::of(SystemColor::green);
  tabs[2].tag = Color::of(SystemColor::purple);
  view.setTabs(tabs);
  view.setAutoSaveOn(true);
  expectLikePicture(stage.pictureOf(view), "strip-tagged");
}

TEST_F(StripPicture, OfManyTabsWithoutRoomForWords) {
  std::vector<TabItem> tabs;
  for (WindowId id = 1; id <= 14; ++id) tabs.push_back({id, "Document", std::nullopt, id == 5});
  tabs[2].tag = Color::of(SystemColor::orange);
  view.setTabs(tabs);
  stage.resize({640, 32});
  expectLikePicture(stage.pictureOf(view), "strip-compact");
}

TEST_F(StripPicture, OfATabOnItsWay) {
  const ViewRect from = view.geometry().tabRect(0);
  const ViewRect to = view.geometry().tabRect(2);
  const auto event = [](double x) { return MouseEvent{{x, 16}, {x, -16}, false, 1}; };
  view.mouseDown(event(from.midX()));
  view.mouseDragged(event(to.midX() + 20));
  expectLikePicture(stage.pictureOf(view), "strip-dragging");
  view.mouseUp(event(to.midX() + 20));
}

}  // namespace
}  // namespace pellar
