#include <gtest/gtest.h>

#include "tests/app/strip/tabs/StripFixture.h"

namespace pellar {
namespace {

using Words = std::vector<std::string>;

class StripHover : public StripTest {};

TEST_F(StripHover, ATabIsReportedOnceWithItsPlaceOnTheScreen) {
  moveTo(onTab("Plan"));
  moveTo(60);
  EXPECT_EQ(happened(), (Words{"hover 101 106,503 164x26"}));
  EXPECT_EQ(host.redrawn, (std::vector<ViewRect>{{6, 3, 164, 26}}));
}

TEST_F(StripHover, MovingFromTabToTabReportsTheNewOne) {
  moveTo(onTab("Plan"));
  moveTo(180);
  EXPECT_EQ(happened(), (Words{"hover 101 106,503 164x26", "hover 102 274,503 164x26"}));
}

TEST_F(StripHover, LeavingTheTabsReportsNone) {
  moveTo(onTab("Plan"));
  happened();
  host.forgetRequests();
  moveTo(172);
  moveTo(onEmptyStrip());
  EXPECT_EQ(happened(), (Words{"hover none"}));
  EXPECT_EQ(host.redrawn, (std::vector<ViewRect>{{6, 3, 164, 26}}));
}

TEST_F(StripHover, TheEmptyStripAndTheToolsReportNothing) {
  moveTo(onEmptyStrip());
  moveTo(760);
  EXPECT_EQ(happened(), Words{});
  EXPECT_TRUE(host.redrawn.empty());
}

TEST_F(StripHover, AViewInNoWindowReportsNone) {
  host.inWindow = false;
  moveTo(onTab("Plan"));
  EXPECT_EQ(happened(), (Words{"hover none"}));
  moveTo(on(StripAction::zoom));
  EXPECT_EQ(happened(), (Words{"hover none", "zoom hover none"}));
}

TEST_F(StripHover, TheZoomToolIsReportedWhenEnteredAndLeft) {
  moveTo(1132);
  moveTo(1150);
  EXPECT_EQ(happened(), (Words{"zoom hover 1232,504 30x24"}));
  moveTo(1163);
  EXPECT_EQ(happened(), (Words{"zoom hover none"}));
}

TEST_F(StripHover, GoingFromATabToTheZoomToolReportsBoth) {
  moveTo(onTab("Plan"));
  happened();
  moveTo(on(StripAction::zoom));
  EXPECT_EQ(happened(), (Words{"hover none", "zoom hover 1232,504 30x24"}));
  moveTo(onTab("Plan"));
  EXPECT_EQ(happened(), (Words{"hover 101 106,503 164x26", "zoom hover none"}));
}

TEST_F(StripHover, OverATabThatLiesOnTheZoomToolTheTabIsReportedAndNotTheTool) {
  view.setTabs(numberedTabs(60));
  const MouseEvent both = on(StripAction::zoom);
  const auto under = view.geometry().hit(both.location).tab;
  ASSERT_TRUE(under);
  happened();
  moveTo(both);
  const auto reports = happened();
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_TRUE(reports.front().starts_with("hover " + std::to_string(*under + 1) + " "));
}

TEST_F(StripHover, LeavingTheStripEndsWhatWasHovered) {
  moveTo(onTab("Plan"));
  happened();
  view.mouseExited();
  EXPECT_EQ(happened(), (Words{"hover none"}));
  moveTo(on(StripAction::zoom));
  happened();
  view.mouseExited();
  EXPECT_EQ(happened(), (Words{"zoom hover none"}));
  view.mouseExited();
  EXPECT_EQ(happened(), Words{});
}

TEST_F(StripHover, APressEndsTheCardButNotTheHighlight) {
  moveTo(onTab("Plan"));
  const auto highlighted = painted();
  happened();
  press(onTab("Plan"));
  EXPECT_EQ(happened(), (Words{"hover none"}));
  EXPECT_EQ(painted(), highlighted);
}

TEST_F(StripHover, TheHighlightStaysWithATabThatMoves) {
  moveTo(onTab("Plan"));
  host.forgetRequests();
  view.setTabs({tab(102, "Plan"), tab(101, "Report"), tab(103, "Notes")});
  EXPECT_EQ(painted({174, 3, 164, 26}).front(), roundedRect({174, 3, 164, 26}, 8, Color::white(0.1)));
  EXPECT_NE(painted({6, 3, 164, 26}).front().color, Color::white(0.1));
  EXPECT_EQ(host.redrawn, (std::vector<ViewRect>{{6, 3, 164, 26}, {174, 3, 164, 26}}));

  happened();
  moveTo(51);
  EXPECT_EQ(happened(), (Words{"hover 102 106,503 164x26"}));
}

TEST_F(StripHover, ATabThatVanishesUnderTheRestingPointerIsLeftAtTheNextMove) {
  const MouseEvent resting = onTab("Notes");
  moveTo(resting);
  happened();
  view.setTabs({tab(101, "Plan"), tab(102, "Report")});
  for (const DrawnItem& thing : painted()) EXPECT_NE(thing.color, Color::white(0.1));
  EXPECT_EQ(happened(), Words{});
  moveTo(resting);
  EXPECT_EQ(happened(), (Words{"hover none"}));
}

TEST_F(StripHover, ATabThatTakesAVanishedOnesPlaceIsReportedAtTheNextMove) {
  moveTo(onTab("Report"));
  happened();
  view.setTabs({tab(101, "Plan"), tab(104, "Report"), tab(103, "Notes")});
  moveTo(onTab("Report"));
  EXPECT_EQ(happened(), (Words{"hover 104 274,503 164x26"}));
}

TEST_F(StripHover, LeavingAfterTheHoveredTabVanishedStillReportsNone) {
  moveTo(onTab("Report"));
  happened();
  view.setTabs({});
  view.mouseExited();
  EXPECT_EQ(happened(), (Words{"hover none"}));
}

TEST_F(StripHover, AListenerMayReplaceTheTabsWhileItIsCalled) {
  view.onTabHover = [this](auto, auto) { view.setTabs({}); };
  moveTo(onTab("Plan"));
  EXPECT_TRUE(view.tabs().empty());
  moveTo(on(StripAction::zoom));
  EXPECT_EQ(happened(), (Words{"zoom hover 1232,504 30x24"}));
}

}  // namespace
}  // namespace pellar
