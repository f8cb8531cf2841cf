#include "app/panels/SnapPicker.h"

#include <utility>

#include "app/strip/place/PanelPlace.h"
#include "app/strip/place/Screens.h"

namespace pellar {
namespace {

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
  const Size size = SnapView::size;
  const ScreenPoint topLeft{PanelPlace::left(under.midX() - size.width / 2, size.width, visible),
                            PanelPlace::top(under.minY() - gap, visible)};
  panel_->setFrame(PanelPlace::hanging(topLeft, size), true);
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
