#include "app/strip/StripController.h"

#include <algorithm>
#include <utility>

#include "app/strip/StripGeometry.h"
#include "app/tracking/AX.h"
#include "core/AppState.h"
#include "core/TabLabel.h"
#include "core/Tile.h"
#include "platform/MainLoop.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr Size initialSize{400, StripGeometry::stripHeight};
constexpr auto pathRecheckInterval = 30s;

Color colorOf(TagColor tag) {
  switch (tag) {
    case TagColor::red:
      return Color::of(SystemColor::red);
    case TagColor::orange:
      return Color::of(SystemColor::orange);
    case TagColor::yellow:
      return Color::of(SystemColor::yellow);
    case TagColor::green:
      return Color::of(SystemColor::green);
    case TagColor::blue:
      return Color::of(SystemColor::blue);
    case TagColor::purple:
      return Color::of(SystemColor::purple);
  }
  return {};
}

Color opaque(const RGB& rgb) {
  return {rgb.red, rgb.green, rgb.blue, 1, std::nullopt};
}

}  // namespace

std::shared_ptr<StripController> StripController::create(std::shared_ptr<WindowTracker> tracker,
                                                         std::shared_ptr<StateStore> store,
                                                         const Platform& platform) {
  std::shared_ptr<StripController> controller(
      new StripController(std::move(tracker), std::move(store), platform));
  controller->connect();
  return controller;
}

StripController::StripController(std::shared_ptr<WindowTracker> tracker, std::shared_ptr<StateStore> store,
                                 const Platform& platform)
    : tracker_(std::move(tracker)),
      store_(std::move(store)),
      platform_(platform),
      panel_(platform.panels.makePanel(
          {.contentSize = initialSize, .canBecomeKey = true, .stationary = true, .ignoresCycle = true})),
      view_(std::make_unique<TabStripView>(panel_->host())),
      dropdown_(platform.panels, platform.eventMonitors, platform.screens, *panel_, *view_) {
  panel_->setView(view_.get());
}

StripController::~StripController() {
  panel_->setView(nullptr);
}

void StripController::connect() {
  // Each callback keeps the controller alive while it runs, and does nothing once the controller is gone.
  const auto weakly = [weak = weak_from_this()](auto action) {
    return [weak, action](auto&&... arguments) {
      if (const auto self = weak.lock()) action(*self, arguments...);
    };
  };
  using Self = StripController;

  resignedKey_ = panel_->onDidResignKey(weakly([](Self& self) { self.closeRecent(); }));
  dropdown_.onOutsideClick = weakly([](Self& self) { self.closeRecent(); });
  view_->searchField().setOnActivate(weakly([](Self& self) { self.openRecent(); }));
  view_->searchField().setOnChange(weakly([](Self& self) { self.searchTextChanged(); }));
  view_->searchField().setOnCommand([weak = weak_from_this()](const std::string& selector) {
    const auto self = weak.lock();
    if (!self || selector != "cancelOperation:") return false;
    self->closeRecent();
    return true;
  });
  view_->onSelect = weakly([](Self& self, WindowId id) { self.selectTab(id); });
  view_->onClose = weakly([](Self& self, WindowId id) {
    if (const auto target = self.window(id)) self.close(*target);
  });
  view_->onAction = weakly([](Self& self, StripAction action, const MouseEvent&) { self.perform(action); });
  view_->onReorder = weakly([](Self& self, WindowId id, int index) { self.tracker_->move(id, index); });
  view_->onDrag = weakly([](Self& self, ScreenPoint offset) { self.dragGroup(offset); });
  view_->onDragEnd = weakly([](Self& self) { self.endDrag(); });

  tracker_->delegate = weak_from_this();
}

std::shared_ptr<OfficeWindow> StripController::window(WindowId id) const {
  const auto found = std::ranges::find_if(windows_, [&](const auto& each) { return each->id() == id; });
  return found == windows_.end() ? nullptr : *found;
}

// --- the tracker's picture ---

void StripController::tracker(WindowTracker&, const std::optional<TrackedApp>& app, const WindowList& windows,
                              const std::shared_ptr<OfficeWindow>& front) {
  // Calls to the system may deliver a newer picture before they return; whoever notices leaves the strip to
  // it.
  const auto before = reports_;
  if (front && front_ && front_->id() != front->id()) closeRecent();
  if (reports_ != before) return;
  if (!app && ownApplicationIsFrontmost()) return;

  const auto own = ++reports_;
  app_ = app;
  windows_ = windows;
  front_ = front;
  if (mustHide()) {
    hide();
    return;
  }
  resolvePathsIfNeeded(*app, windows);
  if (reports_ != own) return;
  pushDownIfNeeded(*front);
  if (reports_ != own) return;
  show();
}

// The user works in the strip itself. Also when neither program has an identifier to tell.
bool StripController::ownApplicationIsFrontmost() const {
  const auto frontmost = platform_.workspace.frontmostApplication();
  return (frontmost ? frontmost->bundleId : std::nullopt) == platform_.workspace.ownBundleId();
}

bool StripController::mustHide() const {
  return locked || !app_ || !front_ || front_->minimized || front_->fullscreen || !(front_->frame.width > 0);
}

void StripController::hide() {
  closeRecent();
  panel_->orderOut();
}

void StripController::show() {
  view_->setAccent(opaque(app_->accentRGB()));
  view_->setOfficeTools(true);
  view_->setRenameTool(app_->office.has_value());
  view_->setAutoSaveOn(store_->state().settings.autoSaveMinutes > 0);
  view_->setTabs(tabItems());
  panel_->setFrame(StripGeometry::stripFrame(front_->frame, platform_.screens.screens()), true);
  panel_->orderFrontRegardless();
  if (dropdown_.isOpen()) dropdown_.position();
}

std::vector<TabItem> StripController::tabItems() const {
  const auto& tags = store_->state().tags;
  const auto tagOf = [&](const OfficeWindow& each) -> std::optional<Color> {
    if (tags.empty()) return std::nullopt;
    const auto stored = tags.find(TabLabel::tagKey(each.title, each.path));
    if (stored == tags.end()) return std::nullopt;
    const auto tag = tagColorWithRawValue(stored->second);
    return tag ? std::optional(colorOf(*tag)) : std::nullopt;
  };
  std::vector<TabItem> items;
  items.reserve(windows_.size());
  for (const auto& each : windows_)
    items.push_back({each->id(), TabLabel::label(each->title, each->path), tagOf(*each), each == front_});
  return items;
}

void StripController::resolvePathsIfNeeded(const TrackedApp& app, const WindowList& windows) {
  const auto uptime = platform_.mainLoop.uptime();
  WindowList pending;
  for (const auto& each : windows) {
    if (each->path) continue;
    const auto checked = pathChecked_.find(each->id());
    if (checked == pathChecked_.end() || uptime - checked->second > pathRecheckInterval)
      pending.push_back(each);
  }
  if (!pending.empty()) {
    // Before asking, which may take long and deliver the next picture meanwhile.
    for (const auto& each : pending) pathChecked_.insert_or_assign(each->id(), uptime);
    const auto ask = app.office ? pathsByName : nullptr;
    const auto names = ask ? ask(*app.office) : DocumentPaths{};
    for (const auto& each : pending)
      if (const auto name = names.find(TabLabel::label(each->title, std::nullopt)); name != names.end())
        each->path = name->second;
  }
  recordRecent(app, windows);
}

// Each document is entered once a run, when it is first seen open.
void StripController::recordRecent(const TrackedApp& app, const WindowList& windows) {
  std::vector<std::string> fresh;
  for (const auto& each : windows)
    if (each->path && recordedRecent_.insert(*each->path).second) fresh.push_back(*each->path);
  if (fresh.empty()) return;
  const double now = platform_.mainLoop.secondsSince1970();
  store_->update([&](AppState& state) {
    for (const auto& path : fresh) state.touchRecent(path, app.id, now);
  });
}

bool StripController::pushDownIfNeeded(OfficeWindow& window) {
  const auto screens = platform_.screens.screens();
  const auto target = StripGeometry::pushedDown(window.frame, screens);
  if (!target) return false;
  tracker_->setFrame(window, *target);
  if (!StripGeometry::hasRoomForStrip(window.frame, screens)) return false;
  tracker_->scheduleRefresh();
  return true;
}

// --- gestures ---

void StripController::perform(StripAction action) {
  if (!app_) return;
  const auto front = front_;
  switch (action) {
    case StripAction::search:
      view_->setSearchExpanded(true);
      view_->layout();
      openRecent();
      break;
    case StripAction::autoSave:
      if (const auto toggled = autoSaveToggled) toggled();
      break;
    case StripAction::closeAll:
      closeAll();
      break;
    case StripAction::minimize:
      if (front) minimize(*front);
      break;
    case StripAction::zoom:
      if (front) zoom(*front);
      break;
    case StripAction::closeWindow:
      if (front) close(*front);
      break;
    // These act through menus and document scripting, which are not connected.
    case StripAction::more:
    case StripAction::rename:
    case StripAction::saveAll:
    case StripAction::groups:
    case StripAction::newDoc:
      break;
  }
}

void StripController::selectTab(WindowId id) {
  const auto target = window(id);
  if (!target) return;
  closeRecent();
  raise(*target);
}

void StripController::raise(const OfficeWindow& window) {
  auto& accessibility = platform_.accessibility;
  if (window.minimized) accessibility.set(window.element, "AXMinimized", false);
  accessibility.perform(window.element, "AXRaise");
  platform_.workspace.activate(window.pid);
  tracker_->scheduleRefresh();
}

void StripController::minimize(const OfficeWindow& window) {
  platform_.accessibility.set(window.element, "AXMinimized", true);
  tracker_->scheduleRefresh();
}

void StripController::close(const OfficeWindow& window) {
  if (AX::pressCloseButton(platform_.accessibility, window.element)) tracker_->scheduleRefresh();
}

void StripController::closeAll() {
  const auto windows = windows_;
  for (const auto& each : windows) AX::pressCloseButton(platform_.accessibility, each->element);
  tracker_->scheduleRefresh();
}

void StripController::zoom(OfficeWindow& window) {
  const AxRect area = StripGeometry::tileArea(window.frame, platform_.screens.screens());
  AxRect target = area;
  const auto stored = restoreFrames_.find(window.id());
  if (stored != restoreFrames_.end() && StripGeometry::fills(window.frame, area)) {
    target = stored->second;
    restoreFrames_.erase(stored);
  } else {
    restoreFrames_.insert_or_assign(window.id(), window.frame);
  }
  tracker_->setFrame(window, target);
  tracker_->scheduleRefresh();
}

void StripController::cycle(bool forward) {
  if (!front_) return;
  const auto current = std::ranges::find(windows_, front_);
  if (current == windows_.end()) return;
  const auto next =
      cycledIndex(static_cast<int>(current - windows_.begin()), static_cast<int>(windows_.size()), forward);
  const auto target = windows_[static_cast<std::size_t>(next)];
  raise(*target);
}

void StripController::dragGroup(ScreenPoint offset) {
  if (!drag_.active()) {
    if (!front_ || front_->minimized || front_->fullscreen) return;
    drag_.begin(front_, windows_);
  }
  const AxRect front = drag_.moveBy(platform_.accessibility, offset);
  panel_->setFrame(StripGeometry::stripFrame(front, platform_.screens.screens()), true);
  if (dropdown_.isOpen()) dropdown_.position();
}

void StripController::endDrag() {
  drag_.end();
  tracker_->scheduleRefresh();
}

// --- the search ---

void StripController::openRecent() {
  dropdown_.open();
}

void StripController::closeRecent() {
  if (!dropdown_.close()) return;
  // The keyboard goes back to the window that had it.
  if (const auto front = front_) platform_.workspace.activate(front->pid);
}

void StripController::searchTextChanged() {
  if (!dropdown_.isOpen()) openRecent();
}

}  // namespace pellar
