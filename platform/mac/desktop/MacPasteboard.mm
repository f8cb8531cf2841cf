#include "platform/mac/desktop/MacPasteboard.h"

#include "platform/mac/system/Conversions.h"

namespace pellar {

void MacPasteboard::setString(const std::string& text) {
  NSPasteboard* pasteboard = NSPasteboard.generalPasteboard;
  [pasteboard clearContents];
  [pasteboard setString:toNSString(text) forType:NSPasteboardTypeString];
}

}  // namespace pellar
