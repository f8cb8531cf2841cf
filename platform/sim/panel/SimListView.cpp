#include "platform/sim/panel/SimListView.h"

#include <algorithm>

#include "core/Notify.h"
#include "platform/sim/panel/SimPanel.h"

namespace pellar {

SimListView::SimListView(std::shared_ptr<SimControls> controls, const ListStyle& style)
    : controls_(std::move(controls)), list_(style) {
  controls_->lists.push_back(this);
}

SimListView::~SimListView() {
  std::erase(controls_->lists, this);
  controls_->keys.listEnded(*this);
}

void SimListView::needsDisplay() {
  // Everything, since rows reach out of the frame.
  if (controls_->needsDisplay) controls_->needsDisplay();
}

void SimListView::reload(std::size_t rowCount, RowProvider row) {
  list_.reload(rowCount, std::move(row));
  needsDisplay();
}

void SimListView::selectRow(std::size_t row) {
  list_.selectRow(row);
  needsDisplay();
}

void SimListView::setFrame(const ViewRect& frame) {
  list_.setFrame(frame);
  needsDisplay();
}

void SimListView::focus() {
  if (controls_->panel != nullptr) controls_->keys.focus(*this, *controls_->panel);
}

void SimListView::press(ViewPoint location, int clickCount) {
  list_.press(location, clickCount);
  needsDisplay();
  focus();
}

void SimListView::drag(ViewPoint location) {
  if (list_.drag(location)) needsDisplay();
}

void SimListView::release() {
  if (!list_.release()) return;
  notify(onDoubleClick_);
}

void SimListView::scroll(int notches) {
  if (list_.scroll(notches)) needsDisplay();
}

bool SimListView::keyDown(std::uint16_t keyCode) {
  if (const auto handler = onKeyDown_; handler && handler(keyCode)) return true;
  if (!list_.takeKey(keyCode)) return false;
  needsDisplay();
  return true;
}

}  // namespace pellar
