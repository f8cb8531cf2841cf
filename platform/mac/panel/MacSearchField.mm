#include "platform/mac/panel/MacSearchField.h"

#import <QuartzCore/QuartzCore.h>

#include <utility>

#include "platform/mac/panel/ListFocus.h"
#import "platform/mac/panel/StripSearchField.h"
#include "platform/mac/system/Conversions.h"

@interface SearchFieldDelegate : NSObject <NSSearchFieldDelegate>
@end

@implementation SearchFieldDelegate {
 @public
  std::function<void()> onChange;
  pellar::SearchField::CommandHandler onCommand;
  std::string knownText;  // the last one that was told or set
}

// Called for typing alone: a text set from code sends nothing (NSControl.h).
- (void)controlTextDidChange:(NSNotification*)notification {
  [self textChangedIn:notification.object];
}

// The button that empties the field need not count as typing.
- (void)searchFieldDidEndSearching:(NSSearchField*)field {
  [self textChangedIn:field];
}

- (void)textChangedIn:(NSControl*)field {
  const std::string text = pellar::fromNSString(field.stringValue);
  if (std::exchange(knownText, text) == text) return;
  // A copy, since the handler may set another or take the field away.
  const auto handler = onChange;
  if (handler) handler();
}

- (BOOL)control:(NSControl*)control textView:(NSTextView*)textView doCommandBySelector:(SEL)selector {
  const auto handler = onCommand;
  return handler && handler(pellar::fromNSString(NSStringFromSelector(selector)));
}

@end

namespace pellar {

MacSearchField::MacSearchField(NSView* parent, std::shared_ptr<ListFocus> listFocus)
    : listFocus_(std::move(listFocus)),
      field_([[StripSearchField alloc] initWithFrame:NSZeroRect]),
      delegate_([[SearchFieldDelegate alloc] init]) {
  field_.delegate = delegate_;
  field_.controlSize = NSControlSizeSmall;
  field_.font = [NSFont systemFontOfSize:12];
  field_.focusRingType = NSFocusRingTypeNone;
  field_.appearance = [NSAppearance appearanceNamed:NSAppearanceNameDarkAqua];
  field_.wantsLayer = YES;
  field_.layer.cornerRadius = 8;
  [parent addSubview:field_];
}

MacSearchField::~MacSearchField() {
  field_.onActivate = nil;
  field_.delegate = nil;
  [field_ removeFromSuperview];
}

// Also right while the field is edited: -stringValue takes over what its editor holds.
std::string MacSearchField::text() const {
  return fromNSString(field_.stringValue);
}

void MacSearchField::setText(const std::string& text) {
  NSString* native = toNSString(text);
  // Before: the field may say while it is emptied that a search has ended, which is not typing.
  delegate_->knownText = fromNSString(native);
  field_.stringValue = native;
  delegate_->knownText = this->text();
}

void MacSearchField::setPlaceholder(const std::string& text) {
  field_.placeholderString = toNSString(text);
}

void MacSearchField::setFrame(const ViewRect& frame) {
  field_.frame = toNSRect(frame);
}

ViewRect MacSearchField::frame() const {
  return fromNSRect<ViewSpace>(field_.frame);
}

void MacSearchField::setHidden(bool hidden) {
  field_.hidden = hidden;
}

bool MacSearchField::isHidden() const {
  return field_.hidden;
}

void MacSearchField::focus() {
  if (field_.hidden) return;
  listFocus_->end();
  // A field that becomes first responder anew selects its text, and the next letter would replace it.
  if (field_.currentEditor == nil) [field_.window makeFirstResponder:field_];
}

void MacSearchField::setOnActivate(std::function<void()> callback) {
  if (!callback) {
    field_.onActivate = nil;
    return;
  }
  const auto kept = std::make_shared<const std::function<void()>>(std::move(callback));
  field_.onActivate = ^{
    // The callback may set another, and with it end this block.
    const auto running = kept;
    (*running)();
  };
}

void MacSearchField::setOnChange(std::function<void()> callback) {
  delegate_->onChange = std::move(callback);
}

void MacSearchField::setOnCommand(CommandHandler handler) {
  delegate_->onCommand = std::move(handler);
}

}  // namespace pellar
