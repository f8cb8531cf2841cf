#include "platform/sim/applications/SimAccessibility.h"

#include <set>
#include <string>
#include <vector>

namespace pellar {

namespace {

const SimElement& simulated(const Element& element) {
  return dynamic_cast<const SimElement&>(element.handle());
}

// A value that is not of the type the attribute usually has.
AttributeValue mistyped(const AttributeValue& value) {
  if (std::holds_alternative<std::string>(value)) return true;
  return std::string("unexpected");
}

// What is read in place of the sound value.
template <class Quirks>
std::optional<AttributeValue> withQuirks(const Quirks& quirks, std::string_view name,
                                         std::optional<AttributeValue> sound) {
  if (!sound || quirks.refusedAttributes.contains(name)) return std::nullopt;
  if (quirks.mistypedAttributes.contains(name)) return mistyped(*sound);
  return sound;
}

// Told to who registered on the window itself. Other programs get them through the application element as
// well; those that do not are the harder ones (tmandry/AXSwift's example registers on each window;
// github.com/tmandry/glide/issues/10).
const NameSet toldToWindowObserversOnly{"AXUIElementDestroyed", "AXWindowMiniaturized",
                                        "AXWindowDeminiaturized"};

bool isDeaf(const SimApplicationState& application) {
  const auto refuses = application.quirks.refuses;
  return application.quirks.hung || refuses == SimRefusal::registrations || refuses == SimRefusal::everything;
}

class SimObserver final : public ElementObserver {
 public:
  SimObserver(SimDesktop& desktop, SimApplicationPointer application, std::function<void()> onNotification,
              RoundTrips& roundTrips, std::shared_ptr<SimAccessibility::Live> live)
      : application_(std::move(application)), roundTrips_(roundTrips), live_(std::move(live)) {
    ++live_->observers;
    // The callback may drop this observer, so it holds on to nothing of it.
    subscription_ = desktop.notifications().add(
        [registered = registered_, pid = application_->description.pid,
         callback = std::move(onNotification)](const SimNotification& notification) {
          if (notification.pid != pid) return;
          if ((!toldToWindowObserversOnly.contains(notification.name) &&
               registered->contains({0, notification.name})) ||
              registered->contains({notification.window, notification.name})) {
            callback();
          }
        });
  }
  ~SimObserver() override {
    --live_->observers;
    live_->registrations -= static_cast<int>(registered_->size());
  }
  SimObserver(const SimObserver&) = delete;
  SimObserver& operator=(const SimObserver&) = delete;

  Registration add(const Element& element, std::string_view notification) override {
    const SimElement& target = simulated(element);
    ++roundTrips_.registrations;
    if (isDeaf(*application_)) return Registration::notListening;
    if (target.pid() != application_->description.pid) return Registration::refused;
    if (application_->quirks.refusedNotifications.contains(notification)) return Registration::refused;
    if (target.window() && !target.window()->exists) return Registration::gone;
    live_->registrations += registered_->insert(key(target, notification)).second ? 1 : 0;
    return Registration::made;
  }
  void remove(const Element& element, std::string_view notification) override {
    ++roundTrips_.registrations;
    live_->registrations -= static_cast<int>(registered_->erase(key(simulated(element), notification)));
  }

 private:
  using Registered = std::set<std::pair<std::uint64_t, std::string>>;

  static std::pair<std::uint64_t, std::string> key(const SimElement& element, std::string_view notification) {
    const bool whole = element.kind() == SimElement::Kind::application;
    return {whole ? 0 : element.window()->serial, std::string(notification)};
  }

  SimApplicationPointer application_;
  RoundTrips& roundTrips_;
  std::shared_ptr<SimAccessibility::Live> live_;
  std::shared_ptr<Registered> registered_ = std::make_shared<Registered>();
  Subscription subscription_;
};

}  // namespace

bool SimAccessibility::isTrustedPromptingUser() {
  if (!trusted_) ++prompts_;
  return trusted_;
}

Element SimAccessibility::applicationElement(ProcessId pid) {
  return SimElement::ofApplication(pid);
}

bool SimAccessibility::roundTrip(const SimElement& element, int& count) {
  if (!trusted_) return false;
  ++count;
  const auto owner = desktop_.application(element.pid());
  if (!owner) return false;
  loop_.holdUp(owner->quirks.hung ? std::chrono::milliseconds(messagingTimeout) : owner->quirks.answerTime);
  return !owner->quirks.hung && owner->quirks.refuses != SimRefusal::everything;
}

bool SimAccessibility::askFor(const SimElement& element, int& count) {
  if (roundTrip(element, count)) return true;
  if (trusted_ && desktop_.application(element.pid())) ++unanswered_;
  return false;
}

std::optional<AttributeValue> SimAccessibility::attribute(const Element& element, std::string_view name) {
  const SimElement& target = simulated(element);
  if (fetchedIsFresh()) {
    const auto found = fetched_.find(std::pair(target.hash(), std::string(name)));
    if (found != fetched_.end()) return std::move(fetched_.extract(found).mapped());
  }
  if (!askFor(target, roundTrips_.reads)) return std::nullopt;
  return value(target, name);
}

void SimAccessibility::willRead(std::span<const Element> elements,
                                std::span<const std::string_view> attributes) {
  if (!fetchedIsFresh()) fetched_.clear();
  for (const Element& element : elements) {
    const SimElement& target = simulated(element);
    const bool answered = askFor(target, roundTrips_.batches);
    for (const std::string_view name : attributes) {
      fetched_.insert_or_assign(std::pair(target.hash(), std::string(name)),
                                answered ? value(target, name) : std::nullopt);
    }
  }
  fetchedTurn_ = loop_.turns();
  fetchedRevision_ = desktop_.revision();
}

std::optional<AttributeValue> SimAccessibility::value(const SimElement& element,
                                                      std::string_view name) const {
  const auto owner = desktop_.application(element.pid());
  if (!owner) return std::nullopt;
  if (element.kind() == SimElement::Kind::application) return applicationValue(*owner, name);
  if (element.kind() == SimElement::Kind::menu) {
    const SimMenuElement& menu = *element.menu();
    if (!menu.exists) return std::nullopt;
    return withQuirks(menu, name, menuValue(menu, *owner, name));
  }
  if (element.kind() != SimElement::Kind::window || !element.window()->exists) return std::nullopt;
  if (desktop_.isBehindNativeTab(*element.window())) return std::nullopt;
  return withQuirks(element.window()->quirks, name, windowValue(element.window(), *owner, name));
}

std::optional<AttributeValue> SimAccessibility::applicationValue(const SimApplicationState& application,
                                                                 std::string_view name) const {
  if (name == "AXWindows") {
    std::vector<Element> windows;
    for (const auto& window :
         application.quirks.listsWindowsByCreation ? application.byCreation : application.frontToBack) {
      if (!desktop_.isNamed(*window)) continue;
      windows.push_back(SimElement::ofWindow(window));
      if (window->quirks.listedTwice) windows.push_back(SimElement::ofWindow(window));
    }
    return windows;
  }
  if (name == "AXFocusedWindow") {
    if (!application.focused || application.quirks.namesNoFocusedWindow) return std::nullopt;
    return SimElement::ofWindow(application.focused);
  }
  if (name == "AXTitle" && application.description.localizedName)
    return *application.description.localizedName;
  if (name == "AXHidden") return application.hidden;
  if (name == "AXMenuBar" && application.menuBar) return SimElement::ofMenu(application.menuBar);
  return std::nullopt;
}

std::optional<AttributeValue> SimAccessibility::windowValue(const SimWindowPointer& window,
                                                            const SimApplicationState& owner,
                                                            std::string_view name) {
  if (name == "AXTitle") return window->title;
  if (name == "AXSubrole") return window->subrole;
  if (name == "AXPosition") return window->frame.origin();
  if (name == "AXSize") return window->frame.size();
  if (name == "AXMinimized") return window->minimised;
  if (name == "AXFullScreen") return window->fullScreen;
  if (name == "AXMain") return owner.mainWindow() == window;
  if (name == "AXDocument" && window->document) return *window->document;
  if (name == "AXCloseButton" && window->quirks.hasCloseButton) return SimElement::ofCloseButton(window);
  return std::nullopt;
}

std::optional<AttributeValue> SimAccessibility::menuValue(const SimMenuElement& menu,
                                                          const SimApplicationState& owner,
                                                          std::string_view name) {
  if (name == "AXTitle" && menu.title) return *menu.title;
  if (name == "AXEnabled") return owner.quirks.validatesOpenMenusOnly ? menu.validated : menu.enabled;
  if (name == "AXChildren") {
    std::vector<Element> children;
    for (const auto& child : menu.children) children.push_back(SimElement::ofMenu(child));
    return children;
  }
  return std::nullopt;
}

void SimAccessibility::set(const Element& element, std::string_view name, const AttributeValue& value) {
  const SimElement& target = simulated(element);
  fetched_.clear();
  if (!roundTrip(target, roundTrips_.writes)) return;
  if (target.kind() != SimElement::Kind::window || !target.window()->exists) return;
  const auto& window = target.window();
  if (const auto* position = std::get_if<AxPoint>(&value); position && name == "AXPosition") {
    desktop_.requestPosition(window, *position);
  } else if (const auto* size = std::get_if<Size>(&value); size && name == "AXSize") {
    desktop_.requestSize(window, *size);
  } else if (const auto* flag = std::get_if<bool>(&value)) {
    if (name == "AXMinimized" && !window->quirks.refusesMinimise) desktop_.setMinimised(window, *flag);
    if (name == "AXMain" && *flag) desktop_.makeMain(window);
  }
}

Performed SimAccessibility::perform(const Element& element, std::string_view action) {
  const SimElement& target = simulated(element);
  fetched_.clear();
  if (roundTrip(target, roundTrips_.actions)) return act(target, action);
  const auto owner = desktop_.application(target.pid());
  if (!trusted_ || !owner) return Performed::refused;
  // Giving up does not call the request back (AXUIElement.h, AXUIElementPerformAction: "or the application
  // has not yet responded").
  desktop_.whenResumed(*owner,
                       [this, element, late = std::string(action)] { act(simulated(element), late); });
  return Performed::unanswered;
}

Performed SimAccessibility::act(const SimElement& target, std::string_view action) {
  if (target.menu()) return action == "AXPress" ? press(target.menu()) : Performed::refused;
  if (!target.window() || !target.window()->exists) return Performed::refused;
  const auto& window = target.window();
  if (target.kind() == SimElement::Kind::window && action == "AXRaise") {
    ++window->raises;
    desktop_.focus(window);
    return Performed::done;
  }
  if (target.kind() == SimElement::Kind::closeButton && action == "AXPress") {
    ++window->closePresses;
    if (!window->quirks.asksBeforeClosing) desktop_.destroy(window);
    return Performed::done;
  }
  return Performed::refused;
}

Performed SimAccessibility::press(const SimMenuPointer& menu) {
  if (!menu->exists || menu->role != SimMenuElement::Role::item) return Performed::refused;
  ++menu->presses;
  if (menu->refusesPress) return Performed::refused;
  menu->validated = menu->enabled;
  // A press that does nothing reports success all the same (MongLong0214/logic-pro-mcp#606).
  if (!menu->enabled || menu->opensMenu()) return Performed::done;
  // The application may do anything, even change its menus.
  const auto handler = menu->onPress;
  const bool answers = !menu->unansweredPress;
  if (handler) handler();
  if (answers) return Performed::done;
  loop_.holdUp(messagingTimeout);
  return Performed::unanswered;
}

std::unique_ptr<ElementObserver> SimAccessibility::observe(ProcessId pid,
                                                           std::function<void()> onNotification) {
  const auto application = desktop_.application(pid);
  if (!trusted_ || !application || application->quirks.refuses == SimRefusal::observers) return nullptr;
  return std::make_unique<SimObserver>(desktop_, application, std::move(onNotification), roundTrips_, live_);
}

Subscription SimAccessibility::onceAtRest(const Element& element, std::function<void()> callback) {
  const SimWindowPointer& window = simulated(element).window();
  return window && window->exists && !window->atRest ? window->cameToRest.add(std::move(callback))
                                                     : Subscription();
}

}  // namespace pellar
