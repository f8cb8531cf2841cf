#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "core/Geometry.h"
#include "platform/Canvas.h"

namespace pellar {

// What a row says, in UTF-8.
struct ListRow {
  std::string title;
  std::string subtitle;
  friend bool operator==(const ListRow&, const ListRow&) = default;
};

// Where a text stands in every row, and how: from `inset` off the row's left edge to as much off its right
// one, `top` and `height` downward from the row's top. Too long, it is truncated with an ellipsis.
struct ListLabel {
  enum class Truncation : std::uint8_t { tail, middle };

  double inset = 0;
  double top = 0;
  double height = 0;
  Font font = {};
  Color color = {};
  Truncation truncation = Truncation::tail;
};

struct ListStyle {
  double rowHeight = 0;
  ListLabel title;
  ListLabel subtitle;
};

// The native list of one column inside a view: no header, no ground of its own, the native highlight on its
// one selected row, a vertical scroller, the wheel. A press selects the row under it, or none below the last
// row. Main thread only.
class ListView {
 public:
  // Says what a row shows. Called only for rows in sight, or while an assistive technology listens.
  using RowProvider = std::function<ListRow(std::size_t row)>;
  // Is offered a key by its virtual code (VirtualKey); true takes it.
  using KeyHandler = std::function<bool(std::uint16_t keyCode)>;

  virtual ~ListView() = default;

  // Shows these rows instead of what it showed, from the first one on, with none selected.
  virtual void reload(std::size_t rowCount, RowProvider row) = 0;

  [[nodiscard]] virtual std::optional<std::size_t> selectedRow() const = 0;
  // Selects just that row and scrolls it into sight. A row that does not exist changes nothing.
  virtual void selectRow(std::size_t row) = 0;

  // Place in the coordinates of the view that holds the list.
  virtual void setFrame(const ViewRect& frame) = 0;
  [[nodiscard]] virtual ViewRect frame() const = 0;
  // Where a row is, in the same coordinates; may lie outside of the list's frame, where the user can scroll
  // it to. An empty rectangle for a row that does not exist.
  [[nodiscard]] virtual ViewRect rowFrame(std::size_t row) const = 0;

  // Gives the list the keys of the program's key panel, which may be another panel and stays key; so does a
  // press in the list. A key goes to the handler, else an arrow key moves the selection; any other ends this
  // and goes to the search field that had the keys. It ends too when a search field takes the focus, when the
  // key panel's first responder is cleared, when the key panel stops being key and when the list's panel is
  // ordered out.
  virtual void focus() = 0;
  [[nodiscard]] virtual bool hasFocus() const = 0;

  // A row, which is the selected one by then, was clicked twice.
  virtual void setOnDoubleClick(std::function<void()> callback) = 0;
  virtual void setOnKeyDown(KeyHandler handler) = 0;
};

}  // namespace pellar
