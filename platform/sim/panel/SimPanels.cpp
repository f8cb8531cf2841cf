#include "platform/sim/panel/SimPanels.h"

#include <algorithm>

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

void SimPanels::setIncreasesContrast(bool increases) {
  increasesContrast_ = increases;
  for (SimPanel* const panel : frontToBack_) panel->host().setNeedsDisplay();
}

void SimPanels::tellAccessibleChange() {
  if (accessibleChange_.empty() || std::exchange(accessibleChangePosted_, true)) return;
  loop_.post([this] {
    accessibleChangePosted_ = false;
    accessibleChange_.call();
  });
}

void SimPanels::leave(SimPanel& panel) {
  std::erase(frontToBack_, &panel);
  if (panel.simHost().view() != nullptr) ++endedWithView_;
  tellAccessibleChange();
  keys_.panelEnded(panel);
}

void SimPanels::bringForward(SimPanel& panel) {
  std::erase(frontToBack_, &panel);
  frontToBack_.insert(frontToBack_.begin(), &panel);
}

}  // namespace pellar
