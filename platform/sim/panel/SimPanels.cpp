#include "platform/sim/panel/SimPanels.h"

#include <algorithm>
#include <utility>

#include "platform/sim/panel/SimListView.h"

namespace pellar {

std::unique_ptr<Panel> SimPanels::makePanel(const PanelStyle& style) {
  return std::make_unique<SimPanel>(*this, style);
}

std::vector<SimPanel*> SimPanels::all() const {
  auto panels = frontToBack_;
  std::stable_sort(panels.begin(), panels.end(), [](const auto* a, const auto* b) {
    return static_cast<int>(a->style().level) > static_cast<int>(b->style().level);
  });
  return panels;
}

SimPanel* SimPanels::at(ScreenPoint point) const {
  const auto panels = all();
  const auto found = std::find_if(panels.begin(), panels.end(), [point](const auto* panel) {
    return panel->isVisible() && panel->frame().contains(point);
  });
  return found == panels.end() ? nullptr : *found;
}

bool SimPanels::contains(const SimPanel* panel) const {
  return std::find(frontToBack_.begin(), frontToBack_.end(), panel) != frontToBack_.end();
}

void SimPanels::setKey(SimPanel* panel) {
  SimPanel* const before = std::exchange(key_, panel);
  if (before == nullptr || before == panel) return;
  endListFocus();
  before->lostKey();
}

void SimPanels::clearKeySilently() {
  key_ = nullptr;
  endListFocus();
}

void SimPanels::endListFocus() {
  if (auto* const list = listFocus_->list) list->loseFocus();
}

void SimPanels::leave(SimPanel& panel) {
  std::erase(frontToBack_, &panel);
  if (key_ == &panel) key_ = nullptr;
}

void SimPanels::bringForward(SimPanel& panel) {
  std::erase(frontToBack_, &panel);
  frontToBack_.insert(frontToBack_.begin(), &panel);
}

}  // namespace pellar
