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

void RecordingCanvas::drawText(std::string_view text, ViewPoint origin, const Font& font,
                               const Color& color) {
  DrawnItem item;
  item.kind = DrawnItem::Kind::text;
  item.rect = ViewRect::of(origin, {measure_.width(text, font), SimTextMeasure::lineHeight(font)});
  item.color = color;
  item.text = text;
  item.shown = readable(text);
  item.font = font;
  add(std::move(item));
}

void RecordingCanvas::addFitted(DrawnItem::Kind kind, std::string_view text, std::string shown,
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

void RecordingCanvas::drawTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                                        const Color& color) {
  addFitted(DrawnItem::Kind::truncatedText, text, readable(measure_.truncated(text, rect.width, font)), rect,
            font, color);
}

void RecordingCanvas::drawMiddleTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                                              const Color& color) {
  addFitted(DrawnItem::Kind::middleTruncatedText, text,
            readable(measure_.truncatedInMiddle(text, rect.width, font)), rect, font, color);
}

void RecordingCanvas::drawWrappedText(std::string_view text, const ViewRect& rect, int lines,
                                      const Font& font, const Color& color) {
  std::string shown;
  for (const auto& line : measure_.wrapped(readable(text), rect.width, lines, font)) shown += line + "\n";
  addFitted(DrawnItem::Kind::wrappedText, text, std::move(shown), rect, font, color);
}

void RecordingCanvas::drawCenteredText(std::string_view text, const ViewRect& rect, const Font& font,
                                       const Color& color) {
  DrawnItem item;
  const Size size{measure_.width(text, font), SimTextMeasure::lineHeight(font)};
  item.kind = DrawnItem::Kind::centeredText;
  item.rect = ViewRect::of({rect.midX() - size.width / 2, rect.midY() - size.height / 2}, size);
  item.color = color;
  item.text = text;
  item.shown = readable(text);
  item.font = font;
  add(std::move(item));
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
