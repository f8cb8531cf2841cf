#import "platform/mac/panel/ListCellView.h"

#include "core/CutText.h"
#include "platform/mac/system/Conversions.h"

namespace {

NSTextField* makeLabel(const pellar::ListLabel& look) {
  NSTextField* label = [NSTextField labelWithString:@""];
  label.font = pellar::toNSFont(look.font);
  label.textColor = pellar::toNSColor(look.color);
  label.usesSingleLineMode = YES;
  label.lineBreakMode = look.truncation == pellar::ListLabel::Truncation::middle
                            ? NSLineBreakByTruncatingMiddle
                            : NSLineBreakByTruncatingTail;
  return label;
}

NSString* shownText(const std::string& text, const pellar::ListLabel& look) {
  using namespace pellar;
  return drawnText(look.truncation == ListLabel::Truncation::middle ? CutText::inTheMiddle(text, longestRow)
                                                                    : CutText::atTheEnd(text, longestRow));
}

}  // namespace

@implementation ListCellView {
  pellar::ListStyle _style;
  NSTextField* _title;
  NSTextField* _subtitle;
}

- (instancetype)initWithStyle:(const pellar::ListStyle&)style {
  self = [super initWithFrame:NSZeroRect];
  if (self != nil) {
    _style = style;
    _title = makeLabel(style.title);
    _subtitle = makeLabel(style.subtitle);
    [self addSubview:_title];
    [self addSubview:_subtitle];
    // What a screen reader says of the row.
    self.textField = _title;
  }
  return self;
}

- (BOOL)isFlipped {
  return YES;
}

- (void)layout {
  [super layout];
  [self place:_title by:_style.title];
  [self place:_subtitle by:_style.subtitle];
}

- (void)place:(NSTextField*)label by:(const pellar::ListLabel&)look {
  const CGFloat width = MAX(0, NSWidth(self.bounds) - 2 * look.inset);
  label.frame = NSMakeRect(look.inset, look.top, width, look.height);
}

- (void)showRow:(const pellar::ListRow&)row {
  _title.stringValue = shownText(row.title, _style.title);
  _subtitle.stringValue = shownText(row.subtitle, _style.subtitle);
}

@end
