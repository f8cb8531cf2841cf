#pragma once

#include <cstddef>
#include <optional>

namespace pellar {

// Where the rows of a list lie in its frame and how far it is scrolled, whatever draws it. Distances in
// points, y downward from the frame's top.
class ListScrolling {
 public:
  // From one row up to, not including, another.
  struct Rows {
    std::size_t first = 0;
    std::size_t end = 0;
    friend bool operator==(const Rows&, const Rows&) = default;
  };
  // The scroller's knob.
  struct Knob {
    double top = 0;
    double height = 0;
    friend bool operator==(const Knob&, const Knob&) = default;
  };

  explicit ListScrolling(double rowHeight) : rowHeight_(rowHeight) {}

  [[nodiscard]] std::size_t rowCount() const { return rowCount_; }
  [[nodiscard]] double offset() const { return offset_; }

  // Other rows, scrolled to the first.
  void setRowCount(std::size_t count);
  void setHeight(double height);
  // Positive distances bring later rows into sight. False when it is at the end already.
  bool scrollBy(double distance);
  // Scrolls no further than it takes to see all of the row.
  void reveal(std::size_t row);

  // Those of which something is to be seen.
  [[nodiscard]] Rows visibleRows() const;
  [[nodiscard]] double topOf(std::size_t row) const {
    return static_cast<double>(row) * rowHeight_ - offset_;
  }
  [[nodiscard]] std::optional<std::size_t> rowAt(double y) const;

  // How many rows are to be seen whole, at least one.
  [[nodiscard]] std::size_t rowsPerPage() const;

  // Absent when all rows are to be seen at once.
  [[nodiscard]] std::optional<Knob> knob() const;
  // Scrolls so that the knob is moved by a distance.
  void dragKnob(double distance);

 private:
  [[nodiscard]] double furthest() const;
  void scrollTo(double offset);

  double rowHeight_;
  double height_ = 0;
  double offset_ = 0;
  std::size_t rowCount_ = 0;
};

}  // namespace pellar
