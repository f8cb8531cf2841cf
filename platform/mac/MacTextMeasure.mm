#include "platform/mac/MacTextMeasure.h"

#include "platform/mac/Conversions.h"

namespace pellar {

double MacTextMeasure::width(std::string_view text, const Font& font) const {
  @autoreleasepool {
    return [drawnText(text) sizeWithAttributes:@{NSFontAttributeName : toNSFont(font)}].width;
  }
}

}  // namespace pellar
