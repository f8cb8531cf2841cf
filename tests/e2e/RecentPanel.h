#pragma once

#include <optional>

#include "tests/e2e/Desktop.h"
#include "tests/e2e/Strip.h"

namespace pellar::e2e {

// The list of recent files as somebody before the screen sees and uses it. Rows count from the first in
// sight.
class RecentPanel {
 public:
  RecentPanel(Desktop& desktop, Strip& strip) : desktop_(desktop), strip_(strip) {}

  // The search field on the strip, in pixels of the screen, while it is not folded.
  [[nodiscard]] std::optional<Box> field();
  // Whether the field shows the text cursor.
  [[nodiscard]] bool fieldHasCursor();
  void openByClickOnTheField();
  void openByClickOnTheMagnifier();

  [[nodiscard]] bool isOpen() { return window().has_value(); }
  // Those that can be seen whole.
  [[nodiscard]] int rows();
  [[nodiscard]] std::optional<int> selectedRow();

  // And the field has the keys.
  void waitUntilOpen();
  void waitUntilClosed();
  void waitUntilRows(int count);
  void waitUntilSelected(std::optional<int> row);

  void clickRow(int row);
  void doubleClickRow(int row);
  void clickLastRowInSight();
  // Downward when positive.
  void turnWheel(int notches);

 private:
  [[nodiscard]] int pixels(double points) const { return strip_.pixels(points); }
  [[nodiscard]] std::optional<xcb_window_t> window();
  // Whether the field's editor stands in the strip.
  [[nodiscard]] bool hasEditor();
  [[nodiscard]] Box place();

  Desktop& desktop_;
  Strip& strip_;
};

}  // namespace pellar::e2e
