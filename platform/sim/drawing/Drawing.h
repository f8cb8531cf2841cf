#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/Geometry.h"
#include "platform/Canvas.h"

namespace pellar {

// One thing drawn, in view coordinates.
struct DrawnItem {
  enum class Kind : std::uint8_t {
    roundedRect,
    text,
    truncatedText,
    middleTruncatedText,
    wrappedText,
    centeredText,
    symbol
  };

  Kind kind = Kind::roundedRect;
  ViewRect rect;  // what it covers; of a truncated or wrapped text the place it was given
  double radius = 0;
  Color color;
  std::string text;   // as the view gave it
  std::string shown;  // as it can be read: cut off, bad bytes replaced; wrapped lines end with "\n"
  Font font;
  std::optional<Symbol> symbol;

  [[nodiscard]] bool isText() const { return kind != Kind::roundedRect && kind != Kind::symbol; }
  [[nodiscard]] ViewPoint center() const { return {rect.midX(), rect.midY()}; }
  friend bool operator==(const DrawnItem&, const DrawnItem&) = default;
};

// What stands on a panel: the outcome of every repaint since it was blank.
class Drawing {
 public:
  // Takes over a repaint of `dirty`, outside of which nothing changes. An item of which something is to be
  // seen within `bounds` but outside of `dirty` must have stood there alike before: otherwise a piece of
  // something is on the screen, and isTorn tells.
  void repaint(const ViewRect& dirty, const ViewRect& bounds, const std::vector<DrawnItem>& items);
  void clear();

  // In painting order.
  [[nodiscard]] const std::vector<DrawnItem>& items() const { return items_; }
  // Pieces of items are left over since the last full repaint: the view asked for too small a part.
  [[nodiscard]] bool isTorn() const { return torn_; }
  // The colour at a point, over `background`; texts and symbols are transparent.
  [[nodiscard]] Color colorAt(ViewPoint point, const Color& background) const;

 private:
  std::vector<DrawnItem> items_;
  bool torn_ = false;
};

}  // namespace pellar
