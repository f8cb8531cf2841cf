#include "platform/linux/panel/QtListView.h"

#include "core/Notify.h"
#include "platform/linux/panel/X11Panel.h"

namespace pellar {

QtListView::QtListView(X11Panel& panel, const ListStyle& style) : panel_(panel), list_(style) {
  panel_.addList(*this);
}

QtListView::~QtListView() {
  panel_.services().keys.listEnded(*this);
  panel_.removeList(*this);
}

void QtListView::needsDisplay() {
  panel_.setNeedsDisplay(list_.frame());
  panel_.accessibleElementChanged();
}

void QtListView::reload(std::size_t rowCount, RowProvider row) {
  list_.reload(rowCount, std::move(row));
  needsDisplay();
}

void QtListView::selectRow(std::size_t row) {
  list_.selectRow(row);
  needsDisplay();
}

void QtListView::setFrame(const ViewRect& frame) {
  if (frame == list_.frame()) return;
  needsDisplay();
  list_.setFrame(frame);
  needsDisplay();
}

void QtListView::focus() {
  panel_.services().keys.focus(*this, panel_);
}

bool QtListView::hasFocus() const {
  return panel_.services().keys.hasFocus(*this);
}

void QtListView::scroll(int notches) {
  if (list_.scroll(notches)) needsDisplay();
}

void QtListView::draw(Canvas& canvas, const ViewRect& /*dirty*/) {
  list_.draw(canvas, hasFocus());
}

bool QtListView::keyDown(std::uint16_t keyCode) {
  if (const auto handler = onKeyDown_; handler && handler(keyCode)) return true;
  if (!list_.takeKey(keyCode)) return false;
  needsDisplay();
  return true;
}

void QtListView::mouseDown(const MouseEvent& event) {
  list_.press(event.location, event.clickCount);
  needsDisplay();
  focus();
}

void QtListView::mouseDragged(const MouseEvent& event) {
  if (list_.drag(event.location)) needsDisplay();
}

void QtListView::mouseUp(const MouseEvent& /*event*/) {
  if (!list_.release()) return;
  notify(onDoubleClick_);
}

}  // namespace pellar
