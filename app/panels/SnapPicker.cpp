#include "app/panels/SnapPicker.h"

#include <algorithm>
#include <utility>

#include "app/strip/place/Screens.h"

namespace pellar {
namespace {

constexpr double screenMargin = 8;
constexpr double gap = 2;  // between the button and the picker

}  // namespace

SnapPicker::SnapPicker(PanelFactory& panels, MainLoop& loop, const ScreenList& screens,
                       SnapView::PickHandler onPick)
    : screens_(screens),
      panel_(panels.makePanel({.contentSize = SnapView::size,
                               .level = PanelLevel::popUpMenu,
                               .glass = false,
                               .cornerRadius = SnapView::cornerRadius})),
      view_(panel_->host(), std::move(onPick)),
      closing_(loop, [this] { hide(); }) {
  view_.onHoverChanged = [this](bool inside) { inside ? closing_.panelEntered() : closing_.panelLeft(); };
  view_.onChosen = [this] { hide(); };
  panel_->setView(&view_);
}

SnapPicker::~SnapPicker() {
  panel_->setView(nullptr);
}

void SnapPicker::show(const ScreenRect& under) {
  closing_.anchorEntered();
  const auto screen = Screens::containing(under, screens_);
  if (!screen) return;
  const ScreenRect& visible = screen->visibleFrame;
  const auto [width, height] = SnapView::size;
  const double x = std::max(std::min(under.midX() - width / 2, visible.maxX() - width - screenMargin),
                            visible.minX() + screenMargin);
  const double top = std::min(under.minY() - gap, visible.maxY() - screenMargin);
  panel_->setFrame({x, top - height, width, height}, true);
  panel_->orderFrontRegardless();
}

void SnapPicker::scheduleClose() {
  if (!panel_->isVisible()) return;
  closing_.anchorLeft();
}

void SnapPicker::hide() {
  closing_.reset();
  panel_->orderOut();
}

}  // namespace pellar
