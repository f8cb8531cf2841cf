#include "platform/mac/desktop/MacAlerts.h"

#include "core/CutText.h"
#include "platform/mac/system/Conversions.h"

namespace pellar {

static_assert(TextAlertAnswer::firstButtonReturn == NSAlertFirstButtonReturn);

std::optional<TextAlertAnswer> MacAlerts::runModal(const TextAlert& alert) {
  if (NSApplication.sharedApplication.modalWindow != nil) return std::nullopt;
  NSAlert* native = [[NSAlert alloc] init];
  native.messageText = toNSString(CutText::inTheMiddle(alert.messageText, longestRow));
  native.informativeText = toNSString(CutText::inTheMiddle(alert.informativeText, longestRow));
  // NSAlert gives the first button Return, and a button titled "Cancel" Escape.
  for (const auto& title : alert.buttons) [native addButtonWithTitle:toNSString(title)];

  NSTextField* field =
      [[NSTextField alloc] initWithFrame:NSMakeRect(0, 0, alert.fieldSize.width, alert.fieldSize.height)];
  field.stringValue = toNSString(alert.fieldText);
  field.usesSingleLineMode = YES;
  field.cell.scrollable = YES;
  native.accessoryView = field;
  // The accessory view joins the window only when the alert is laid out; before that it can be no responder.
  [native layout];
  // A modal window keeps the program from ending otherwise (NSWindow.h), also when the user has chosen Quit.
  native.window.preventsApplicationTerminationWhenModal = NO;
  native.window.initialFirstResponder = field;

  const NSModalResponse response = [native runModal];
  const auto count = static_cast<NSInteger>(alert.buttons.size());
  const bool pressed = response >= NSAlertFirstButtonReturn && response < NSAlertFirstButtonReturn + count;
  return TextAlertAnswer{
      .response = static_cast<int>(pressed ? response : NSAlertFirstButtonReturn + count - 1),
      .fieldText = fromNSString(field.stringValue)};
}

}  // namespace pellar
