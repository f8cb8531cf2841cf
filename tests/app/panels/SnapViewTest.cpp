#include <gtest/gtest.h>

#include "app/panels/SnapView.h"
#include "platform/sim/SimMac.h"

namespace pellar {
namespace {

class PickerView : public testing::Test {
 protected:
  PickerView() {
    panel->setView(&view);
    panel->orderFrontRegardless();
    mac.settle();
  }
  ~PickerView() override { panel->setView(nullptr); }

  [[nodiscard]] const std::vector<DrawnItem>& drawn() const { return panel->drawing().items(); }
  static ViewRect cellOf(Tile tile) {
    for (const auto& [rect, each] : SnapView::cellRects())
      if (each == tile) return rect;
    throw std::runtime_error("no such cell");
  }
  static MouseEvent on(Tile tile) { return at({cellOf(tile).midX(), cellOf(tile).midY()}); }
  static MouseEvent at(ViewPoint point) { return {point, {}, false, 1}; }

  SimMac mac;
  std::unique_ptr<SimPanel> panel{static_cast<SimPanel*>(
      mac.platform().panels.makePanel({.contentSize = SnapView::size, .glass = false}).release())};
  std::vector<std::string> events;
  SnapView view{panel->host(), [this](Tile tile) { events.emplace_back(rawValue(tile)); }};
};

void expectNear(const ViewRect& rect, const ViewRect& expected) {
  EXPECT_NEAR(rect.x, expected.x, 1e-9);
  EXPECT_NEAR(rect.y, expected.y, 1e-9);
  EXPECT_NEAR(rect.width, expected.width, 1e-9);
  EXPECT_NEAR(rect.height, expected.height, 1e-9);
}

TEST_F(PickerView, PlacesFiveMiniatureScreensThreeInARow) {
  EXPECT_EQ(
      SnapView::groupRects(),
      (std::vector<ViewRect>{
          {12, 12, 96, 60}, {132, 12, 96, 60}, {252, 12, 96, 60}, {12, 86, 96, 60}, {132, 86, 96, 60}}));
}

TEST_F(PickerView, SplitsThemIntoTheirTiles) {
  const std::vector<std::pair<Tile, ViewRect>> expected{
      {Tile::left, {14, 14, 44, 56}},         {Tile::right, {62, 14, 44, 56}},
      {Tile::leftThird, {134, 14, 28, 56}},   {Tile::middleThird, {166, 14, 28, 56}},
      {Tile::rightThird, {198, 14, 28, 56}},  {Tile::topLeft, {254, 14, 44, 26}},
      {Tile::topRight, {302, 14, 44, 26}},    {Tile::bottomLeft, {254, 44, 44, 26}},
      {Tile::bottomRight, {302, 44, 44, 26}}, {Tile::top, {14, 88, 92, 26}},
      {Tile::bottom, {14, 118, 92, 26}},      {Tile::fill, {134, 88, 92, 56}}};
  const auto& cells = SnapView::cellRects();
  ASSERT_EQ(cells.size(), expected.size());
  for (std::size_t i = 0; i < cells.size(); ++i) {
    EXPECT_EQ(cells[i].second, expected[i].first);
    expectNear(cells[i].first, expected[i].second);
  }
}

TEST_F(PickerView, DrawsItsOwnGroundAndTheCellsAndNoText) {
  ASSERT_EQ(drawn().size(), 13U);
  EXPECT_EQ(drawn()[0].rect, (ViewRect{0, 0, 372, 150}));
  EXPECT_EQ(drawn()[0].radius, 10);
  EXPECT_EQ(drawn()[0].color, (Color{0.12, 0.13, 0.17, 0.97, std::nullopt}));
  for (std::size_t i = 1; i < drawn().size(); ++i) {
    EXPECT_EQ(drawn()[i].kind, DrawnItem::Kind::roundedRect);
    EXPECT_EQ(drawn()[i].rect, SnapView::cellRects()[i - 1].first);
    EXPECT_EQ(drawn()[i].radius, 4);
    EXPECT_EQ(drawn()[i].color, (Color{0.55, 0.55, 0.55, 0.35, std::nullopt}));
  }
}

TEST_F(PickerView, WithMoreContrastTheCellsAreWhite) {
  mac.panels().setIncreasesContrast(true);
  view.mouseMoved(on(Tile::fill));
  mac.settle();
  ASSERT_EQ(drawn().size(), 13U);
  for (std::size_t i = 1; i < drawn().size(); ++i)
    EXPECT_EQ(drawn()[i].color,
              drawn()[i].rect == cellOf(Tile::fill) ? Color::of(SystemColor::blue) : Color::white());
}

TEST_F(PickerView, TurnsTheCellUnderThePointerBlue) {
  const auto blueCells = [this] {
    std::vector<ViewRect> found;
    for (const auto& item : drawn())
      if (item.color == Color::of(SystemColor::blue)) found.push_back(item.rect);
    return found;
  };
  view.mouseMoved(on(Tile::topRight));
  mac.settle();
  EXPECT_EQ(blueCells(), std::vector<ViewRect>{cellOf(Tile::topRight)});
  view.mouseMoved(on(Tile::fill));
  mac.settle();
  EXPECT_EQ(blueCells(), std::vector<ViewRect>{cellOf(Tile::fill)});
  view.mouseExited();
  mac.settle();
  EXPECT_TRUE(blueCells().empty());
  EXPECT_FALSE(panel->drawing().isTorn());
}

TEST_F(PickerView, RepaintsOnlyWhenAnotherCellIsUnderThePointer) {
  view.mouseMoved(on(Tile::fill));
  mac.settle();
  const auto before = panel->simHost().repaints().size();
  view.mouseMoved(at({cellOf(Tile::fill).midX() + 5, cellOf(Tile::fill).midY()}));
  mac.settle();
  EXPECT_EQ(panel->simHost().repaints().size(), before);
}

TEST_F(PickerView, EveryCellIsPickedByAClick) {
  view.onChosen = [this] { events.emplace_back("picked"); };
  for (const Tile tile : allTiles) {
    events.clear();
    view.mouseDown(on(tile));
    EXPECT_EQ(events, (std::vector<std::string>{std::string(rawValue(tile)), "picked"}));
  }
}

TEST_F(PickerView, GapsAndTheMarginPickNothing) {
  view.onChosen = [this] { events.emplace_back("picked"); };
  // Between two halves, between two miniatures, in the margin, and where a sixth miniature would be.
  for (const ViewPoint point : {ViewPoint{60, 40}, ViewPoint{120, 40}, ViewPoint{3, 3}, ViewPoint{300, 120}})
    view.mouseDown(at(point));
  EXPECT_TRUE(events.empty());
}

TEST_F(PickerView, WhatItDoesNotHaveCannotBePressed) {
  EXPECT_FALSE(view.perform(AccessibleAction::press, "part 12"));
  EXPECT_FALSE(view.perform(AccessibleAction::press, "picker"));
  EXPECT_TRUE(events.empty());
}

TEST_F(PickerView, TellsOfThePointerComingAndGoing) {
  view.onHoverChanged = [this](bool inside) { events.emplace_back(inside ? "in" : "out"); };
  view.mouseEntered();
  view.mouseExited();
  EXPECT_EQ(events, (std::vector<std::string>{"in", "out"}));
}

TEST_F(PickerView, MayBeDoneAwayWithByAPick) {
  auto doomed = std::unique_ptr<SnapView>();
  bool picked = false;
  doomed = std::make_unique<SnapView>(panel->host(), [&](Tile) { doomed.reset(); });
  doomed->onChosen = [&picked] { picked = true; };
  doomed->mouseDown(on(Tile::fill));
  EXPECT_FALSE(picked);
}

}  // namespace
}  // namespace pellar
