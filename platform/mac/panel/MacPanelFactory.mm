#include "platform/mac/panel/MacPanelFactory.h"

#include <algorithm>

#include "platform/mac/panel/ListFocus.h"
#include "platform/mac/panel/MacPanel.h"

namespace pellar {

MacPanelFactory::MacPanelFactory() : listFocus_(std::make_shared<ListFocus>()) {}

MacPanelFactory::~MacPanelFactory() = default;

std::unique_ptr<Panel> MacPanelFactory::makePanel(const PanelStyle& style) {
  auto panel = std::make_unique<MacPanel>(
      style, listFocus_,
      [this](const MacPanel& pressed, ScreenPoint location) {
        presses_.call({&pressed, location});
      },
      [this](const MacPanel& gone) { std::erase(panels_, &gone); });
  panels_.push_back(panel.get());
  return panel;
}

const MacPanel* MacPanelFactory::panelOf(NSWindow* window) const {
  const auto found = std::find_if(panels_.begin(), panels_.end(),
                                  [window](const MacPanel* panel) { return panel->native() == window; });
  return found != panels_.end() ? *found : nullptr;
}

const MacPanel* MacPanelFactory::panelAt(ScreenPoint point) const {
  const auto found = std::find_if(panels_.begin(), panels_.end(), [point](const MacPanel* panel) {
    return panel->isVisible() && panel->frame().contains(point);
  });
  return found != panels_.end() ? *found : nullptr;
}

}  // namespace pellar
