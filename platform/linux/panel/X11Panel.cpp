#include "platform/linux/panel/X11Panel.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/linux/panel/QtListView.h"
#include "platform/linux/panel/QtSearchField.h"
#include "platform/linux/x11/EventType.h"
#include "platform/linux/x11/X11Element.h"

namespace pellar {

X11Panel::X11Panel(X11PanelServices& services, const PanelStyle& style, std::function<void()> onEnd)
    : services_(services),
      style_(style),
      onEnd_(std::move(onEnd)),
      frame_(ScreenRect::of({0, 0}, style.contentSize)),
      scale_(services.density.ofPanel(services.toAx(frame_)).scale()),
      measure_(services.measure, scale_),
      window_(services.connection, services.compositor,
              wholePixels(services.density.ofPanel(services.toAx(frame_)).toPixels(services.toAx(frame_))),
              cornerPixels()),
      stack_(services.connection, services.mirror, services.loop, window_),
      picture_(services, window_, style.glass, scale_),
      dropTarget_(services.connection, window_.id()),
      pointer_(services.loop, [this] { return content_.view; }) {
  services_.sprites.expect(scale_);
}

X11Panel::~X11Panel() {
  services_.keys.panelEnded(*this);
  onEnd_();
}

void X11Panel::setView(View* view) {
  content_.view = view;
  accessibleElementChanged();
  setNeedsLayout();
  setNeedsDisplay();
}

void X11Panel::setFrame(const ScreenRect& frame, bool display) {
  const PixelRect before = window_.frame();
  frame_ = frame;
  const AxRect place = services_.toAx(frame);
  const MonitorMap& map = services_.density.ofPanel(place);
  const bool scaled = std::exchange(scale_, map.scale()) != map.scale();
  if (scaled) {
    measure_.setScale(scale_);
    picture_.setScale(scale_);
    services_.sprites.expect(scale_);
  }
  const PixelRect pixels = wholePixels(map.toPixels(place));
  if (visible_ && pixels != before && pointer_.isInside() && !mouse_.leftIsDown())
    services_.pointerHold.panelMoves(window_.id(), pixels);
  window_.setFrame(pixels, cornerPixels());
  const PixelRect& now = window_.frame();
  if (visible_ && now != before) services_.pointerHold.panelStands(now);
  const bool resized = scaled || now.width != before.width || now.height != before.height;
  if (resized) {
    accessibleElementChanged();
    setNeedsLayout();
    setNeedsDisplay();
  }
  // The move is on its way while the content is still being painted.
  if (now != before) window_.flush();
  if (visible_ && (display || resized)) paint();
}

std::optional<ScreenRect> X11Panel::screenVisibleFrame() const {
  const auto screens = services_.screens.screens();
  const Screen* const most = screenHoldingMost(frame_, screens);
  return most != nullptr ? std::optional(most->visibleFrame) : std::nullopt;
}

void X11Panel::orderFrontRegardless() {
  stack_.standOnTop();
  show();
}

void X11Panel::orderAbove(const Element& window) {
  stack_.standOver(X11Element::of(window).number());
  show();
}

void X11Panel::show() {
  if (!std::exchange(visible_, true)) {
    accessibleElementChanged();
    stack_.take();
    shownBy_ = window_.map();
    services_.pointerHold.panelStands(window_.frame());
    picture_.outdate();
    paint();
    window_.flush();
    return;
  }
  if (!stack_.isOnTop()) {
    stack_.keep();
    return;
  }
  // Menus stand above panels; whatever a window manager has put there is in the way.
  if (std::exchange(obscured_, false) && window_.isBelowManagedWindow()) {
    stack_.take();
    window_.flush();
  }
}

void X11Panel::orderOut() {
  if (!std::exchange(visible_, false)) return;
  if (services_.tellAccessibleChange) services_.tellAccessibleChange();
  stack_.rest();
  window_.unmap();
  window_.flush();
  services_.keys.panelLeftScreen(*this);
  // The server lets go of the button's grab with the window.
  services_.loop.post([this, alive = alive_.watch()] {
    if (!alive) return;
    View* const target = mouseTarget();
    pressedList_ = nullptr;
    mouse_.abandon(target);
    if (alive) dropTarget_.leave(content_.view);
  });
  pointer_.panelLeft();
}

void X11Panel::makeKeyAndOrderFront() {
  show();
  if (!style_.canBecomeKey || isKey()) return;
  outsidePress_ = services_.monitors.onGlobalMouseDown([this] { resignKey(); });
  services_.keys.makeKey(*this);
}

void X11Panel::resignKey() {
  services_.keys.resign(*this);
}

void X11Panel::clearFirstResponder() {
  services_.keys.clearFirstResponder(*this);
}

int X11Panel::cornerPixels() const {
  return static_cast<int>(std::lround(style_.cornerRadius * scale_));
}

PointerSpace X11Panel::pointerSpace() const {
  return {scale_, services_.density.map(), services_.firstScreenHeight()};
}

ViewRect X11Panel::bounds() const {
  return picture_.points(picture_.bounds());
}

void X11Panel::setNeedsLayout() {
  needsLayout_ = true;
  schedulePaint();
}

void X11Panel::setNeedsDisplay() {
  picture_.outdate();
  schedulePaint();
}

void X11Panel::setNeedsDisplay(const ViewRect& rect) {
  picture_.outdate(rect);
  schedulePaint();
}

void X11Panel::accessibleElementChanged() {
  if (visible_ && services_.tellAccessibleChange) services_.tellAccessibleChange();
}

std::optional<AccessibleElement> X11Panel::accessibleElement() const {
  if (!visible_ || content_.view == nullptr) return std::nullopt;
  return content_.view->accessibleElement();
}

QRect X11Panel::onScreenPixels(const ViewRect& rect) const {
  return picture_.outerPixels(rect).translated(window_.frame().x, window_.frame().y);
}

void X11Panel::perform(AccessibleAction action, const std::string& id) {
  const auto whole = accessibleElement();
  const auto* const target = whole ? whole->find(id) : nullptr;
  const auto place = target != nullptr ? toScreen(target->frame) : std::nullopt;
  if (!place) return;
  const auto alive = alive_.watch();
  reportPress({place->midX(), place->midY()});
  if (alive && visible_ && content_.view != nullptr) content_.view->perform(action, id);
}

std::optional<ScreenRect> X11Panel::toScreen(const ViewRect& rect) const {
  if (content_.view == nullptr) return std::nullopt;
  return ScreenRect{frame_.x + rect.x, frame_.maxY() - rect.maxY(), rect.width, rect.height};
}

ViewPoint X11Panel::fromScreen(ScreenPoint point) const {
  return {point.x - frame_.x, frame_.maxY() - point.y};
}

std::unique_ptr<SearchField> X11Panel::makeSearchField() {
  return std::make_unique<QtSearchField>(*this);
}

void X11Panel::addField(QtSearchField& field) {
  content_.fields.push_back(&field);
}

void X11Panel::removeField(QtSearchField& field) {
  services_.keys.fieldEnded(field);
  std::erase(content_.fields, &field);
}

std::unique_ptr<ListView> X11Panel::makeListView(const ListStyle& style) {
  return std::make_unique<QtListView>(*this, style);
}

void X11Panel::addList(QtListView& list) {
  content_.lists.push_back(&list);
}

void X11Panel::removeList(QtListView& list) {
  if (pressedList_ == &list) pressedList_ = nullptr;
  std::erase(content_.lists, &list);
}

QtListView* X11Panel::listAt(ViewPoint point) {
  const auto found = std::ranges::find_if(
      content_.lists, [&](const QtListView* each) { return each->frame().contains(point); });
  return found == content_.lists.end() ? nullptr : *found;
}

View* X11Panel::mouseTarget() {
  if (pressedList_ != nullptr) return pressedList_;
  return content_.view;
}

void X11Panel::reportPress(ScreenPoint location) {
  services_.reportPress({this, location});
}

void X11Panel::schedulePaint() {
  if (!visible_ || std::exchange(paintPosted_, true)) return;
  services_.loop.post([this, alive = alive_.watch()] {
    if (!alive) return;
    paintPosted_ = false;
    if (!visible_ || (!picture_.isOutOfDate() && !needsLayout_)) return;
    paint();
    window_.flush();
  });
}

void X11Panel::paint() {
  if (std::exchange(needsLayout_, false) && content_.view != nullptr) content_.view->layout();
  picture_.paint(content_);
}

void X11Panel::noteActivating() {
  if (visible_ && pointer_.isInside()) stack_.raiseForNow();
}

void X11Panel::blendingChanged() {
  window_.updateShape();
  setNeedsDisplay();
  for (QtSearchField* field : content_.fields) field->groundChanged();
  window_.flush();
}

void X11Panel::press(const xcb_button_press_event_t& event) {
  const ViewPoint location{event.event_x / scale_, event.event_y / scale_};
  if (event.detail == XCB_BUTTON_INDEX_4 || event.detail == XCB_BUTTON_INDEX_5) {
    // The wheel: a press is a notch.
    if (auto* const list = listAt(location)) list->scroll(event.detail == XCB_BUTTON_INDEX_4 ? -1 : 1);
    return;
  }
  if (event.detail == XCB_BUTTON_INDEX_1 || event.detail == XCB_BUTTON_INDEX_3) {
    const auto alive = alive_.watch();
    reportPress(pointerSpace().onScreen(event.root_x, event.root_y));
    if (!alive || !visible_) return;
  }
  const auto field = std::find_if(content_.fields.begin(), content_.fields.end(),
                                  [&](const QtSearchField* each) { return each->contains(location); });
  if (field == content_.fields.end()) {
    pressedList_ = listAt(location);
    mouse_.press(event, mouseTarget(), pointerSpace());
  } else if (event.detail == XCB_BUTTON_INDEX_1) {
    (*field)->press();
  }
}

void X11Panel::release(const xcb_button_release_event_t& event) {
  View* const target = mouseTarget();
  if (event.detail == XCB_BUTTON_INDEX_1) pressedList_ = nullptr;
  mouse_.release(event, target, pointerSpace());
}

bool X11Panel::isCurrent(const xcb_generic_event_t& event) const {
  // The server's numbers begin anew after the highest.
  return visible_ && static_cast<std::int32_t>(event.full_sequence - shownBy_) >= 0;
}

bool X11Panel::noteInside() {
  return pointer_.noteInside() && visible_;
}

void X11Panel::cross(const xcb_enter_notify_event_t& event) {
  if (noteInside()) mouse_.cross(event, mouseTarget(), pointerSpace());
}

void X11Panel::leave(const xcb_leave_notify_event_t& event) {
  if (event.detail == XCB_NOTIFY_DETAIL_INFERIOR) {
    cross(event);
  } else if (mouse_.leavesBy(event)) {
    pointer_.noteOutside();
  }
}

void X11Panel::handle(const xcb_generic_event_t& event) {
  switch (eventType(event)) {
    case XCB_EXPOSE: {
      const auto& expose = reinterpret_cast<const xcb_expose_event_t&>(event);
      return picture_.sendAgain({expose.x, expose.y, expose.width, expose.height});
    }
    case XCB_VISIBILITY_NOTIFY:
      obscured_ =
          reinterpret_cast<const xcb_visibility_notify_event_t&>(event).state != XCB_VISIBILITY_UNOBSCURED;
      stack_.noteStacking();
      return;
    case XCB_BUTTON_PRESS:
      if (isCurrent(event) && noteInside()) press(reinterpret_cast<const xcb_button_press_event_t&>(event));
      return;
    case XCB_BUTTON_RELEASE:
      return release(reinterpret_cast<const xcb_button_release_event_t&>(event));
    case XCB_MOTION_NOTIFY:
      if (!isCurrent(event) || !noteInside()) return;
      return mouse_.motion(reinterpret_cast<const xcb_motion_notify_event_t&>(event), mouseTarget(),
                           pointerSpace());
    case XCB_ENTER_NOTIFY:
      if (!isCurrent(event)) return;
      return cross(reinterpret_cast<const xcb_enter_notify_event_t&>(event));
    case XCB_LEAVE_NOTIFY:
      if (!isCurrent(event)) return;
      return leave(reinterpret_cast<const xcb_leave_notify_event_t&>(event));
    case XCB_CLIENT_MESSAGE:
      if (!isCurrent(event)) return;
      return dropTarget_.handle(reinterpret_cast<const xcb_client_message_event_t&>(event), content_.view,
                                window_.frame(), scale_);
    default:
      return;
  }
}

}  // namespace pellar
