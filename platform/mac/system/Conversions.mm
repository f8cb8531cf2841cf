#include "platform/mac/system/Conversions.h"

#include <vector>

#include "core/Utf8.h"

namespace pellar {
namespace {

NSFontWeight toNSFontWeight(FontWeight weight) {
  switch (weight) {
    case FontWeight::regular:
      return NSFontWeightRegular;
    case FontWeight::medium:
      return NSFontWeightMedium;
    case FontWeight::bold:
      return NSFontWeightBold;
  }
  return NSFontWeightRegular;
}

NSColor* systemColor(SystemColor name) {
  switch (name) {
    case SystemColor::red:
      return NSColor.systemRedColor;
    case SystemColor::orange:
      return NSColor.systemOrangeColor;
    case SystemColor::yellow:
      return NSColor.systemYellowColor;
    case SystemColor::green:
      return NSColor.systemGreenColor;
    case SystemColor::blue:
      return NSColor.systemBlueColor;
    case SystemColor::purple:
      return NSColor.systemPurpleColor;
  }
  return NSColor.systemBlueColor;
}

}  // namespace

NSString* toNSString(std::string_view utf8) {
  NSString* text = [[NSString alloc] initWithBytes:utf8.data()
                                            length:utf8.size()
                                          encoding:NSUTF8StringEncoding];
  if (text != nil) return text;
  // NSString makes nothing of a text with a single bad byte.
  const std::string repaired = Utf8::repaired(utf8);
  text = [[NSString alloc] initWithBytes:repaired.data()
                                  length:repaired.size()
                                encoding:NSUTF8StringEncoding];
  return text != nil ? text : @"";
}

std::string fromNSString(NSString* text) {
  if (text == nil) return {};
  // Not -UTF8String: it ends at the first null character, and has nothing for half a surrogate pair.
  NSData* data = [text dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:NO];
  if (data != nil) return {static_cast<const char*>(data.bytes), data.length};
  NSMutableString* whole = [NSMutableString stringWithCapacity:text.length];
  for (NSUInteger at = 0; at < text.length;) {
    const unichar character = [text characterAtIndex:at];
    const bool pair = CFStringIsSurrogateHighCharacter(character) && at + 1 < text.length &&
                      CFStringIsSurrogateLowCharacter([text characterAtIndex:at + 1]);
    const bool half =
        !pair && (CFStringIsSurrogateHighCharacter(character) || CFStringIsSurrogateLowCharacter(character));
    const NSUInteger length = pair ? 2 : 1;
    [whole appendString:half ? @"\uFFFD" : [text substringWithRange:NSMakeRange(at, length)]];
    at += length;
  }
  data = [whole dataUsingEncoding:NSUTF8StringEncoding];
  return data != nil ? std::string(static_cast<const char*>(data.bytes), data.length) : std::string();
}

NSString* drawnText(std::string_view utf8) {
  NSString* text = toNSString(utf8);
  std::vector<unichar> characters(text.length);
  [text getCharacters:characters.data() range:NSMakeRange(0, text.length)];
  bool changed = false;
  for (auto& character : characters) {
    if (!Utf8::isControlOrLineBreak(character)) continue;
    character = ' ';
    changed = true;
  }
  return changed ? [NSString stringWithCharacters:characters.data() length:characters.size()] : text;
}

NSColor* toNSColor(const Color& color) {
  if (color.system) return [systemColor(*color.system) colorWithAlphaComponent:color.alpha];
  return [NSColor colorWithSRGBRed:color.red green:color.green blue:color.blue alpha:color.alpha];
}

NSFont* toNSFont(const Font& font) {
  return [NSFont systemFontOfSize:font.size weight:toNSFontWeight(font.weight)];
}

}  // namespace pellar
