#include "platform/sim/panel/SimPanel.h"

#include <utility>

#include "platform/sim/panel/SimPanels.h"

namespace pellar {

SimPanel::SimPanel(SimPanels& owner, const PanelStyle& style)
    : owner_(owner),
      style_(style),
      frame_{0, 0, style.contentSize.width, style.contentSize.height},
      host_(*this, owner.keys()),
      pointer_(owner.loop(), [this] { return host_.view(); }) {
  owner_.join(*this);
}

SimPanel::~SimPanel() {
  owner_.leave(*this);
}

void SimPanel::setFrame(const ScreenRect& frame, bool display) {
  const ScreenRect before = std::exchange(frame_, frame);
  if (before != frame) ++frameChanges_;
  if (before.size() != frame.size()) {
    host_.accessibleElementChanged();
    host_.setNeedsLayout();
    host_.setNeedsDisplay();
  }
  if (display) host_.display();
}

std::optional<ScreenRect> SimPanel::screenVisibleFrame() const {
  const auto screens = owner_.screens();
  const Screen* const most = screenHoldingMost(frame_, screens);
  return most != nullptr ? std::optional(most->visibleFrame) : std::nullopt;
}

void SimPanel::orderFrontRegardless() {
  window_.reset();
  show();
}

void SimPanel::orderAbove(const Element& window) {
  window_ = window;
  show();
}

void SimPanel::show() {
  owner_.bringForward(*this);
  if (std::exchange(visible_, true)) return;
  cameUpAt_ = frame_;
  host_.accessibleElementChanged();
  host_.setNeedsDisplay();
}

void SimPanel::orderOut() {
  if (!std::exchange(visible_, false)) return;
  owner_.tellAccessibleChange();
  pointer_.panelLeft();
  owner_.keys().panelLeftScreen(*this);
}

void SimPanel::makeKeyAndOrderFront() {
  show();
  if (style_.canBecomeKey) owner_.keys().makeKey(*this);
}

void SimPanel::resignKey() {
  owner_.keys().resign(*this);
}

bool SimPanel::isKey() const {
  return owner_.keys().isKey(*this);
}

void SimPanel::clearFirstResponder() {
  owner_.keys().clearFirstResponder(*this);
}

Subscription SimPanel::onDidResignKey(std::function<void()> callback) {
  return resignedKey_.add(std::move(callback));
}

}  // namespace pellar
