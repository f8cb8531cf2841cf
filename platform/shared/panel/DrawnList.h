#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/ListView.h"
#include "platform/shared/panel/ListScrolling.h"

namespace pellar {

// The content, look and behaviour of a list where the system has none of its own: drawn with a canvas, worked
// with the mouse and a few keys. Its owner hands it events, in the coordinates of the view that holds
// the list, and draws it anew after each call that returns true or that changes it.
class DrawnList {
 public:
  explicit DrawnList(const ListStyle& style) : style_(style), scrolling_(style.rowHeight) {}

  void reload(std::size_t rowCount, ListView::RowProvider row);
  void setFrame(const ViewRect& frame);
  [[nodiscard]] const ViewRect& frame() const { return frame_; }
  [[nodiscard]] ViewRect rowFrame(std::size_t row) const;

  [[nodiscard]] std::optional<std::size_t> selectedRow() const { return selected_; }
  void selectRow(std::size_t row);
  // Moves the selection by a key; false for a key that does not.
  bool takeKey(std::uint16_t keyCode);

  // Selects the row under the pointer, or grips the scroller.
  void press(ViewPoint location, int clickCount);
  // The pointer moved with the button held. False when that does nothing.
  bool drag(ViewPoint location);
  // True when this ends a double click on a row.
  bool release();
  // Turns the wheel, downward when positive. False when there is nothing to scroll.
  bool scroll(int notches);

  // Paints the rows in sight; some reach out of the frame.
  void draw(Canvas& canvas, bool focused) const;

 private:
  void drawRow(Canvas& canvas, std::size_t row, bool focused) const;
  void drawLabel(Canvas& canvas, const ListLabel& label, std::string_view text, double rowTop) const;

  ListStyle style_;
  ViewRect frame_;
  ListScrolling scrolling_;
  ListView::RowProvider row_;
  std::optional<std::size_t> selected_;
  std::optional<double> grip_;  // where the pointer holds the scroller, y
  bool doubleClicked_ = false;
};

}  // namespace pellar
