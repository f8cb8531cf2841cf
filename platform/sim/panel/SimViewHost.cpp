#include "platform/sim/panel/SimViewHost.h"

#include <algorithm>
#include <utility>

#include "platform/sim/drawing/RecordingCanvas.h"
#include "platform/sim/panel/SimListView.h"
#include "platform/sim/panel/SimPanel.h"
#include "platform/sim/panel/SimPanels.h"
#include "platform/sim/panel/SimSearchField.h"

namespace pellar {

namespace {

ViewRect unite(const ViewRect& a, const ViewRect& b) {
  const double left = std::min(a.minX(), b.minX());
  const double top = std::min(a.minY(), b.minY());
  return {left, top, std::max(a.maxX(), b.maxX()) - left, std::max(a.maxY(), b.maxY()) - top};
}

}  // namespace

SimViewHost::SimViewHost(SimPanel& panel, KeyOwner& keys)
    : panel_(panel),
      controls_(std::make_shared<SimControls>(
          SimControls{.fields = {}, .lists = {}, .keys = keys, .panel = &panel, .needsDisplay = [this] {
                        setNeedsDisplay();
                        accessibleElementChanged();
                      }})) {}

SimViewHost::~SimViewHost() {
  controls_->needsDisplay = nullptr;
  controls_->panel = nullptr;
}

ViewRect SimViewHost::bounds() const {
  const ScreenRect frame = panel_.frame();
  return {0, 0, frame.width, frame.height};
}

void SimViewHost::setNeedsLayout() {
  layoutNeeded_ = true;
  scheduleDisplay();
}

void SimViewHost::setNeedsDisplay() {
  setNeedsDisplay(bounds());
}

void SimViewHost::setNeedsDisplay(const ViewRect& rect) {
  if (!(rect.width > 0) || !(rect.height > 0)) return;
  dirty_ = dirty_ ? unite(*dirty_, rect) : rect;
  scheduleDisplay();
}

void SimViewHost::accessibleElementChanged() {
  if (panel_.isVisible()) panel_.owner().tellAccessibleChange();
}

std::optional<ScreenRect> SimViewHost::toScreen(const ViewRect& rect) const {
  if (view_ == nullptr) return std::nullopt;
  const ScreenRect frame = panel_.frame();
  return ScreenRect{frame.x + rect.x, frame.maxY() - rect.maxY(), rect.width, rect.height};
}

ViewPoint SimViewHost::fromScreen(ScreenPoint point) const {
  const ScreenRect frame = panel_.frame();
  return {point.x - frame.x, frame.maxY() - point.y};
}

std::unique_ptr<SearchField> SimViewHost::makeSearchField() {
  return std::make_unique<SimSearchField>(controls_);
}

std::unique_ptr<ListView> SimViewHost::makeListView(const ListStyle& style) {
  return std::make_unique<SimListView>(controls_, style);
}

void SimViewHost::setView(View* view) {
  if (view_ == view) return;
  view_ = view;
  drawing_.clear();
  accessibleElementChanged();
  setNeedsLayout();
  setNeedsDisplay();
}

void SimViewHost::scheduleDisplay() {
  if (displayScheduled_ || !panel_.isVisible() || (!dirty_ && !layoutNeeded_)) return;
  displayScheduled_ = true;
  panel_.owner().loop().post([this, alive = alive_.watch()] {
    if (!alive) return;
    displayScheduled_ = false;
    display();
  });
}

void SimViewHost::display() {
  if (view_ == nullptr || !panel_.isVisible()) return;
  if (std::exchange(layoutNeeded_, false)) view_->layout();
  const auto dirty = dirty_ ? dirty_->intersection(bounds()) : std::nullopt;
  dirty_.reset();
  if (!dirty) return;
  RecordingCanvas canvas(bounds(), panel_.owner().increasesContrast());
  view_->draw(canvas, *dirty);
  for (const SimListView* list : controls_->lists) list->draw(canvas);
  if (*dirty == bounds()) drawing_.clear();
  drawing_.repaint(*dirty, bounds(), canvas.items());
  repaints_.push_back(*dirty);
}

SimSearchField* SimViewHost::fieldAt(ViewPoint point) const {
  const auto found = std::find_if(
      controls_->fields.rbegin(), controls_->fields.rend(),
      [point](const auto* field) { return !field->isHidden() && field->frame().contains(point); });
  return found == controls_->fields.rend() ? nullptr : *found;
}

SimListView* SimViewHost::listAt(ViewPoint point) const {
  const auto found = std::ranges::find_if(
      controls_->lists, [point](const auto* list) { return list->frame().contains(point); });
  return found == controls_->lists.end() ? nullptr : *found;
}

bool SimViewHost::contains(const SimListView* list) const {
  return std::ranges::find(controls_->lists, list) != controls_->lists.end();
}

}  // namespace pellar
