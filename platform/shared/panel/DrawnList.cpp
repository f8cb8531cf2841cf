#include "platform/shared/panel/DrawnList.h"

#include <algorithm>
#include <utility>

#include "platform/VirtualKey.h"

namespace pellar {
namespace {

constexpr double rowsPerNotch = 2;
constexpr double highlightRadius = 5;
constexpr Color quietHighlight = Color::white(0.18);
constexpr Color knobColor = Color::white(0.35);
constexpr double knobWidth = 7;
constexpr double knobMargin = 2;
constexpr double gripWidth = knobWidth + 2 * knobMargin;  // from the frame's right edge

}  // namespace

void DrawnList::reload(std::size_t rowCount, ListView::RowProvider row) {
  scrolling_.setRowCount(rowCount);
  row_ = std::move(row);
  selected_.reset();
  doubleClicked_ = false;
}

void DrawnList::setFrame(const ViewRect& frame) {
  frame_ = frame;
  scrolling_.setHeight(frame.height);
}

ViewRect DrawnList::rowFrame(std::size_t row) const {
  if (row >= scrolling_.rowCount()) return {};
  return {frame_.minX(), frame_.minY() + scrolling_.topOf(row), frame_.width, style_.rowHeight};
}

void DrawnList::selectRow(std::size_t row) {
  if (row >= scrolling_.rowCount()) return;
  selected_ = row;
  scrolling_.reveal(row);
}

bool DrawnList::takeKey(std::uint16_t keyCode) {
  const std::size_t count = scrolling_.rowCount();
  const std::size_t step = keyCode == VirtualKey::pageUp || keyCode == VirtualKey::pageDown
                               ? scrolling_.rowsPerPage()
                               : std::size_t{1};
  switch (keyCode) {
    case VirtualKey::down:
    case VirtualKey::pageDown:
      if (count > 0) selectRow(selected_ ? std::min(*selected_ + step, count - 1) : 0);
      return true;
    case VirtualKey::up:
    case VirtualKey::pageUp:
      if (count > 0) selectRow(selected_ ? *selected_ - std::min(*selected_, step) : count - 1);
      return true;
    default:
      return false;
  }
}

void DrawnList::press(ViewPoint location, int clickCount) {
  doubleClicked_ = false;
  grip_.reset();
  if (scrolling_.knob() && location.x >= frame_.maxX() - gripWidth) {
    grip_ = location.y;
    return;
  }
  selected_ = scrolling_.rowAt(location.y - frame_.minY());
  if (!selected_) return;
  scrolling_.reveal(*selected_);
  doubleClicked_ = clickCount == 2;
}

bool DrawnList::drag(ViewPoint location) {
  if (!grip_) return false;
  scrolling_.dragKnob(location.y - std::exchange(*grip_, location.y));
  return true;
}

bool DrawnList::release() {
  grip_.reset();
  return std::exchange(doubleClicked_, false);
}

bool DrawnList::scroll(int notches) {
  return scrolling_.scrollBy(notches * rowsPerNotch * style_.rowHeight);
}

void DrawnList::drawLabel(Canvas& canvas, const ListLabel& label, std::string_view text,
                          double rowTop) const {
  const ViewRect place{frame_.minX() + label.inset, rowTop + label.top, frame_.width - 2 * label.inset,
                       label.height};
  const Color color = canvas.increasesContrast() ? Color::white() : label.color;
  if (label.truncation == ListLabel::Truncation::middle) {
    canvas.drawMiddleTruncatedText(text, place, label.font, color);
  } else {
    canvas.drawTruncatedText(text, place, label.font, color);
  }
}

void DrawnList::drawRow(Canvas& canvas, std::size_t row, bool focused) const {
  const ViewRect place = rowFrame(row);
  if (row == selected_) {
    canvas.fillRoundedRect(place, highlightRadius, focused ? Color::of(SystemColor::blue) : quietHighlight);
  }
  const ListRow content = row_(row);
  drawLabel(canvas, style_.title, content.title, place.minY());
  drawLabel(canvas, style_.subtitle, content.subtitle, place.minY());
}

void DrawnList::draw(Canvas& canvas, bool focused) const {
  const auto rows = scrolling_.visibleRows();
  for (std::size_t row = rows.first; row < rows.end; ++row) drawRow(canvas, row, focused);
  if (const auto knob = scrolling_.knob()) {
    canvas.fillRoundedRect(
        {frame_.maxX() - knobMargin - knobWidth, frame_.minY() + knob->top, knobWidth, knob->height},
        knobWidth / 2, knobColor);
  }
}

}  // namespace pellar
