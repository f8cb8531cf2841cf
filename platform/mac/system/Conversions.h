#pragma once

#import <AppKit/AppKit.h>

#include <string>
#include <string_view>

#include "core/Geometry.h"
#include "platform/Canvas.h"

// Between the ports' values and AppKit's. Screen rectangles and those of flipped views have the same numbers
// on both sides.
namespace pellar {

// Each byte that is part of no character becomes U+FFFD.
[[nodiscard]] NSString* toNSString(std::string_view utf8);
// Empty for nil. Half a surrogate pair becomes U+FFFD.
[[nodiscard]] std::string fromNSString(NSString* text);
// The text as one drawable line: line breaks and control characters become blanks.
[[nodiscard]] NSString* drawnText(std::string_view utf8);

// More code points than any row of a menu or window shows (CutText).
constexpr std::size_t longestRow = 1000;

[[nodiscard]] NSColor* toNSColor(const Color& color);
[[nodiscard]] NSFont* toNSFont(const Font& font);

template <class Space>
[[nodiscard]] NSRect toNSRect(const Rect<Space>& rect) {
  return NSMakeRect(rect.x, rect.y, rect.width, rect.height);
}
template <class Space>
[[nodiscard]] Rect<Space> fromNSRect(NSRect rect) {
  return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}
template <class Space>
[[nodiscard]] NSPoint toNSPoint(Point<Space> point) {
  return NSMakePoint(point.x, point.y);
}
template <class Space>
[[nodiscard]] Point<Space> fromNSPoint(NSPoint point) {
  return {point.x, point.y};
}

}  // namespace pellar
