#include "platform/mac/panel/MacListView.h"

#include <Carbon/Carbon.h>

#include <algorithm>
#include <utility>

#import "platform/mac/panel/ListCellView.h"
#include "platform/mac/panel/ListFocus.h"
#include "platform/mac/system/Conversions.h"

// A table that acts on the first click, and says when it is pressed.
@interface ListTable : NSTableView
@property(nonatomic, copy) void (^onPress)(void);
@end

@implementation ListTable

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
  return YES;
}

// A first click is asked of the view under the pointer (NSView.h), which would be a row's label. Nothing in a
// row takes the mouse, so the table does for all of them.
- (NSView*)hitTest:(NSPoint)point {
  return [super hitTest:point] != nil ? self : nil;
}

- (void)mouseDown:(NSEvent*)event {
  // A press that comes after its panel left the screen.
  if (!self.window.visible) return;
  if (self.onPress != nil) self.onPress();
  [super mouseDown:event];
}

@end

// A row whose selection has the colour of one with the keys although its window is never key.
@interface ListRowView : NSTableRowView
@property(nonatomic) BOOL hasKeys;
@end

@implementation ListRowView

- (BOOL)isEmphasized {
  return self.hasKeys;
}

- (void)setHasKeys:(BOOL)hasKeys {
  _hasKeys = hasKeys;
  self.needsDisplay = YES;
}

@end

// What the table asks and tells.
@interface ListSource : NSObject <NSTableViewDataSource, NSTableViewDelegate>
@property(nonatomic) BOOL hasKeys;
@end

@implementation ListSource {
 @public
  pellar::ListStyle style;
  std::size_t rowCount;
  pellar::ListView::RowProvider row;
  std::function<void()> onDoubleClick;
}

- (NSInteger)numberOfRowsInTableView:(NSTableView*)table {
  return static_cast<NSInteger>(rowCount);
}

- (NSView*)tableView:(NSTableView*)table viewForTableColumn:(NSTableColumn*)column row:(NSInteger)index {
  ListCellView* cell = [table makeViewWithIdentifier:column.identifier owner:self];
  if (cell == nil) {
    cell = [[ListCellView alloc] initWithStyle:style];
    cell.identifier = column.identifier;
  }
  const auto asked = static_cast<std::size_t>(index);
  [cell showRow:row && asked < rowCount ? row(asked) : pellar::ListRow()];
  return cell;
}

- (NSTableRowView*)tableView:(NSTableView*)table rowViewForRow:(NSInteger)index {
  ListRowView* view = [[ListRowView alloc] init];
  view.hasKeys = self.hasKeys;
  return view;
}

- (void)doubleClicked:(NSTableView*)table {
  // Absent (-1) below the last row.
  if (table.clickedRow < 0) return;
  // A copy, since the handler may take the list away.
  const auto handler = onDoubleClick;
  if (handler) handler();
}

@end

namespace pellar {
namespace {

ListSource* makeSource(const ListStyle& style) {
  ListSource* source = [[ListSource alloc] init];
  source->style = style;
  return source;
}

ListTable* makeTable(ListSource* source, const ListStyle& style) {
  ListTable* table = [[ListTable alloc] initWithFrame:NSZeroRect];
  NSTableColumn* column = [[NSTableColumn alloc] initWithIdentifier:@"path"];
  column.resizingMask = NSTableColumnAutoresizingMask;
  [table addTableColumn:column];
  table.headerView = nil;
  // Rows as wide as the table and nothing between them, so that a label stands where its style says.
  table.style = NSTableViewStylePlain;
  table.intercellSpacing = NSZeroSize;
  table.columnAutoresizingStyle = NSTableViewLastColumnOnlyAutoresizingStyle;
  table.rowHeight = style.rowHeight;
  table.backgroundColor = NSColor.clearColor;
  table.allowsEmptySelection = YES;
  table.allowsMultipleSelection = NO;
  table.focusRingType = NSFocusRingTypeNone;
  table.dataSource = source;
  table.delegate = source;
  table.target = source;
  table.doubleAction = @selector(doubleClicked:);
  return table;
}

NSScrollView* makeScrollView(NSTableView* table) {
  NSScrollView* scroll = [[NSScrollView alloc] initWithFrame:NSZeroRect];
  scroll.hasVerticalScroller = YES;
  scroll.drawsBackground = NO;
  scroll.borderType = NSNoBorder;
  scroll.documentView = table;
  return scroll;
}

}  // namespace

MacListView::MacListView(NSView* parent, std::shared_ptr<ListFocus> listFocus, const ListStyle& style)
    : listFocus_(std::move(listFocus)),
      source_(makeSource(style)),
      table_(makeTable(source_, style)),
      scroll_(makeScrollView(table_)) {
  table_.onPress = ^{
    focus();
  };
  [parent addSubview:scroll_];
}

MacListView::~MacListView() {
  if (hasFocus()) listFocus_->end();
  table_.onPress = nil;
  table_.target = nil;
  table_.dataSource = nil;
  table_.delegate = nil;
  source_->row = nullptr;
  source_->onDoubleClick = nullptr;
  [scroll_ removeFromSuperview];
}

void MacListView::reload(std::size_t rowCount, RowProvider row) {
  [table_ deselectAll:nil];
  source_->rowCount = rowCount;
  source_->row = std::move(row);
  [table_ reloadData];
  if (rowCount > 0) [table_ scrollRowToVisible:0];
}

std::optional<std::size_t> MacListView::selectedRow() const {
  const NSInteger row = table_.selectedRow;
  if (row < 0) return std::nullopt;
  return static_cast<std::size_t>(row);
}

void MacListView::selectRow(std::size_t row) {
  if (row >= source_->rowCount) return;
  [table_ selectRowIndexes:[NSIndexSet indexSetWithIndex:row] byExtendingSelection:NO];
  [table_ scrollRowToVisible:static_cast<NSInteger>(row)];
}

void MacListView::setFrame(const ViewRect& frame) {
  scroll_.frame = toNSRect(frame);
  [table_ sizeLastColumnToFit];
}

ViewRect MacListView::frame() const {
  return fromNSRect<ViewSpace>(scroll_.frame);
}

ViewRect MacListView::rowFrame(std::size_t row) const {
  if (row >= source_->rowCount) return {};
  const NSRect inTable = [table_ rectOfRow:static_cast<NSInteger>(row)];
  return fromNSRect<ViewSpace>([table_ convertRect:inTable toView:scroll_.superview]);
}

void MacListView::focus() {
  listFocus_->give(*this);
}

bool MacListView::hasFocus() const {
  return listFocus_->isAt(*this);
}

void MacListView::setOnDoubleClick(std::function<void()> callback) {
  source_->onDoubleClick = std::move(callback);
}

bool MacListView::takeKey(std::uint16_t keyCode) {
  // The handler may close the panel, and a copy outlives what it then sets anew.
  if (const auto handler = onKeyDown_; handler && handler(keyCode)) return true;
  return moveSelection(keyCode);
}

bool MacListView::moveSelection(std::uint16_t keyCode) {
  const std::size_t count = source_->rowCount;
  const auto selected = selectedRow();
  if (keyCode == kVK_DownArrow) {
    if (count > 0) selectRow(selected ? std::min(*selected + 1, count - 1) : 0);
    return true;
  }
  if (keyCode == kVK_UpArrow) {
    if (count > 0) selectRow(selected ? *selected - std::min<std::size_t>(*selected, 1) : count - 1);
    return true;
  }
  return false;
}

void MacListView::showFocus() {
  const BOOL hasKeys = hasFocus();
  source_.hasKeys = hasKeys;
  [table_ enumerateAvailableRowViewsUsingBlock:^(NSTableRowView* view, NSInteger) {
    static_cast<ListRowView*>(view).hasKeys = hasKeys;
  }];
}

NSWindow* MacListView::window() const {
  return scroll_.window;
}

}  // namespace pellar
