#include "platform/mac/drawing/MacCanvas.h"

#include "core/CutText.h"
#include "platform/mac/system/Conversions.h"

namespace pellar {
namespace {

using TextAttributes = NSDictionary<NSAttributedStringKey, id>;

// More than any view shows of a text that must fit a rectangle. Titles are as long as other programs like,
// and the text system would lay out all of them.
constexpr std::size_t longestLine = 2048;

TextAttributes* attributes(const Font& font, const Color& color, NSParagraphStyle* style) {
  return @{
    NSFontAttributeName : toNSFont(font),
    NSForegroundColorAttributeName : toNSColor(color),
    NSParagraphStyleAttributeName : style
  };
}

void drawLine(NSString* text, const ViewRect& rect, NSLineBreakMode mode, const Font& font,
              const Color& color) {
  NSMutableParagraphStyle* style = [[NSMutableParagraphStyle alloc] init];
  style.lineBreakMode = mode;
  TextAttributes* look = attributes(font, color, style);
  NSRect place = toNSRect(rect);
  // A line that is a fraction of a point too high for the rectangle would not be drawn at all.
  place.size.height = MAX(place.size.height, ceil([text sizeWithAttributes:look].height));
  [text drawWithRect:place
             options:NSStringDrawingUsesLineFragmentOrigin | NSStringDrawingTruncatesLastVisibleLine
          attributes:look
             context:nil];
}

NSImage* magnifyingGlass() {
  NSImage* image = [NSImage imageWithSystemSymbolName:@"magnifyingglass"
                             accessibilityDescription:@"Search recent files"];
  image = [image imageWithSymbolConfiguration:[NSImageSymbolConfiguration
                                                  configurationWithPointSize:13
                                                                      weight:NSFontWeightMedium]];
  [image setTemplate:YES];
  return image;
}

NSImage* symbolImage(Symbol symbol) {
  switch (symbol) {
    case Symbol::magnifyingGlass: {
      static NSImage* const image = magnifyingGlass();
      return image;
    }
  }
  return nil;
}

}  // namespace

void MacCanvas::fillRoundedRect(const ViewRect& rect, double radius, const Color& color) {
  [toNSColor(color) setFill];
  [[NSBezierPath bezierPathWithRoundedRect:toNSRect(rect) xRadius:radius yRadius:radius] fill];
}

void MacCanvas::drawText(std::string_view text, ViewPoint origin, const Font& font, const Color& color) {
  [drawnText(CutText::atTheEnd(text, longestLine))
         drawAtPoint:toNSPoint(origin)
      withAttributes:attributes(font, color, NSParagraphStyle.defaultParagraphStyle)];
}

void MacCanvas::drawTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                                  const Color& color) {
  drawLine(drawnText(CutText::atTheEnd(text, longestLine)), rect, NSLineBreakByTruncatingTail, font, color);
}

void MacCanvas::drawMiddleTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                                        const Color& color) {
  drawLine(drawnText(CutText::inTheMiddle(text, longestLine)), rect, NSLineBreakByTruncatingMiddle, font,
           color);
}

void MacCanvas::drawWrappedText(std::string_view text, const ViewRect& rect, int lines, const Font& font,
                                const Color& color) {
  if (lines < 1) return;
  NSMutableParagraphStyle* style = [[NSMutableParagraphStyle alloc] init];
  style.lineBreakMode = NSLineBreakByWordWrapping;
  style.minimumLineHeight = rect.height / lines;
  style.maximumLineHeight = rect.height / lines;
  NSRect place = toNSRect(rect);
  // Room for the lines whatever their heights add up to in floating point, and for none more.
  place.size.height += 0.5;
  [drawnText(CutText::atTheEnd(text, longestLine))
      drawWithRect:place
           options:NSStringDrawingUsesLineFragmentOrigin | NSStringDrawingTruncatesLastVisibleLine
        attributes:attributes(font, color, style)
           context:nil];
}

void MacCanvas::drawCenteredText(std::string_view text, const ViewRect& rect, const Font& font,
                                 const Color& color) {
  NSString* shown = drawnText(CutText::atTheEnd(text, longestLine));
  TextAttributes* look = attributes(font, color, NSParagraphStyle.defaultParagraphStyle);
  const NSSize size = [shown sizeWithAttributes:look];
  [shown drawAtPoint:NSMakePoint(rect.midX() - size.width / 2, rect.midY() - size.height / 2)
      withAttributes:look];
}

// Drawing a template image by itself paints it black: only controls tint them. So the colour is poured into
// what the image covers, on a layer of its own.
void MacCanvas::drawSymbol(Symbol symbol, const ViewRect& rect, const Color& color) {
  NSImage* image = symbolImage(symbol);
  const NSRect place = toNSRect(rect);
  CGContextRef context = NSGraphicsContext.currentContext.CGContext;
  if (image == nil || context == nullptr) return;
  CGContextSaveGState(context);
  CGContextClipToRect(context, NSRectToCGRect(place));
  CGContextBeginTransparencyLayer(context, nullptr);
  [image drawInRect:place
            fromRect:NSZeroRect
           operation:NSCompositingOperationSourceOver
            fraction:1
      respectFlipped:YES
               hints:nil];
  [toNSColor(color) set];
  NSRectFillUsingOperation(place, NSCompositingOperationSourceIn);
  CGContextEndTransparencyLayer(context);
  CGContextRestoreGState(context);
}

bool MacCanvas::increasesContrast() const {
  return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldIncreaseContrast;
}

}  // namespace pellar
