#include "platform/sim/drawing/RecordingCanvas.h"

#include <string>
#include <utility>

namespace pellar {

namespace {

std::string readable(std::string_view text) {
  std::string result = SimTextMeasure::prefix(text, text.size());
  for (char& byte : result) {
    if (static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F) byte = ' ';
  }
  return result;
}

}  // namespace

void RecordingCanvas::add(DrawnItem item) {
  if (item.rect.intersects(bounds_)) items_.push_back(std::move(item));
}

void RecordingCanvas::fillRoundedRect(const ViewRect& rect, double radius, const Color& color) {
  DrawnItem item;
  item.rect = rect;
  item.radius = radius;
  item.color = color;
  add(std::move(item));
}

void RecordingCanvas::addText(DrawnItem::Kind kind, std::string_view text, std::string shown,
                              const ViewRect& rect, const Font& font, const Color& color) {
  DrawnItem item;
  item.kind = kind;
  item.rect = rect;
  item.color = color;
  item.text = text;
  item.shown = std::move(shown);
  item.font = font;
  add(std::move(item));
}

Size RecordingCanvas::sizeOf(std::string_view text, const Font& font) const {
  return {measure_.width(text, font), SimTextMeasure::lineHeight(font)};
}

void RecordingCanvas::drawText(std::string_view text, ViewPoint origin, const Font& font,
                               const Color& color) {
  addText(DrawnItem::Kind::text, text, readable(text), ViewRect::of(origin, sizeOf(text, font)), font, color);
}

void RecordingCanvas::drawTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                                        const Color& color) {
  addText(DrawnItem::Kind::truncatedText, text, readable(measure_.truncated(text, rect.width, font)), rect,
          font, color);
}

void RecordingCanvas::drawMiddleTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                                              const Color& color) {
  addText(DrawnItem::Kind::middleTruncatedText, text,
          readable(measure_.truncatedInMiddle(text, rect.width, font)), rect, font, color);
}

void RecordingCanvas::drawWrappedText(std::string_view text, const ViewRect& rect, int lines,
                                      const Font& font, const Color& color) {
  std::string shown;
  for (const auto& line : measure_.wrapped(readable(text), rect.width, lines, font)) shown += line + "\n";
  addText(DrawnItem::Kind::wrappedText, text, std::move(shown), rect, font, color);
}

void RecordingCanvas::drawCenteredText(std::string_view text, const ViewRect& rect, const Font& font,
                                       const Color& color) {
  const Size size = sizeOf(text, font);
  const ViewRect place = ViewRect::of({rect.midX() - size.width / 2, rect.midY() - size.height / 2}, size);
  addText(DrawnItem::Kind::centeredText, text, readable(text), place, font, color);
}

void RecordingCanvas::drawSymbol(Symbol symbol, const ViewRect& rect, const Color& color) {
  DrawnItem item;
  item.kind = DrawnItem::Kind::symbol;
  item.rect = rect;
  item.color = color;
  item.symbol = symbol;
  add(std::move(item));
}

}  // namespace pellar
