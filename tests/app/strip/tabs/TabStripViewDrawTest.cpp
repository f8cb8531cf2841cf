#include <gtest/gtest.h>

#include "tests/app/strip/tabs/StripFixture.h"

namespace pellar {
namespace {

constexpr Color blue = Color::of(SystemColor::blue);
constexpr Color faint = Color::white(0.75);

class StripDrawing : public StripTest {
 protected:
  // What is painted of the first tab when it stands at 6...`6 + width` and has no background and no tag.
  static std::vector<DrawnItem> plainTab(const std::string& label, double x, double width) {
    return {roundedRect({x + 9, 11.5, 9, 9}, 2, blue),
            truncatedText(label, {x + 24, 8, width - 46, 16}, 12.5, Color::white(0.78)),
            plainText("×", {x + width - 17, 7}, 13, Color::white(0.5))};
  }
  static void append(std::vector<DrawnItem>& all, const std::vector<DrawnItem>& more) {
    all.insert(all.end(), more.begin(), more.end());
  }
  static std::vector<DrawnItem> officeTools() {
    return {centeredText("Rename", {738, 4, 52, 24}, 12, faint),
            centeredText("○ Auto-save", {792, 4, 82, 24}, 12, faint),
            centeredText("Save all", {876, 4, 64, 24}, 12, faint),
            centeredText("Close all", {942, 4, 70, 24}, 12, faint),
            centeredText("Groups", {1014, 4, 52, 24}, 12, faint),
            centeredText("+", {1068, 4, 22, 24}, 12, faint),
            centeredText("–", {1100, 4, 30, 24}, 12, faint),
            centeredText("□", {1132, 4, 30, 24}, 12, faint),
            centeredText("✕", {1164, 4, 30, 24}, 12, Color::white(0.9))};
  }
  // The things painted of one tab only, among those of the strip.
  std::vector<DrawnItem> paintedOfTab(std::size_t index) { return painted(view.geometry().tabRect(index)); }
};

TEST_F(StripDrawing, PaintsTabsInOrderThenTools) {
  std::vector<DrawnItem> expected;
  append(expected, plainTab("Plan", 6, 164));
  append(expected, plainTab("Report", 174, 164));
  append(expected, plainTab("Notes", 342, 164));
  append(expected, officeTools());
  EXPECT_EQ(painted(), expected);
}

TEST_F(StripDrawing, TheActiveTabIsLitAndItsLabelWhite) {
  view.setTabs({tab(101, "Plan"), tab(102, "Report", true), tab(103, "Notes")});
  const std::vector<DrawnItem> expected = {roundedRect({174, 3, 164, 26}, 8, Color::white(0.2)),
                                           roundedRect({183, 11.5, 9, 9}, 2, blue),
                                           truncatedText("Report", {198, 8, 118, 16}, 12.5, Color::white()),
                                           plainText("×", {321, 7}, 13, Color::white(0.5))};
  EXPECT_EQ(paintedOfTab(1), expected);
}

TEST_F(StripDrawing, WithMoreContrastTheActiveTabIsBlackWithAWhiteLineAroundIt) {
  view.setTabs({tab(101, "Plan"), tab(102, "Report", true), tab(103, "Notes")});
  RecordingCanvas canvas(everywhere, true);
  view.draw(canvas, view.geometry().tabRect(1));
  const auto& items = canvas.items();
  ASSERT_GE(items.size(), 2U);
  EXPECT_EQ(items[0], roundedRect({174, 3, 164, 26}, 8, Color::white()));
  EXPECT_EQ(items[1], roundedRect({176, 5, 160, 22}, 6, Color{0, 0, 0, 1, std::nullopt}));
  RecordingCanvas other(everywhere, true);
  view.draw(other, view.geometry().tabRect(0));
  ASSERT_EQ(other.items().size(), 3U) << "no other tab has it";
  EXPECT_EQ(other.items()[0], roundedRect({15, 11.5, 9, 9}, 2, blue));
}

TEST_F(StripDrawing, TheHoveredTabIsLitFaintly) {
  moveTo(200);
  EXPECT_EQ(paintedOfTab(1).front(), roundedRect({174, 3, 164, 26}, 8, Color::white(0.1)));
  EXPECT_EQ(paintedOfTab(0), plainTab("Plan", 6, 164));
}

TEST_F(StripDrawing, HoveringTheActiveTabLeavesItAsLitAsBefore) {
  view.setTabs({tab(101, "Plan", true), tab(102, "Report"), tab(103, "Notes")});
  const auto before = painted();
  moveTo(50);
  EXPECT_EQ(painted(), before);
}

TEST_F(StripDrawing, ATaggedTabHasABarAtItsFoot) {
  const Color red = Color::of(SystemColor::red);
  view.setTabs({{101, "Plan", red, false}, tab(102, "Report"), tab(103, "Notes")});
  std::vector<DrawnItem> expected = plainTab("Plan", 6, 164);
  expected.insert(expected.begin() + 1, roundedRect({12, 26, 152, 2}, 1, red));
  EXPECT_EQ(paintedOfTab(0), expected);
}

TEST_F(StripDrawing, TheMarkerHasTheApplicationsColour) {
  const Color accent{0.1, 0.2, 0.3, 1, std::nullopt};
  view.setAccent(accent);
  EXPECT_EQ(paintedOfTab(0).front(), roundedRect({15, 11.5, 9, 9}, 2, accent));
}

TEST_F(StripDrawing, AutoSaveIsGreenWhileItRuns) {
  view.setAutoSaveOn(true);
  EXPECT_EQ(painted(*view.geometry().toolRect(StripAction::autoSave)),
            (std::vector<DrawnItem>{
                centeredText("● Auto-save", {792, 4, 82, 24}, 12, Color::of(SystemColor::green))}));
  EXPECT_EQ(painted(*view.geometry().toolRect(StripAction::saveAll)),
            (std::vector<DrawnItem>{centeredText("Save all", {876, 4, 64, 24}, 12, faint)}));
}

TEST_F(StripDrawing, TheSearchButtonIsASymbolInAFourteenPointSquare) {
  view.setTabs(numberedTabs(5));
  ASSERT_TRUE(view.geometry().searchCompact());
  EXPECT_EQ(painted(*view.geometry().toolRect(StripAction::search)),
            (std::vector<DrawnItem>{symbol({716, 9, 14, 14}, faint)}));
}

TEST_F(StripDrawing, ACrowdedStripShowsTheMoreTool) {
  host.size.width = 900;
  view.setTabs(numberedTabs(12));
  const auto all = painted();
  const std::vector<DrawnItem> tools(all.end() - 5, all.end());
  EXPECT_EQ(tools, (std::vector<DrawnItem>{symbol({742, 9, 14, 14}, faint),
                                           centeredText("⋯", {764, 4, 26, 24}, 12, faint),
                                           centeredText("–", {800, 4, 30, 24}, 12, faint),
                                           centeredText("□", {832, 4, 30, 24}, 12, faint),
                                           centeredText("✕", {864, 4, 30, 24}, 12, Color::white(0.9))}));
}

TEST_F(StripDrawing, NarrowTabsShowTheirMarkerInTheMiddleAndNothingElse) {
  host.size.width = 300;
  view.setTabs(numberedTabs(40));
  view.setTabs([] {
    auto tabs = numberedTabs(40);
    tabs[0].tag = Color::of(SystemColor::purple);
    return tabs;
  }());
  EXPECT_EQ(paintedOfTab(0),
            (std::vector<DrawnItem>{roundedRect({14.5, 11.5, 9, 9}, 2, blue),
                                    roundedRect({12, 26, 14, 2}, 1, Color::of(SystemColor::purple))}));
}

// Crowded, without document tools, ten tabs: the tools take 132 from the right, margins 20 and the gaps 36.
TEST_F(StripDrawing, LabelAndCloseMarkAreShownFrom64On) {
  view.setOfficeTools(false);
  view.setTabs(numberedTabs(10));
  host.size.width = 192 + 10 * 64;
  ASSERT_DOUBLE_EQ(view.geometry().tabWidth(), 64);
  EXPECT_EQ(paintedOfTab(0), plainTab("1", 6, 64));

  host.size.width = 192 + 10 * 63;
  ASSERT_DOUBLE_EQ(view.geometry().tabWidth(), 63);
  EXPECT_EQ(paintedOfTab(0), (std::vector<DrawnItem>{roundedRect({6 + 31.5 - 4.5, 11.5, 9, 9}, 2, blue)}));
}

TEST_F(StripDrawing, ADraggedTabFollowsThePointerAndAMarkShowsWhereItWillLand) {
  press(at(50));
  dragTo(300);
  std::vector<DrawnItem> expected = {roundedRect({218, 3, 164, 26}, 8, Color::white(0.1))};
  append(expected, plainTab("Plan", 218, 164));
  append(expected, plainTab("Report", 174, 164));
  append(expected, plainTab("Notes", 342, 164));
  expected.push_back(roundedRect({339, 5, 2, 22}, 1, Color::white(0.9)));
  append(expected, officeTools());
  EXPECT_EQ(painted(), expected);
}

TEST_F(StripDrawing, ATabDraggedPastTheLastIsMarkedBehindIt) {
  press(at(50));
  dragTo(900);
  const auto all = painted();
  EXPECT_EQ(std::count(all.begin(), all.end(), roundedRect({507, 5, 2, 22}, 1, Color::white(0.9))), 1);
}

TEST_F(StripDrawing, TheLastTabDraggedToItsOwnPlaceIsMarkedBehindTheOneBefore) {
  press(at(400));
  dragTo(450);
  const auto all = painted();
  EXPECT_EQ(std::count(all.begin(), all.end(), roundedRect({339, 5, 2, 22}, 1, Color::white(0.9))), 1);
}

TEST_F(StripDrawing, DraggingTheStripOrACloseMarkMovesNoTab) {
  const auto before = painted();
  press(at(515));
  dragTo(300);
  EXPECT_EQ(painted(), before);
  release(300);
  press(onClose(0));
  dragTo(300);
  EXPECT_EQ(painted(), before);
}

TEST_F(StripDrawing, AfterTheDropTheTabsStandInTheirSlotsAgain) {
  const auto before = painted();
  press(at(50));
  dragTo(300);
  release(300);
  EXPECT_EQ(painted(), before);
}

TEST_F(StripDrawing, PaintsOnlyWhatIsDirty) {
  EXPECT_EQ(painted({174, 3, 164, 26}), plainTab("Report", 174, 164));
  EXPECT_EQ(painted({1164, 4, 30, 24}),
            (std::vector<DrawnItem>{centeredText("✕", {1164, 4, 30, 24}, 12, Color::white(0.9))}));
  EXPECT_TRUE(painted({510, 0, 200, 32}).empty());
  press(at(50));
  dragTo(300);
  EXPECT_TRUE(painted({520, 0, 200, 32}).empty()) << "the mark of a drag no more than anything else";
}

TEST_F(StripDrawing, WithoutTabsOnlyToolsArePainted) {
  view.setTabs({});
  EXPECT_EQ(painted(), officeTools());
}

TEST_F(StripDrawing, ALabelIsPaintedAsItIsHoweverOdd) {
  const std::string odd = "\xFF\n" + std::string(100000, 'x');
  view.setTabs({tab(101, odd), tab(102, ""), tab(103, "מסמך")});
  EXPECT_EQ(paintedOfTab(0), plainTab(odd, 6, 164));
  EXPECT_EQ(paintedOfTab(1), plainTab("", 174, 164));
  EXPECT_EQ(paintedOfTab(2), plainTab("מסמך", 342, 164));
}

}  // namespace
}  // namespace pellar
