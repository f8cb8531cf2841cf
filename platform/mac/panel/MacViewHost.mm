#include "platform/mac/panel/MacViewHost.h"

#import "platform/mac/panel/HostedView.h"
#include "platform/mac/panel/MacListView.h"
#include "platform/mac/panel/MacSearchField.h"
#include "platform/mac/system/Conversions.h"

namespace pellar {

ViewRect MacViewHost::bounds() const {
  return fromNSRect<ViewSpace>(native_.bounds);
}

void MacViewHost::setNeedsLayout() {
  native_.needsLayout = YES;
}

void MacViewHost::setNeedsDisplay() {
  native_.needsDisplay = YES;
}

void MacViewHost::setNeedsDisplay(const ViewRect& rect) {
  [native_ setNeedsDisplayInRect:toNSRect(rect)];
}

void MacViewHost::accessibleElementChanged() {
  [native_ accessibleElementChanged];
}

std::optional<ScreenRect> MacViewHost::toScreen(const ViewRect& rect) const {
  NSWindow* window = native_.window;
  if (native_.view == nullptr || window == nil) return std::nullopt;
  const NSRect inWindow = [native_ convertRect:toNSRect(rect) toView:nil];
  return fromNSRect<ScreenSpace>([window convertRectToScreen:inWindow]);
}

ViewPoint MacViewHost::fromScreen(ScreenPoint point) const {
  NSPoint place = toNSPoint(point);
  if (native_.window != nil) place = [native_.window convertPointFromScreen:place];
  return fromNSPoint<ViewSpace>([native_ convertPoint:place fromView:nil]);
}

std::unique_ptr<SearchField> MacViewHost::makeSearchField() {
  return std::make_unique<MacSearchField>(native_, listFocus_);
}

std::unique_ptr<ListView> MacViewHost::makeListView(const ListStyle& style) {
  return std::make_unique<MacListView>(native_, listFocus_, style);
}

}  // namespace pellar
