#include <gtest/gtest.h>

#include <string>

#include "app/strip/tabs/StripLayout.h"
#include "tests/app/strip/tabs/DrawnItems.h"
#include "tests/app/strip/tabs/FakeViewHost.h"

namespace pellar {
namespace {

using enum StripAction;

const FixedPitchMeasure measure;

StripLayout strip(double width, std::size_t tabs, const StripContent& content = {}, double height = 32) {
  StripContent filled = content;
  filled.tabCount = tabs;
  return {{0, 0, width, height}, filled, measure};
}

StripContent generic() {
  return {.officeTools = false, .renameTool = false};
}

std::vector<StripAction> actions(std::span<const PlacedTool> tools) {
  std::vector<StripAction> result;
  for (const PlacedTool& placed : tools) result.push_back(placed.tool.action);
  return result;
}

std::vector<StripAction> actions(std::span<const StripTool> tools) {
  std::vector<StripAction> result;
  for (const StripTool& tool : tools) result.push_back(tool.action);
  return result;
}

using Actions = std::vector<StripAction>;

TEST(StripActions, AreNumberedInTheirOrder) {
  const Actions inOrder = {search, more,   rename,   autoSave, saveAll,    closeAll,
                           groups, newDoc, minimize, zoom,     closeWindow};
  for (std::size_t i = 0; i < inOrder.size(); ++i) EXPECT_EQ(static_cast<std::size_t>(inOrder[i]), i);
}

TEST(StripTools, AnOfficeApplicationHasThemAll) {
  const auto layout = strip(1200, 3);
  const auto tools = layout.baseTools();
  const std::vector<StripTool> expected = {{rename, "Rename", 52},    {autoSave, "○ Auto-save", 82},
                                           {saveAll, "Save all", 64}, {closeAll, "Close all", 70},
                                           {groups, "Groups", 52},    {newDoc, "+", 22},
                                           {minimize, "–", 30},       {zoom, "□", 30},
                                           {closeWindow, "✕", 30}};
  EXPECT_EQ(std::vector<StripTool>(tools.begin(), tools.end()), expected);
}

TEST(StripTools, AutoSaveShowsAFilledDotWhileItRuns) {
  EXPECT_EQ(strip(1200, 3, {.autoSaveOn = true}).baseTools()[1].text, "● Auto-save");
  EXPECT_EQ(strip(1200, 3, {.autoSaveOn = false}).baseTools()[1].text, "○ Auto-save");
}

TEST(StripTools, AnApplicationWithoutDocumentToolsKeepsTheOthers) {
  const Actions expected = {closeAll, groups, minimize, zoom, closeWindow};
  EXPECT_EQ(actions(strip(1200, 3, {.officeTools = false}).baseTools()), expected);
  EXPECT_EQ(actions(strip(1200, 3, generic()).tools()), expected);
}

TEST(StripTools, RenameCanBeMissingAlone) {
  EXPECT_EQ(actions(strip(1200, 3, {.renameTool = false}).baseTools()),
            (Actions{autoSave, saveAll, closeAll, groups, newDoc, minimize, zoom, closeWindow}));
}

TEST(StripTools, StandFromTheRightEndWithTheWindowButtonsSetApart) {
  const auto layout = strip(1200, 3);
  const std::vector<ViewRect> expected = {{738, 4, 52, 24},  {792, 4, 82, 24},  {876, 4, 64, 24},
                                          {942, 4, 70, 24},  {1014, 4, 52, 24}, {1068, 4, 22, 24},
                                          {1100, 4, 30, 24}, {1132, 4, 30, 24}, {1164, 4, 30, 24}};
  ASSERT_EQ(layout.tools().size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(layout.tools()[i].rect, expected[i]);
  EXPECT_EQ(layout.toolRect(zoom), (ViewRect{1132, 4, 30, 24}));
  EXPECT_EQ(layout.toolRect(more), std::nullopt);
}

TEST(StripTools, FillAnyHeightButFourPointsAboveAndBelow) {
  for (const double height : {8.0, 20.0, 32.0, 60.0}) {
    EXPECT_EQ(strip(1200, 3, {}, height).tools()[0].rect, (ViewRect{738, 4, 52, height - 8}));
  }
}

TEST(StripSearch, FieldEndsEightPointsLeftOfTheTools) {
  EXPECT_EQ(strip(1200, 3).searchFrame(), (ViewRect{520, 5, 210, 22}));
  EXPECT_FALSE(strip(1200, 3).searchHidden());
}

TEST(StripSearch, FieldIsHiddenWithoutDocumentTools) {
  EXPECT_TRUE(strip(4000, 1, {.officeTools = false}).searchHidden());
  EXPECT_FALSE(strip(100, 9, {.officeTools = false}).searchCompact());
}

// The base tools take 6 + 450 + 8; one tab keeps the field down to 12 + 464 + 210 + 8 + 120.
TEST(StripSearch, TurnsIntoAButtonWhenATabWouldHaveLessThan120) {
  EXPECT_FALSE(strip(814, 1).searchCompact());
  EXPECT_TRUE(strip(813.99, 1).searchCompact());
  EXPECT_FALSE(strip(694 + 5 * 120 + 4 * 4, 5).searchCompact());
  EXPECT_TRUE(strip(694 + 5 * 120 + 4 * 4 - 0.01, 5).searchCompact());
}

TEST(StripSearch, ButtonStandsInFrontOfTheTools) {
  const auto layout = strip(1200, 5);
  ASSERT_TRUE(layout.searchCompact());
  EXPECT_TRUE(layout.searchHidden());
  EXPECT_EQ(actions(layout.tools()), (Actions{search, rename, autoSave, saveAll, closeAll, groups, newDoc,
                                              minimize, zoom, closeWindow}));
  EXPECT_EQ(layout.tools()[0], (PlacedTool{{search, "", 26}, {710, 4, 26, 24}}));
  EXPECT_EQ(layout.searchFrame(), (ViewRect{710 - 218, 5, 210, 22}));
}

TEST(StripSearch, OpenedByTheUserIsNeverAButton) {
  const auto layout = strip(300, 40, {.searchExpanded = true});
  EXPECT_FALSE(layout.searchCompact());
  EXPECT_FALSE(layout.searchHidden());
  EXPECT_EQ(layout.toolRect(search), std::nullopt);
}

TEST(StripSearch, MissingRenameMakesRoomForTheField) {
  EXPECT_TRUE(strip(813 - 54, 1).searchCompact());
  EXPECT_FALSE(strip(814 - 54, 1, {.renameTool = false}).searchCompact());
}

// The icon tools take 6 + 96 + 8 + 28, the search button 34.
TEST(StripCrowding, FoldsTheTextToolsWhenATabWouldHaveLessThan70) {
  EXPECT_FALSE(strip(254, 1).crowded());
  EXPECT_TRUE(strip(253.99, 1).crowded());
  EXPECT_FALSE(strip(184 + 10 * 70 + 9 * 4, 10).crowded());
  EXPECT_TRUE(strip(184 + 10 * 70 + 9 * 4 - 0.01, 10).crowded());
}

TEST(StripCrowding, ReservesNothingForTheSearchWithoutDocumentTools) {
  EXPECT_FALSE(strip(220, 1, generic()).crowded());
  EXPECT_TRUE(strip(219.99, 1, generic()).crowded());
}

TEST(StripCrowding, ReservesForTheSearchButtonAlsoWhileTheFieldIsOpen) {
  EXPECT_FALSE(strip(254, 1, {.searchExpanded = true}).crowded());
  EXPECT_TRUE(strip(253, 1, {.searchExpanded = true}).crowded());
}

TEST(StripCrowding, LeavesSearchMoreAndTheWindowButtons) {
  const auto layout = strip(900, 12);
  ASSERT_TRUE(layout.crowded());
  EXPECT_EQ(actions(layout.tools()), (Actions{search, more, minimize, zoom, closeWindow}));
  EXPECT_EQ(layout.tools()[1], (PlacedTool{{more, "⋯", 26}, {900 - 6 - 94 - 10 - 26, 4, 26, 24}}));
  EXPECT_EQ(layout.tools()[0].rect, (ViewRect{900 - 6 - 94 - 10 - 26 - 28, 4, 26, 24}));
}

TEST(StripCrowding, WithoutDocumentToolsLeavesMoreAndTheWindowButtons) {
  EXPECT_EQ(actions(strip(500, 12, generic()).tools()), (Actions{more, minimize, zoom, closeWindow}));
}

TEST(StripWithoutTabs, IsNeverCompactOrCrowdedAtAnyWidth) {
  for (const double width : {0.0, 50.0, 300.0, 1200.0}) {
    const auto layout = strip(width, 0);
    EXPECT_FALSE(layout.searchCompact());
    EXPECT_FALSE(layout.crowded());
    EXPECT_TRUE(layout.tabRects().empty());
    EXPECT_EQ(layout.tabWidth(), 0);
    EXPECT_EQ(layout.tools().size(), 9U);
  }
}

TEST(StripTabs, ShareTheRoomLeftOfTheSearchField) {
  EXPECT_EQ(strip(1200, 3).tabRects(),
            (std::vector<ViewRect>{{6, 3, 164, 26}, {174, 3, 164, 26}, {342, 3, 164, 26}}));
}

TEST(StripTabs, ShareTheRoomLeftOfTheToolsWhenTheFieldIsHidden) {
  // Tools from 710 on: 1200 - 12 - (490 + 8) - 0 for five tabs and four gaps.
  EXPECT_DOUBLE_EQ(strip(1200, 5).tabWidth(), (690.0 - 16) / 5);
}

TEST(StripTabs, NeverGrowPast180) {
  EXPECT_EQ(strip(4000, 1).tabRects(), (std::vector<ViewRect>{{6, 3, 180, 26}}));
  EXPECT_EQ(strip(4000, 2).tabRect(1), (ViewRect{190, 3, 180, 26}));
}

TEST(StripTabs, NeverShrinkBelow26AndRunOnUnderTheTools) {
  const auto layout = strip(300, 40);
  EXPECT_DOUBLE_EQ(layout.tabWidth(), 26);
  EXPECT_EQ(layout.tabRect(39), (ViewRect{6 + 39 * 30, 3, 26, 26}));
}

TEST(StripTabs, FillAnyHeightButThreePointsAboveAndBelow) {
  EXPECT_EQ(strip(1200, 3, {}, 50).tabRect(0), (ViewRect{6, 3, 164, 44}));
}

TEST(StripHits, NameTheTabUnderThePoint) {
  const auto layout = strip(1200, 3);
  EXPECT_EQ(layout.hit({6, 3}), (StripHit{0, false, std::nullopt}));
  EXPECT_EQ(layout.hit({169.9, 28.9}).tab, 0U);
  EXPECT_EQ(layout.hit({170, 16}), StripHit{});  // the gap
  EXPECT_EQ(layout.hit({174, 16}).tab, 1U);
  EXPECT_EQ(layout.hit({400, 16}).tab, 2U);
  EXPECT_EQ(layout.hit({400, 2.9}), StripHit{});
  EXPECT_EQ(layout.hit({400, 29}), StripHit{});
  EXPECT_EQ(layout.hit({515, 16}), StripHit{});
}

TEST(StripHits, NameTheToolUnderThePoint) {
  const auto layout = strip(1200, 3);
  EXPECT_EQ(layout.hit({738, 4}), (StripHit{std::nullopt, false, rename}));
  EXPECT_EQ(layout.hit({791, 16}), StripHit{});
  EXPECT_EQ(layout.hit({1193.9, 27.9}).action, closeWindow);
  EXPECT_EQ(layout.hit({1194, 16}), StripHit{});
  EXPECT_EQ(layout.hit({1140, 3.9}), StripHit{});
}

TEST(StripHits, PreferTheTabOverAToolBehindIt) {
  const auto layout = strip(300, 40);
  ASSERT_EQ(layout.toolRect(minimize), (ViewRect{200, 4, 30, 24}));
  EXPECT_EQ(layout.hit({205, 16}), (StripHit{6, false, std::nullopt}));         // the tab 186...212
  EXPECT_EQ(layout.hit({214, 16}), (StripHit{std::nullopt, false, minimize}));  // the gap between two tabs
}

// The first tab of 164 ends at 170: the close mark is 150...164 by 9...23 and answers 3 points around.
TEST(StripHits, CloseMarkAnswersThreePointsAroundItsSquare) {
  const auto layout = strip(1200, 3);
  EXPECT_EQ(StripLayout::closeSquare(layout.tabRect(0)), (ViewRect{150, 9, 14, 14}));
  EXPECT_TRUE(layout.hit({147, 6}).close);
  EXPECT_TRUE(layout.hit({166.9, 25.9}).close);
  EXPECT_FALSE(layout.hit({146.9, 16}).close);
  EXPECT_FALSE(layout.hit({167, 16}).close);
  EXPECT_FALSE(layout.hit({155, 5.9}).close);
  EXPECT_FALSE(layout.hit({155, 26}).close);
}

TEST(StripHits, TabsFrom52OnHaveACloseMark) {
  // Crowded without document tools: tools take 132 + 8 + 12 from the right.
  const auto widthFor = [](double tabWidth) { return 6 + 94 + 10 + 26 + 8 + 12 + 10 * tabWidth + 36; };
  const auto wide = strip(widthFor(52), 10, generic());
  ASSERT_DOUBLE_EQ(wide.tabWidth(), 52);
  EXPECT_TRUE(wide.hit({wide.tabRect(4).maxX() - 13, 16}).close);
  const auto narrow = strip(widthFor(51.9), 10, generic());
  ASSERT_NEAR(narrow.tabWidth(), 51.9, 1e-9);
  EXPECT_FALSE(narrow.hit({narrow.tabRect(4).maxX() - 13, 16}).close);
}

// Middles at 88, 256 and 424.
TEST(StripDrop, CountsTheOtherTabsLeftOfThePointer) {
  const auto layout = strip(1200, 3);
  EXPECT_EQ(layout.dropIndex(0, 20), 0U);
  EXPECT_EQ(layout.dropIndex(0, 256), 0U);  // exactly on a middle is not past it
  EXPECT_EQ(layout.dropIndex(0, 257), 1U);
  EXPECT_EQ(layout.dropIndex(0, 425), 2U);
  EXPECT_EQ(layout.dropIndex(0, 5000), 2U);
  EXPECT_EQ(layout.dropIndex(2, 87), 0U);
  EXPECT_EQ(layout.dropIndex(2, 89), 1U);
  EXPECT_EQ(layout.dropIndex(1, 300), 1U);
  EXPECT_EQ(layout.dropIndex(1, -50), 0U);
}

TEST(StripDrop, MarkerStandsBeforeTheOtherTabOrAfterTheLast) {
  const auto layout = strip(1200, 3);
  EXPECT_EQ(layout.dropMarker(0, 0), (ViewRect{171, 5, 2, 22}));  // before the second tab
  EXPECT_EQ(layout.dropMarker(0, 1), (ViewRect{339, 5, 2, 22}));
  EXPECT_EQ(layout.dropMarker(0, 2), (ViewRect{507, 5, 2, 22}));  // 2 right of the last
  EXPECT_EQ(layout.dropMarker(2, 0), (ViewRect{3, 5, 2, 22}));
  EXPECT_EQ(layout.dropMarker(2, 1), (ViewRect{171, 5, 2, 22}));
  EXPECT_EQ(layout.dropMarker(2, 2), (ViewRect{339, 5, 2, 22}));  // the last of the others is the second
  EXPECT_EQ(layout.dropMarker(1, 1), (ViewRect{339, 5, 2, 22}));
}

TEST(StripDrop, ALoneTabIsMarkedWhereItIs) {
  const auto layout = strip(1200, 1);
  EXPECT_EQ(layout.dropIndex(0, 900), 0U);
  EXPECT_EQ(layout.dropMarker(0, 0), (ViewRect{3, 5, 2, 22}));
}

}  // namespace
}  // namespace pellar
