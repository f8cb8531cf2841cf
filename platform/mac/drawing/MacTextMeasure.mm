#include "platform/mac/drawing/MacTextMeasure.h"

#include "platform/mac/system/Conversions.h"

namespace pellar {
namespace {

// In bytes. Nothing on a screen is wider; the text system would lay out all of a hostile title.
constexpr std::size_t longestMeasuredText = 8192;

}  // namespace

double MacTextMeasure::width(std::string_view text, const Font& font) const {
  @autoreleasepool {
    // Half a character at the cut is drawn as U+FFFD and makes no difference to a text that wide.
    return [drawnText(text.substr(0, longestMeasuredText))
               sizeWithAttributes:@{NSFontAttributeName : toNSFont(font)}]
        .width;
  }
}

}  // namespace pellar
