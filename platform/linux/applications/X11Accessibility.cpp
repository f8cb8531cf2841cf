#include "platform/linux/applications/X11Accessibility.h"

#include <algorithm>
#include <utility>

#include "platform/MainLoop.h"
#include "platform/linux/documents/DocumentLookUp.h"
#include "platform/linux/menus/AtSpiElement.h"
#include "platform/linux/menus/AtSpiTree.h"
#include "platform/linux/system/PlatformFolders.h"
#include "platform/linux/x11/X11Element.h"

namespace pellar {

// What an observer and the list of observers share. Gone with the observer.
struct X11Accessibility::Watch {
  ProcessId pid = 0;
  std::function<void()> onNotification;
  bool hasNotification = false;
  bool posted = false;
};

class X11Accessibility::Observer final : public ElementObserver {
 public:
  explicit Observer(std::shared_ptr<Watch> watch) : watch_(std::move(watch)) {}
  // Which one does not matter: X says what changed only for the application as a whole.
  Registration add(const Element& /*element*/, std::string_view /*notification*/) override {
    watch_->hasNotification = true;
    return Registration::made;
  }
  void remove(const Element& /*element*/, std::string_view /*notification*/) override {}

 private:
  std::shared_ptr<Watch> watch_;
};

X11Accessibility::X11Accessibility(X11Connection& connection, X11Mirror& mirror, const X11Density& density,
                                   X11Applications& applications, const X11ScreenList& screens,
                                   MainLoop& loop)
    : connection_(connection),
      mirror_(mirror),
      density_(density),
      applications_(applications),
      loop_(loop),
      frames_(connection, mirror, density),
      rest_(connection, mirror, density, screens, loop),
      questions_(mirror, applications, loop, [this](xcb_window_t question) { activateWindow(question); }),
      menus_(loop_),
      documents_(
          loop,
          [places = DocumentLookUp::Places{platformFolders().home}] {
            return [finder = std::make_shared<DocumentLookUp::FileFinder>(places)](
                       const std::string& title, auto process) { return finder->find(title, process); };
          },
          [this](xcb_window_t window) {
            if (const X11Application* owner = applications_.ofWindow(window)) notify({owner->pid});
          }) {
  applications_.onWindowsChanged = [this](const std::set<ProcessId>& pids) { notify(pids); };
}

X11Accessibility::~X11Accessibility() {
  applications_.onWindowsChanged = nullptr;
}

Element X11Accessibility::applicationElement(ProcessId pid) {
  return X11Element::make(X11Element::Kind::application, static_cast<std::uint32_t>(pid));
}

std::optional<AttributeValue> X11Accessibility::attribute(const Element& element, std::string_view name) {
  const X11Element& handle = X11Element::of(element);
  switch (handle.kind()) {
    case X11Element::Kind::window:
      return windowAttribute(handle.number(), name);
    case X11Element::Kind::application: {
      const X11Application* application = applications_.withPid(static_cast<ProcessId>(handle.number()));
      return application == nullptr ? std::nullopt : applicationAttribute(*application, name);
    }
    case X11Element::Kind::menuPart:
      return menus_.attribute(*AtSpiElement::of(element), name);
    case X11Element::Kind::closeButton:
      return std::nullopt;
  }
  return std::nullopt;
}

std::optional<AttributeValue> X11Accessibility::applicationAttribute(const X11Application& application,
                                                                     std::string_view name) {
  if (name == "AXWindows") {
    std::vector<Element> windows;
    for (const xcb_window_t id : application.windows) {
      const X11Window* window = mirror_.find(id);
      if (window == nullptr || window->kind == X11WindowKind::furniture || !mirror_.isOnShownDesktop(*window))
        continue;
      windows.push_back(X11Element::make(X11Element::Kind::window, id));
    }
    return windows;
  }
  if (name == "AXFocusedWindow") {
    const xcb_window_t focused = applications_.focusedWindow(application);
    if (focused == XCB_WINDOW_NONE) return std::nullopt;
    return X11Element::make(X11Element::Kind::window, focused);
  }
  if (name == "AXMenuBar") return menuBar(application);
  if (name == "AXTitle" && application.name) return *application.name;
  return std::nullopt;
}

std::optional<AttributeValue> X11Accessibility::windowAttribute(xcb_window_t id, std::string_view name) {
  if (name == "AXPosition" || name == "AXSize") frames_.settle(id);
  const X11Window* window = mirror_.find(id);
  if (window == nullptr) return std::nullopt;
  if (name == "AXTitle") return window->title();
  if (name == "AXPosition") return density_.map().toPoints(window->frame()).origin();
  if (name == "AXSize") return density_.map().toPoints(window->frame()).size();
  if (name == "AXMinimized") return mirror_.isMinimized(*window);
  if (name == "AXFullScreen") return window->fullscreen;
  if (name == "AXCloseButton") return X11Element::make(X11Element::Kind::closeButton, id);
  if (name == "AXDocument") return document(*window);
  if (name == "AXMain") {
    const X11Application* owner = applications_.ofWindow(id);
    return owner != nullptr && mainWindow(*owner) == id;
  }
  if (name == "AXSubrole") {
    if (window->standard()) return std::string("AXStandardWindow");
    const bool dialog = window->kind == X11WindowKind::dialog || window->transientFor;
    return std::string(dialog ? "AXDialog" : "AXUnknown");
  }
  return std::nullopt;
}

Subscription X11Accessibility::onceAtRest(const Element& element, std::function<void()> callback) {
  const X11Element& handle = X11Element::of(element);
  if (handle.kind() != X11Element::Kind::window) return {};
  return rest_.onceAtRest(handle.number(), std::move(callback));
}

std::optional<AttributeValue> X11Accessibility::document(const X11Window& window) {
  if (!mayHaveDocument(window)) return std::nullopt;
  documents_.tidy([this](xcb_window_t id) { return mirror_.find(id) != nullptr; });
  if (auto url = documents_.document(window.id, window.title(), window.pid)) return std::move(*url);
  return std::nullopt;
}

bool X11Accessibility::mayHaveDocument(const X11Window& window) const {
  // The names of another machine's files mean nothing here.
  if (!applications_.isLocal(window)) return false;
  // The open files and the command line of a terminal are no document of the window's, whatever its title
  // says.
  const X11Application* owner = applications_.ofWindow(window.id);
  return owner == nullptr || !owner->isTerminal;
}

xcb_window_t X11Accessibility::mainWindow(const X11Application& application) const {
  if (main_.window != XCB_WINDOW_NONE && main_.activationCount == applications_.activationCount() &&
      applications_.ofWindow(main_.window) == &application)
    return main_.window;
  return applications_.lastActiveWindow(application);
}

std::optional<AttributeValue> X11Accessibility::menuBar(const X11Application& application) {
  if (main_.activationCount == applications_.activationCount() && main_.window != XCB_WINDOW_NONE &&
      mirror_.find(main_.window) == nullptr) {
    // The window that was meant is gone, and what its menu should do is not for another.
    main_ = {};
    return std::nullopt;
  }
  const X11Window* window = mirror_.find(mainWindow(application));
  if (window == nullptr || !window->pid || !applications_.isLocal(*window)) return std::nullopt;
  const auto ofProcess = std::ranges::count_if(
      mirror_.windows(), [window](const auto& entry) { return entry.second.pid == window->pid; });
  auto bar = menus_.menuBar({*window->pid, window->title(), window->frame(), ofProcess == 1,
                             exportedMenuBarOf(connection_, window->id)});
  if (!bar) return std::nullopt;
  return std::move(*bar);
}

void X11Accessibility::set(const Element& element, std::string_view name, const AttributeValue& value) {
  const X11Element& handle = X11Element::of(element);
  if (handle.kind() != X11Element::Kind::window) return;
  if (name == "AXMain") {
    // Menus are a window's own here: nothing on the screen has to change for one to be meant.
    const auto* becomesMain = std::get_if<bool>(&value);
    if (becomesMain != nullptr && *becomesMain) main_ = {handle.number(), applications_.activationCount()};
    return;
  }
  const X11Window* window = mirror_.find(handle.number());
  if (window == nullptr) return;
  if (name == "AXPosition") {
    if (const auto* corner = std::get_if<AxPoint>(&value)) frames_.setPosition(window->id, *corner);
  } else if (name == "AXSize") {
    if (const auto* size = std::get_if<Size>(&value)) frames_.setSize(window->id, *size);
  } else if (name == "AXMinimized") {
    if (const auto* minimized = std::get_if<bool>(&value)) setMinimized(*window, *minimized);
  }
}

void X11Accessibility::setMinimized(const X11Window& window, bool minimized) {
  if (minimized == mirror_.isMinimized(window)) return;
  if (!minimized) {
    // Mapping it would do too, but only being made active brings it back under every window manager.
    activateWindow(window.id);
    return;
  }
  frames_.send();
  connection_.sendToWindowManager(window.id, connection_.atoms().wmChangeState, {iconicState, 0, 0, 0, 0});
}

Performed X11Accessibility::perform(const Element& element, std::string_view action) {
  const X11Element& handle = X11Element::of(element);
  if (handle.kind() == X11Element::Kind::menuPart)
    return action == "AXPress" ? menus_.press(*AtSpiElement::of(element)) : Performed::refused;
  if (mirror_.find(handle.number()) == nullptr) return Performed::refused;
  if (handle.kind() == X11Element::Kind::window && action == "AXRaise") {
    activateWindow(handle.number());
    return Performed::done;
  }
  if (handle.kind() == X11Element::Kind::closeButton && action == "AXPress") {
    frames_.send();
    questions_.noteClosing(handle.number());
    connection_.sendToWindowManager(handle.number(), connection_.atoms().netCloseWindow,
                                    {connection_.serverTime(), fromPager, 0, 0, 0});
    return Performed::done;
  }
  return Performed::refused;
}

void X11Accessibility::activateWindow(xcb_window_t window) {
  frames_.send();
  if (onActivating) onActivating();
  connection_.sendToWindowManager(window, connection_.atoms().netActiveWindow,
                                  {fromPager, connection_.serverTime(), mirror_.activeWindow(), 0, 0});
  applications_.noteRaise(window);
}

void X11Accessibility::willRead(std::span<const Element> elements,
                                std::span<const std::string_view> attributes) {
  if (std::ranges::find(attributes, "AXDocument") == attributes.end()) return;
  std::vector<WindowDocuments::Shown> shown;
  for (const Element& element : elements) {
    const X11Element& handle = X11Element::of(element);
    if (handle.kind() != X11Element::Kind::window || documents_.isKnown(handle.number())) continue;
    const X11Window* window = mirror_.find(handle.number());
    if (window == nullptr || !window->standard() || !mayHaveDocument(*window)) continue;
    shown.push_back({window->id, window->title(), window->pid});
  }
  documents_.lookUp(std::move(shown));
}

std::unique_ptr<ElementObserver> X11Accessibility::observe(ProcessId pid,
                                                           std::function<void()> onNotification) {
  if (applications_.withPid(pid) == nullptr) return nullptr;
  auto watch = std::make_shared<Watch>();
  watch->pid = pid;
  watch->onNotification = std::move(onNotification);
  std::erase_if(watches_, [](const auto& each) { return each.expired(); });
  watches_.push_back(watch);
  return std::make_unique<Observer>(std::move(watch));
}

void X11Accessibility::notify(const std::set<ProcessId>& pids) {
  for (const auto& each : watches_) {
    const auto watch = each.lock();
    if (!watch || !watch->hasNotification || !pids.contains(watch->pid)) continue;
    if (std::exchange(watch->posted, true)) continue;
    loop_.post([weak = each] {
      const auto alive = weak.lock();
      if (!alive) return;
      alive->posted = false;
      alive->onNotification();
    });
  }
}

}  // namespace pellar
