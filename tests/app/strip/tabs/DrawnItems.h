#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "app/strip/tabs/TabStripView.h"
#include "platform/sim/drawing/RecordingCanvas.h"

// What a strip paints, and the same written down as a test expects it.
namespace pellar {

inline std::ostream& operator<<(std::ostream& out, const ViewRect& rect) {
  return out << rect.x << ',' << rect.y << ' ' << rect.width << 'x' << rect.height;
}

inline std::ostream& operator<<(std::ostream& out, const DrawnItem& item) {
  const char* const names[] = {"roundedRect", "text",         "truncatedText", "middleTruncatedText",
                               "wrappedText", "centeredText", "symbol"};
  return out << names[static_cast<int>(item.kind)] << " (" << item.rect << ") rgba " << item.color.red << ' '
             << item.color.green << ' ' << item.color.blue << ' ' << item.color.alpha << " radius "
             << item.radius << " \"" << item.text << "\" font " << item.font.size;
}

// Large enough for whatever a view paints, so that nothing is left out.
inline constexpr ViewRect everywhere{-10000, -10000, 20000, 20000};

// Everything that the view paints of a part, in order.
inline std::vector<DrawnItem> painted(TabStripView& view, const ViewRect& dirty) {
  RecordingCanvas canvas(everywhere);
  view.draw(canvas, dirty);
  return canvas.items();
}

template <class Draw>
DrawnItem drawn(const Draw& draw) {
  RecordingCanvas canvas(everywhere);
  draw(canvas);
  return canvas.items().at(0);
}

inline DrawnItem roundedRect(const ViewRect& rect, double radius, const Color& color) {
  return drawn([&](Canvas& canvas) { canvas.fillRoundedRect(rect, radius, color); });
}
inline DrawnItem plainText(const std::string& text, ViewPoint origin, double size, const Color& color) {
  return drawn([&](Canvas& canvas) { canvas.drawText(text, origin, {size, FontWeight::regular}, color); });
}
inline DrawnItem truncatedText(const std::string& text, const ViewRect& rect, double size,
                               const Color& color) {
  return drawn([&](Canvas& canvas) {
    canvas.drawTruncatedText(text, rect, {size, FontWeight::regular}, color);
  });
}
inline DrawnItem centeredText(const std::string& text, const ViewRect& rect, double size,
                              const Color& color) {
  return drawn([&](Canvas& canvas) {
    canvas.drawCenteredText(text, rect, {size, FontWeight::regular}, color);
  });
}
inline DrawnItem symbol(const ViewRect& rect, const Color& color) {
  return drawn([&](Canvas& canvas) { canvas.drawSymbol(Symbol::magnifyingGlass, rect, color); });
}

}  // namespace pellar
