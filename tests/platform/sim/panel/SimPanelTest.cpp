#include <gtest/gtest.h>

#include <memory>

#include "platform/sim/SimMac.h"
#include "platform/sim/panel/SimPanel.h"
#include "platform/sim/panel/SimSearchField.h"
#include "tests/contract/RecordingView.h"

namespace pellar {

class SimPanelTest : public ::testing::Test {
 protected:
  SimPanel& make(PanelLevel level, const ScreenRect& frame) {
    PanelStyle style;
    style.level = level;
    style.canBecomeKey = true;
    panels.push_back(mac.panels().makePanel(style));
    auto& panel = dynamic_cast<SimPanel&>(*panels.back());
    panel.setView(&view);
    panel.setFrame(frame, false);
    panel.orderFrontRegardless();
    return panel;
  }
  static void box(Canvas& canvas, const ViewRect& rect) { canvas.fillRoundedRect(rect, 0, Color::white()); }

  SimMac mac;
  contract::RecordingView view;
  std::vector<std::unique_ptr<Panel>> panels;
};

TEST_F(SimPanelTest, StacksByLevelAndThenByOrder) {
  SimPanel& menu = make(PanelLevel::popUpMenu, {0, 0, 100, 100});
  SimPanel& first = make(PanelLevel::floating, {0, 0, 100, 100});
  SimPanel& second = make(PanelLevel::floating, {0, 0, 100, 100});
  EXPECT_EQ(mac.panels().all(), (std::vector{&menu, &second, &first}));
  first.orderFrontRegardless();
  menu.orderOut();
  EXPECT_EQ(mac.panels().at({50, 50}), &first);
}

TEST_F(SimPanelTest, KeepsOutsideTheRepaintedPartWhatStoodThere) {
  SimPanel& panel = make(PanelLevel::floating, {0, 0, 100, 30});
  view.paint = [](Canvas& canvas) {
    box(canvas, {0, 0, 10, 10});
    box(canvas, {50, 0, 10, 10});
  };
  mac.settle();
  view.paint = [](Canvas& canvas) { box(canvas, {50, 5, 10, 10}); };
  panel.host().setNeedsDisplay({40, 0, 30, 30});
  mac.settle();
  ASSERT_EQ(panel.drawing().items().size(), 2U);
  EXPECT_EQ(panel.drawing().items()[0].rect, (ViewRect{0, 0, 10, 10}));
  EXPECT_EQ(panel.drawing().items()[1].rect, (ViewRect{50, 5, 10, 10}));
  EXPECT_FALSE(panel.drawing().isTorn());
  EXPECT_EQ(panel.simHost().repaints().back(), (ViewRect{40, 0, 30, 30}));
}

TEST_F(SimPanelTest, TellsWhenAViewAskedForTooSmallARepaint) {
  SimPanel& panel = make(PanelLevel::floating, {0, 0, 100, 30});
  view.paint = [](Canvas& canvas) { box(canvas, {50, 0, 20, 10}); };
  mac.settle();
  view.paint = [](Canvas& canvas) { box(canvas, {55, 0, 20, 10}); };
  panel.host().setNeedsDisplay({50, 0, 20, 30});
  mac.settle();
  EXPECT_TRUE(panel.drawing().isTorn());
  panel.host().setNeedsDisplay();
  mac.settle();
  EXPECT_FALSE(panel.drawing().isTorn());
}

TEST_F(SimPanelTest, RepaintsAllRequestsOfATurnTogether) {
  SimPanel& panel = make(PanelLevel::floating, {0, 0, 100, 30});
  mac.settle();
  const int draws = view.draws;
  panel.host().setNeedsDisplay({0, 0, 10, 10});
  panel.host().setNeedsDisplay({20, 0, 10, 10});
  mac.settle();
  EXPECT_EQ(view.draws, draws + 1);
  EXPECT_EQ(panel.simHost().repaints().back(), (ViewRect{0, 0, 30, 10}));
}

TEST_F(SimPanelTest, DoesNotRepaintAPanelThatOnlyMoves) {
  SimPanel& panel = make(PanelLevel::floating, {0, 0, 100, 30});
  mac.settle();
  const int draws = view.draws;
  panel.setFrame({40, 50, 100, 30}, true);
  mac.settle();
  EXPECT_EQ(view.draws, draws);
  EXPECT_EQ(panel.frameChanges(), 2);
  EXPECT_EQ(panel.cameUpAt(), (ScreenRect{0, 0, 100, 30}));
}

TEST_F(SimPanelTest, SurvivesAPanelDeletedByItsOwnPress) {
  make(PanelLevel::floating, {0, 0, 100, 30});
  view.onMouseDown = [this] { panels.clear(); };
  mac.pointer().click({50, 15});
  mac.pointer().moveTo({60, 15});
  EXPECT_TRUE(view.heard("down"));
  EXPECT_FALSE(view.heard("up"));
}

TEST_F(SimPanelTest, MakesPellarFrontmostByAClickIntoAFieldOnlyWhenToldTo) {
  auto editor = mac.launch({.bundleId = "com.example.editor", .name = "Editor"});
  SimPanel& panel = make(PanelLevel::floating, {0, 0, 300, 32});
  const auto field = panel.host().makeSearchField();
  field->setFrame({10, 5, 210, 22});
  mac.pointer().click({50, 15});
  EXPECT_TRUE(panel.isKey());
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, editor.pid());
  mac.type("pl");
  mac.pressKey("deleteBackward:");
  EXPECT_EQ(field->text(), "p");
  EXPECT_EQ(editor.typed(), "");
  mac.pointer().keyPanelMakesPellarFrontmost = true;
  mac.pointer().click({50, 15});
  EXPECT_EQ(mac.workspace().frontmostApplication()->bundleId, mac.workspace().ownBundleId());
}

TEST_F(SimPanelTest, CutsALongTextOffAndReplacesBadBytes) {
  SimPanel& panel = make(PanelLevel::floating, {0, 0, 100, 30});
  view.paint = [](Canvas& canvas) {
    canvas.drawTruncatedText("Quarterly report", {0, 0, 55, 16}, {10, FontWeight::regular}, Color::white());
    canvas.drawText("a\xff\n", {0, 16}, {10, FontWeight::regular}, Color::white());
  };
  mac.settle();
  EXPECT_EQ(panel.drawing().items()[0].text, "Quarterly report");
  EXPECT_EQ(panel.drawing().items()[0].shown, "Quarterly\u2026");
  EXPECT_EQ(panel.drawing().items()[1].shown, "a\uFFFD ");
}

}  // namespace pellar
