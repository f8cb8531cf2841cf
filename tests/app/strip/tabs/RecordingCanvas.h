#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "platform/Canvas.h"

namespace pellar {

// One thing painted. `rect` is the place given; of a plain text only its origin.
struct Painted {
  enum class Kind {
    roundedRect,
    text,
    truncatedText,
    middleTruncatedText,
    wrappedText,
    centeredText,
    symbol
  };
  Kind kind = Kind::roundedRect;
  ViewRect rect;
  Color color;
  double radius = 0;
  std::string text;
  Font font{};
  int lines = 1;  // of a wrapped text
  friend bool operator==(const Painted&, const Painted&) = default;
};

inline std::ostream& operator<<(std::ostream& out, const ViewRect& rect) {
  return out << rect.x << ',' << rect.y << ' ' << rect.width << 'x' << rect.height;
}

inline std::ostream& operator<<(std::ostream& out, const Painted& painted) {
  const char* const names[] = {"roundedRect", "text",         "truncatedText", "middleTruncatedText",
                               "wrappedText", "centeredText", "symbol"};
  return out << names[static_cast<int>(painted.kind)] << " (" << painted.rect << ") rgba "
             << painted.color.red << ' ' << painted.color.green << ' ' << painted.color.blue << ' '
             << painted.color.alpha << " radius " << painted.radius << " \"" << painted.text << "\" font "
             << painted.font.size << " lines " << painted.lines;
}

inline Painted roundedRect(const ViewRect& rect, double radius, const Color& color) {
  return {Painted::Kind::roundedRect, rect, color, radius, "", {}};
}
inline Painted plainText(const std::string& text, ViewPoint origin, double size, const Color& color) {
  return {Painted::Kind::text, {origin.x, origin.y, 0, 0}, color, 0, text, {size, FontWeight::regular}};
}
inline Painted truncatedText(const std::string& text, const ViewRect& rect, double size, const Color& color) {
  return {Painted::Kind::truncatedText, rect, color, 0, text, {size, FontWeight::regular}};
}
inline Painted centeredText(const std::string& text, const ViewRect& rect, double size, const Color& color) {
  return {Painted::Kind::centeredText, rect, color, 0, text, {size, FontWeight::regular}};
}
inline Painted symbol(const ViewRect& rect, const Color& color) {
  return {Painted::Kind::symbol, rect, color, 0, "magnifyingglass", {}};
}

// Writes down what a view paints, in order.
class RecordingCanvas final : public Canvas {
 public:
  std::vector<Painted> painted;

  void fillRoundedRect(const ViewRect& rect, double radius, const Color& color) override {
    painted.push_back(roundedRect(rect, radius, color));
  }
  void drawText(std::string_view text, ViewPoint origin, const Font& font, const Color& color) override {
    painted.push_back({Painted::Kind::text, {origin.x, origin.y, 0, 0}, color, 0, std::string(text), font});
  }
  void drawTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                         const Color& color) override {
    painted.push_back({Painted::Kind::truncatedText, rect, color, 0, std::string(text), font});
  }
  void drawMiddleTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                               const Color& color) override {
    painted.push_back({Painted::Kind::middleTruncatedText, rect, color, 0, std::string(text), font});
  }
  void drawWrappedText(std::string_view text, const ViewRect& rect, int lines, const Font& font,
                       const Color& color) override {
    painted.push_back({Painted::Kind::wrappedText, rect, color, 0, std::string(text), font, lines});
  }
  void drawCenteredText(std::string_view text, const ViewRect& rect, const Font& font,
                        const Color& color) override {
    painted.push_back({Painted::Kind::centeredText, rect, color, 0, std::string(text), font});
  }
  void drawSymbol(Symbol, const ViewRect& rect, const Color& color) override {
    painted.push_back(symbol(rect, color));
  }
};

}  // namespace pellar
