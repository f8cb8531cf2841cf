#include "platform/linux/panel/X11PanelFactory.h"

#include <optional>
#include <utility>

#include "platform/linux/panel/X11Panel.h"
#include "platform/linux/system/QtMainLoop.h"
#include "platform/linux/x11/EventType.h"

namespace pellar {
namespace {

// The window an event of a panel's mask is about; absent for other kinds.
std::optional<xcb_window_t> windowOf(const xcb_generic_event_t& event) {
  switch (eventType(event)) {
    case XCB_EXPOSE:
      return reinterpret_cast<const xcb_expose_event_t&>(event).window;
    case XCB_VISIBILITY_NOTIFY:
      return reinterpret_cast<const xcb_visibility_notify_event_t&>(event).window;
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
      return reinterpret_cast<const xcb_button_press_event_t&>(event).event;
    case XCB_MOTION_NOTIFY:
      return reinterpret_cast<const xcb_motion_notify_event_t&>(event).event;
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
      return reinterpret_cast<const xcb_enter_notify_event_t&>(event).event;
    case XCB_CLIENT_MESSAGE:
      return reinterpret_cast<const xcb_client_message_event_t&>(event).window;
    default:
      return std::nullopt;
  }
}

// When a button was pressed or let go; XCB_CURRENT_TIME for what else happens.
xcb_timestamp_t timeOf(const xcb_generic_event_t& event) {
  const auto type = eventType(event);
  if (type != XCB_BUTTON_PRESS && type != XCB_BUTTON_RELEASE) return XCB_CURRENT_TIME;
  return reinterpret_cast<const xcb_button_press_event_t&>(event).time;
}

bool isMotion(const xcb_generic_event_t& event) {
  return eventType(event) == XCB_MOTION_NOTIFY;
}

}  // namespace

X11PanelFactory::X11PanelFactory(X11Connection& connection, const X11Mirror& mirror, QtMainLoop& loop,
                                 const ScreenList& screens, const X11Density& density,
                                 EventMonitors& monitors,
                                 std::function<void(const ObservedClick&)> reportPress)
    : loop_(loop),
      services_{connection, mirror, loop, screens, density, monitors, std::move(reportPress)},
      accessible_(loop, panels_,
                  [this](bool listening) {
                    if (!listening) {
                      services_.tellAccessibleChange = nullptr;
                    } else {
                      services_.tellAccessibleChange = [this] { accessible_.noteChange(); };
                    }
                  }),
      subscription_(connection.onEvent([this](const xcb_generic_event_t& event) { take(event); })) {
  services_.keyboard.onTaken = [this] {
    loop_.post([this, alive = alive_.watch()] {
      if (alive) services_.keys.loseKey();
    });
  };
}

X11PanelFactory::~X11PanelFactory() = default;

std::unique_ptr<Panel> X11PanelFactory::makePanel(const PanelStyle& style) {
  auto window = std::make_shared<xcb_window_t>(XCB_WINDOW_NONE);
  auto panel = std::make_unique<X11Panel>(services_, style, [this, window] {
    panels_.erase(*window);
    if (services_.tellAccessibleChange) services_.tellAccessibleChange();
  });
  *window = panel->window();
  panels_[*window] = panel.get();
  return panel;
}

void X11PanelFactory::noteWindows(const std::set<xcb_window_t>& changed) {
  for (const auto& [window, panel] : panels_) panel->stack().noteWindows(changed);
}

void X11PanelFactory::noteActivating() {
  for (const auto& [window, panel] : panels_) panel->noteActivating();
}

std::vector<PixelRect> X11PanelFactory::shownFrames() const {
  std::vector<PixelRect> frames;
  for (const auto& [window, panel] : panels_) {
    if (panel->isVisible()) frames.push_back(panel->pixelFrame());
  }
  return frames;
}

std::optional<PixelRect> X11PanelFactory::stripFrame() const {
  for (const auto& [window, panel] : panels_) {
    if (panel->isVisible() && panel->style().stationary) return panel->pixelFrame();
  }
  return std::nullopt;
}

void X11PanelFactory::take(const xcb_generic_event_t& event) {
  if (services_.compositor.handle(event)) {
    for (const auto& [window, panel] : panels_) panel->blendingChanged();
    return;
  }
  if (services_.contrast.handle(event)) {
    for (const auto& [window, panel] : panels_) panel->setNeedsDisplay();
    return;
  }
  if (tellsNewStack(event)) {
    for (const auto& [window, panel] : panels_) panel->stack().noteStacking();
    return;
  }
  if (eventType(event) == XCB_CONFIGURE_NOTIFY) {
    for (const auto& [window, panel] : panels_)
      panel->stack().noteConfigured(reinterpret_cast<const xcb_configure_notify_event_t&>(event));
    return;
  }
  const auto window = windowOf(event);
  if (!window || panels_.count(*window) == 0) return;
  // Only where the pointer is now matters.
  if (isMotion(event) && !events_.empty() && isMotion(events_.back()) && windowOf(events_.back()) == window)
    events_.pop_back();
  events_.push_back(event);
  // What other windows did before the user's press is known before the press counts: their notification, and
  // the refresh that it asks for.
  if (!delivery_.active()) delivery_ = loop_.whenQuiet([this] { deliver(); });
}

bool X11PanelFactory::tellsNewStack(const xcb_generic_event_t& event) const {
  if (eventType(event) != XCB_PROPERTY_NOTIFY) return false;
  const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
  return property.window == services_.connection.root() &&
         property.atom == services_.connection.atoms().netClientListStacking;
}

void X11PanelFactory::deliver() {
  delivery_.cancel();
  // A callback may open a menu, whose loop delivers what comes next.
  while (!events_.empty()) {
    const xcb_generic_event_t event = events_.front();
    events_.pop_front();
    services_.inputTime = timeOf(event);
    if (const auto panel = panels_.find(*windowOf(event)); panel != panels_.end())
      panel->second->handle(event);
    services_.inputTime = XCB_CURRENT_TIME;
  }
}

}  // namespace pellar
