#pragma once

#include <optional>
#include <string_view>

#include "core/Geometry.h"

namespace pellar {

// The colours that a system names itself. An adapter may show its own shade of them.
enum class SystemColor { red, orange, yellow, green, blue, purple };

// A colour of the sRGB space, not premultiplied, components in 0...1. With `system` set, an adapter that has
// that colour uses it (with `alpha`) in place of the components.
struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
  std::optional<SystemColor> system;

  static constexpr Color white(double alpha = 1) { return {1, 1, 1, alpha, std::nullopt}; }
  // The colour's shade on dark backgrounds, as the Human Interface Guidelines list it.
  static constexpr Color of(SystemColor name) {
    switch (name) {
      case SystemColor::red:
        return {1.0, 69 / 255.0, 58 / 255.0, 1, name};
      case SystemColor::orange:
        return {1.0, 159 / 255.0, 10 / 255.0, 1, name};
      case SystemColor::yellow:
        return {1.0, 214 / 255.0, 10 / 255.0, 1, name};
      case SystemColor::green:
        return {50 / 255.0, 215 / 255.0, 75 / 255.0, 1, name};
      case SystemColor::blue:
        return {10 / 255.0, 132 / 255.0, 1.0, 1, name};
      case SystemColor::purple:
        return {191 / 255.0, 90 / 255.0, 242 / 255.0, 1, name};
    }
    return {};
  }
  friend bool operator==(const Color&, const Color&) = default;
};

enum class FontWeight { regular, medium, bold };

// The system's interface font at a size in points.
struct Font {
  double size = 13;
  FontWeight weight = FontWeight::regular;
  friend bool operator==(const Font&, const Font&) = default;
};

// Measures text. Texts are UTF-8; a bad byte counts as U+FFFD.
class TextMeasure {
 public:
  virtual ~TextMeasure() = default;
  // Width of one line in points.
  [[nodiscard]] virtual double width(std::string_view text, const Font& font) const = 0;
};

// The images that a view can draw by name.
enum class Symbol { magnifyingGlass };

// What a view draws with, valid during one draw call. Coordinates are the view's. Line breaks and control
// characters in a text are drawn as blanks; a text never paints outside the view.
class Canvas {
 public:
  virtual ~Canvas() = default;
  virtual void fillRoundedRect(const ViewRect& rect, double radius, const Color& color) = 0;
  // Text with its line box's top left corner at `origin`, not truncated.
  virtual void drawText(std::string_view text, ViewPoint origin, const Font& font, const Color& color) = 0;
  // One line inside `rect`, from its top left corner, truncated at the tail with an ellipsis when it is too
  // long.
  virtual void drawTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                                 const Color& color) = 0;
  // The same, with the ellipsis in the middle: both ends of the text stay to be read.
  virtual void drawMiddleTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                                       const Color& color) = 0;
  // At most `lines` lines, which share the height of `rect` evenly from its top. A line ends between two
  // words, or inside one that is wider than `rect`; what is left over after the last line is truncated at its
  // tail.
  virtual void drawWrappedText(std::string_view text, const ViewRect& rect, int lines, const Font& font,
                               const Color& color) = 0;
  // One line centred in `rect` both ways, not truncated.
  virtual void drawCenteredText(std::string_view text, const ViewRect& rect, const Font& font,
                                const Color& color) = 0;
  // A symbol image filling `rect` in one colour.
  virtual void drawSymbol(Symbol symbol, const ViewRect& rect, const Color& color) = 0;

  // The user has asked his system for more contrast: nothing recedes, and what is meant by a shade of the
  // ground has an outline. The host draws the view anew when that changes.
  [[nodiscard]] virtual bool increasesContrast() const = 0;
};

// White that recedes by an alpha, where the user does not mind.
[[nodiscard]] inline Color receding(double alpha, const Canvas& canvas) {
  return Color::white(canvas.increasesContrast() ? 1 : alpha);
}

}  // namespace pellar
