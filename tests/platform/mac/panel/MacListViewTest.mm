#include "platform/mac/panel/MacListView.h"

#include "platform/Panel.h"
#import "platform/mac/panel/HostedView.h"
#import "platform/mac/panel/ListCellView.h"
#include "platform/mac/panel/MacViewHost.h"
#include "platform/mac/system/Conversions.h"
#include "tests/contract/ContractTest.h"

namespace pellar::contract {

// A list in a panel that is not shown.
class MacListViewTest : public ContractTest {
 protected:
  static constexpr ListStyle style{
      .rowHeight = 34,
      .title = {.inset = 4, .top = 1, .height = 16, .font = {12.5}, .color = Color::white()},
      .subtitle = {.inset = 4,
                   .top = 19,
                   .height = 13,
                   .font = {10.5},
                   .color = Color::white(0.55),
                   .truncation = ListLabel::Truncation::middle}};

  MacListViewTest()
      : panel(world().platform().panels.makePanel({.contentSize = {480, 300}})),
        list(panel->host().makeListView(style)) {
    list->setFrame({10, 8, 460, 284});
    NSView* around = static_cast<MacViewHost&>(panel->host()).native();
    scroll = static_cast<NSScrollView*>(around.subviews.firstObject);
    table = static_cast<NSTableView*>(scroll.documentView);
    list->reload(3, [](std::size_t row) {
      return ListRow{"Title " + std::to_string(row), "/Users/ann/" + std::to_string(row)};
    });
  }
  void TearDown() override { list.reset(); }

  ListCellView* cell(NSInteger row) {
    NSView* made = [table viewAtColumn:0 row:row makeIfNecessary:YES];
    [made layoutSubtreeIfNeeded];
    return static_cast<ListCellView*>(made);
  }

  std::unique_ptr<Panel> panel;
  std::unique_ptr<ListView> list;
  NSScrollView* scroll;
  NSTableView* table;
};

TEST_F(MacListViewTest, IsOneColumnWithoutHeaderOrGround) {
  ASSERT_TRUE([scroll isKindOfClass:NSScrollView.class]);
  EXPECT_TRUE(scroll.hasVerticalScroller);
  EXPECT_FALSE(scroll.drawsBackground);
  EXPECT_EQ(list->frame(), (ViewRect{10, 8, 460, 284}));
  ASSERT_TRUE([table isKindOfClass:NSTableView.class]);
  ASSERT_EQ(table.tableColumns.count, 1U);
  EXPECT_EQ(fromNSString(table.tableColumns.firstObject.identifier), "path");
  EXPECT_TRUE(table.headerView == nil);
  EXPECT_EQ(table.rowHeight, 34);
  EXPECT_TRUE([table.backgroundColor isEqual:NSColor.clearColor]);
  EXPECT_TRUE([table acceptsFirstMouse:nil]);
}

TEST_F(MacListViewTest, ARowShowsItsTwoTextsWhereTheStyleSays) {
  ListCellView* shown = cell(1);
  ASSERT_TRUE([shown isKindOfClass:ListCellView.class]);
  ASSERT_EQ(shown.subviews.count, 2U);
  NSTextField* title = static_cast<NSTextField*>(shown.subviews[0]);
  NSTextField* subtitle = static_cast<NSTextField*>(shown.subviews[1]);
  EXPECT_EQ(fromNSString(title.stringValue), "Title 1");
  EXPECT_EQ(fromNSString(subtitle.stringValue), "/Users/ann/1");
  const CGFloat width = NSWidth(shown.bounds) - 8;
  EXPECT_TRUE(NSEqualRects(title.frame, NSMakeRect(4, 1, width, 16)));
  EXPECT_TRUE(NSEqualRects(subtitle.frame, NSMakeRect(4, 19, width, 13)));
  EXPECT_EQ(title.font.pointSize, 12.5);
  EXPECT_EQ(title.lineBreakMode, NSLineBreakByTruncatingTail);
  EXPECT_EQ(subtitle.lineBreakMode, NSLineBreakByTruncatingMiddle);
}

TEST_F(MacListViewTest, ARowIsChosenByTheFirstClickOnItsText) {
  [cell(1) layoutSubtreeIfNeeded];
  const NSRect row = [table rectOfRow:1];
  for (const CGFloat x : {NSMinX(row) + 6, NSMaxX(row) - 6}) {
    const NSPoint place = [scroll.superview convertPoint:NSMakePoint(x, NSMinY(row) + 8) fromView:table];
    NSView* hit = [scroll hitTest:place];
    ASSERT_TRUE(hit != nil);
    EXPECT_TRUE([hit acceptsFirstMouse:nil]) << "the view under the pointer is asked";
    EXPECT_EQ(hit, table);
  }
}

TEST_F(MacListViewTest, ATextWithoutEndIsCut) {
  std::string endless = "a";
  for (int mark = 0; mark < 100'000; ++mark) endless += "\u0301";
  list->reload(1, [&endless](std::size_t) { return ListRow{endless, endless}; });
  for (NSView* label in cell(0).subviews)
    EXPECT_LE(static_cast<NSTextField*>(label).stringValue.length, 1002U);
}

TEST_F(MacListViewTest, SelectsRowsThatExistAndForgetsThemWithTheRows) {
  EXPECT_EQ(list->selectedRow(), std::nullopt);
  list->selectRow(2);
  list->selectRow(3);
  EXPECT_EQ(list->selectedRow(), 2U);
  list->reload(5, [](std::size_t) { return ListRow{}; });
  EXPECT_EQ(list->selectedRow(), std::nullopt);
  EXPECT_EQ(table.numberOfRows, 5);
}

TEST_F(MacListViewTest, TakesKeysWhileItHasTheFocus) {
  MacListView& keys = static_cast<MacListView&>(*list);
  list->focus();
  EXPECT_TRUE(list->hasFocus());
  constexpr std::uint16_t down = 125;
  constexpr std::uint16_t up = 126;
  constexpr std::uint16_t escape = 53;
  EXPECT_TRUE(keys.takeKey(down));
  EXPECT_EQ(list->selectedRow(), 0U);
  for (int press = 0; press < 4; ++press) keys.takeKey(down);
  EXPECT_EQ(list->selectedRow(), 2U) << "the last one";
  keys.takeKey(up);
  EXPECT_EQ(list->selectedRow(), 1U);
  EXPECT_FALSE(keys.takeKey(escape));
  std::vector<int> offered;
  list->setOnKeyDown([&offered](std::uint16_t code) {
    offered.push_back(code);
    return true;
  });
  EXPECT_TRUE(keys.takeKey(escape));
  EXPECT_TRUE(keys.takeKey(down));
  EXPECT_EQ(offered, (std::vector<int>{53, 125}));
  EXPECT_EQ(list->selectedRow(), 1U);
}

TEST_F(MacListViewTest, ItsSelectionHasTheAccentColourOnlyWithTheKeys) {
  const auto isEmphasized = [this] { return [table.delegate tableView:table rowViewForRow:0].emphasized; };
  EXPECT_FALSE(isEmphasized());
  list->focus();
  EXPECT_TRUE(isEmphasized());
  panel->orderOut();
  EXPECT_FALSE(list->hasFocus());
  EXPECT_FALSE(isEmphasized());
}

TEST_F(MacListViewTest, GoesOutOfTheViewWithItsOwner) {
  NSView* around = scroll.superview;
  list->focus();
  list.reset();
  EXPECT_EQ(around.subviews.count, 0U);
  EXPECT_TRUE(table.dataSource == nil);
}

}  // namespace pellar::contract
