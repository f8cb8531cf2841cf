#import "platform/mac/desktop/WindowContent.h"

#include <variant>

#include "core/CutText.h"
#include "platform/mac/system/Conversions.h"

@implementation ClosureButton {
  void (^_handler)(void);
}

+ (instancetype)buttonWithTitle:(NSString*)title handler:(void (^)(void))handler {
  ClosureButton* button = [self buttonWithTitle:title target:nil action:@selector(fire)];
  button->_handler = [handler copy];
  // A control holds its target weakly.
  button.target = button;
  return button;
}

// The handler may destroy the window, and with it this button.
- (void)fire {
  const auto handler = _handler;
  if (handler != nil) handler();
}

@end

namespace pellar {
namespace {

NSRect nativeFrame(const WindowFrame& frame) {
  return NSMakeRect(frame.x, frame.y, frame.width, frame.height);
}

NSFontWeight nativeWeight(LabelWeight weight) {
  return weight == LabelWeight::semibold ? NSFontWeightSemibold : NSFontWeightRegular;
}

// Plain text is shown as it is, line breaks too.
NSTextField* makeLabel(const WindowLabel& label, WindowLabels* labels) {
  NSString* text = toNSString(CutText::atTheEnd(label.text, longestRow));
  const bool wraps = label.wrapWidth > 0 || label.frame.has_value();
  NSTextField* native =
      wraps ? [NSTextField wrappingLabelWithString:text] : [NSTextField labelWithString:text];
  native.selectable = NO;
  native.font = [NSFont systemFontOfSize:label.fontSize weight:nativeWeight(label.weight)];
  native.textColor =
      label.color == TextColor::secondaryLabel ? NSColor.secondaryLabelColor : NSColor.labelColor;
  if (label.centred) native.alignment = NSTextAlignmentCenter;
  native.lineBreakMode = wraps ? NSLineBreakByWordWrapping : NSLineBreakByTruncatingTail;
  if (!wraps) native.usesSingleLineMode = YES;
  // A text that is too long is cut off instead of making the window wider.
  [native setContentCompressionResistancePriority:NSLayoutPriorityWindowSizeStayPut - 1
                                   forOrientation:NSLayoutConstraintOrientationHorizontal];
  if (label.wrapWidth > 0) native.preferredMaxLayoutWidth = label.wrapWidth;
  native.maximumNumberOfLines = label.maximumLines;
  if (!label.id.empty()) labels[toNSString(label.id)] = native;
  return native;
}

NSButton* makeButton(const WindowButton& button) {
  const auto handler = button.handler;
  ClosureButton* native =
      [ClosureButton buttonWithTitle:drawnText(CutText::atTheEnd(button.title, longestRow))
                             handler:^{
                               if (handler) handler();
                             }];
  if (button.bezel == ButtonBezel::inlined) native.bezelStyle = NSBezelStyleInline;
  if (button.isDefault) native.keyEquivalent = @"\r";
  return native;
}

NSStackView* makeRow(const WindowButtonRow& row) {
  NSStackView* native = [[NSStackView alloc] initWithFrame:NSZeroRect];
  native.orientation = NSUserInterfaceLayoutOrientationHorizontal;
  native.spacing = row.spacing;
  for (const auto& button : row.buttons) [native addArrangedSubview:makeButton(button)];
  return native;
}

NSView* makeSpacer(const WindowSpacer& spacer) {
  NSView* native = [[NSView alloc] initWithFrame:NSZeroRect];
  [native.heightAnchor constraintEqualToConstant:spacer.height].active = YES;
  return native;
}

NSScrollView* makeTextBox(const WindowTextBox& box) {
  NSScrollView* native = [NSTextView scrollableTextView];
  native.borderType = NSBezelBorder;
  native.hasVerticalScroller = YES;
  native.drawsBackground = NO;
  [native.heightAnchor constraintEqualToConstant:box.height].active = YES;
  if ([native.documentView isKindOfClass:NSTextView.class]) {
    NSTextView* text = static_cast<NSTextView*>(native.documentView);
    text.editable = NO;
    text.drawsBackground = NO;
    text.textContainerInset = NSMakeSize(box.inset, box.inset);
    text.string = toNSString(box.text);
    // Of the text that is there, so after it. Black unless told: it would not be seen on a dark window.
    text.font = [NSFont systemFontOfSize:NSFont.systemFontSize];
    text.textColor = NSColor.labelColor;
  }
  return native;
}

NSStackView* makeColumn(NSView* content, const WindowDescription& description) {
  NSStackView* column = [[NSStackView alloc] initWithFrame:NSZeroRect];
  column.orientation = NSUserInterfaceLayoutOrientationVertical;
  column.alignment = description.alignment == StackAlignment::trailing ? NSLayoutAttributeTrailing
                                                                       : NSLayoutAttributeCenterX;
  column.spacing = description.spacing;
  const WindowInsets& insets = description.insets;
  column.edgeInsets = NSEdgeInsetsMake(insets.top, insets.left, insets.bottom, insets.right);
  column.translatesAutoresizingMaskIntoConstraints = NO;
  [content addSubview:column];
  [NSLayoutConstraint activateConstraints:@[
    [column.leadingAnchor constraintEqualToAnchor:content.leadingAnchor],
    [column.trailingAnchor constraintEqualToAnchor:content.trailingAnchor],
    [column.topAnchor constraintEqualToAnchor:content.topAnchor],
    // A window grows rather than cut its last row off.
    description.columnReachesBottom
        ? [column.bottomAnchor constraintEqualToAnchor:content.bottomAnchor]
        : [column.bottomAnchor constraintLessThanOrEqualToAnchor:content.bottomAnchor]
  ]];
  return column;
}

// The frame of its own that an element has.
std::optional<WindowFrame> frameOf(const WindowElement& element) {
  if (const auto* label = std::get_if<WindowLabel>(&element)) return label->frame;
  if (const auto* button = std::get_if<WindowButton>(&element)) return button->frame;
  return std::nullopt;
}

NSView* makeView(const WindowElement& element, WindowLabels* labels) {
  if (const auto* label = std::get_if<WindowLabel>(&element)) return makeLabel(*label, labels);
  if (const auto* spacer = std::get_if<WindowSpacer>(&element)) return makeSpacer(*spacer);
  if (const auto* box = std::get_if<WindowTextBox>(&element)) return makeTextBox(*box);
  if (const auto* button = std::get_if<WindowButton>(&element)) return makeButton(*button);
  return makeRow(std::get<WindowButtonRow>(element));
}

}  // namespace

void fillWindow(NSView* content, const WindowDescription& description, WindowLabels* labels) {
  NSStackView* column = nil;
  for (const auto& element : description.elements) {
    NSView* view = makeView(element, labels);
    if (const auto frame = frameOf(element)) {
      view.translatesAutoresizingMaskIntoConstraints = YES;
      view.frame = nativeFrame(*frame);
      [content addSubview:view];
      continue;
    }
    if (column == nil) column = makeColumn(content, description);
    [column addArrangedSubview:view];
    if (std::holds_alternative<WindowTextBox>(element)) {
      // Its text has no width of its own: it takes the column's.
      const double sides = description.insets.left + description.insets.right;
      [view.widthAnchor constraintEqualToAnchor:column.widthAnchor constant:-sides].active = YES;
    }
  }
}

}  // namespace pellar
