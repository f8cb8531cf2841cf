#include "platform/shared/panel/ListScrolling.h"

#include <algorithm>
#include <cmath>

namespace pellar {
namespace {

constexpr double shortestKnob = 24;

}  // namespace

void ListScrolling::setRowCount(std::size_t count) {
  rowCount_ = count;
  offset_ = 0;
}

void ListScrolling::setHeight(double height) {
  height_ = height;
  scrollTo(offset_);
}

double ListScrolling::furthest() const {
  return std::max(static_cast<double>(rowCount_) * rowHeight_ - height_, 0.0);
}

void ListScrolling::scrollTo(double offset) {
  offset_ = std::clamp(offset, 0.0, furthest());
}

bool ListScrolling::scrollBy(double distance) {
  const double before = offset_;
  scrollTo(offset_ + distance);
  return offset_ != before;
}

void ListScrolling::reveal(std::size_t row) {
  const double top = static_cast<double>(row) * rowHeight_;
  if (top < offset_) {
    scrollTo(top);
  } else if (top + rowHeight_ > offset_ + height_) {
    scrollTo(top + rowHeight_ - height_);
  }
}

ListScrolling::Rows ListScrolling::visibleRows() const {
  if (!(height_ > 0)) return {};
  const auto first = static_cast<std::size_t>(offset_ / rowHeight_);
  const auto end = static_cast<std::size_t>(std::ceil((offset_ + height_) / rowHeight_));
  return {std::min(first, rowCount_), std::min(end, rowCount_)};
}

std::optional<std::size_t> ListScrolling::rowAt(double y) const {
  if (y < 0 || y >= height_) return std::nullopt;
  const auto row = static_cast<std::size_t>((y + offset_) / rowHeight_);
  if (row >= rowCount_) return std::nullopt;
  return row;
}

std::size_t ListScrolling::rowsPerPage() const {
  return std::max<std::size_t>(static_cast<std::size_t>(std::max(height_, 0.0) / rowHeight_), 1);
}

std::optional<ListScrolling::Knob> ListScrolling::knob() const {
  if (!(furthest() > 0) || !(height_ > 0)) return std::nullopt;
  const double whole = static_cast<double>(rowCount_) * rowHeight_;
  const double length = std::min(std::max(height_ * height_ / whole, shortestKnob), height_);
  return Knob{(height_ - length) * offset_ / furthest(), length};
}

void ListScrolling::dragKnob(double distance) {
  const auto seen = knob();
  if (!seen || !(height_ > seen->height)) return;
  scrollBy(distance * furthest() / (height_ - seen->height));
}

}  // namespace pellar
