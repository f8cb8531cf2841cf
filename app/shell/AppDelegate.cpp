#include "app/shell/AppDelegate.h"

#include "app/shell/WaitingPorts.h"
#include "core/AppState.h"
#include "core/Log.h"
#include "core/Weakly.h"
#include "platform/Accessibility.h"
#include "platform/LoginItem.h"
#include "platform/StatusBar.h"

namespace pellar {
namespace {

constexpr double menuBarImageHeight = 16;

// What the store has to say is kept, too.
std::shared_ptr<StateStore> loadStore(const UserFolders& folders, FileOperations& files) {
  Log::setUrl(folders.logFile);
  return std::make_shared<StateStore>(StateStore::defaultURL(folders.applicationSupport, files), files);
}

// Scripts under way may outlive the tap.
WaitingPorts::Scope restOf(const std::shared_ptr<HotkeyTap>& hotkeys) {
  return [weak = std::weak_ptr(hotkeys)] {
    const auto tap = weak.lock();
    return tap ? tap->rest() : Subscription();
  };
}

}  // namespace

AppDelegate::AppDelegate(const Platform& platform, FileOperations& files)
    : hotkeys_(std::make_shared<HotkeyTap>(platform.eventTaps, platform.mainLoop)),
      platform_(WaitingPorts::in(platform, restOf(hotkeys_))),
      place_(PlaceInFront::create(platform_.workspace)),
      windows_(OwnWindows::create(platform_.windows, platform_.mainLoop, place_)),
      store_(loadStore(platform_.folders, files)),
      tracker_(WindowTracker::create(platform_.accessibility, platform_.workspace, platform_.mainLoop)),
      automation_(std::make_shared<Automation>(platform_, files)),
      paths_(std::make_shared<DocumentPaths>(platform_, tracker_, automation_)),
      updater_(Updater::create(platform_)),
      terms_(TermsGate::create(platform_, windows_, store_)),
      about_(platform_, windows_, updater_),
      autoSave_(platform_, store_, tracker_, automation_),
      statusMenu_(StatusMenu::create(platform_, store_, tracker_, updater_)),
      updateSchedule_(platform_.mainLoop, store_, updater_),
      onboarding_(platform_, windows_) {}

void AppDelegate::applicationDidFinishLaunching() {
  buildStatusItem();
  autoSave_.restart();
  tracker_->isEnabled = [store = store_](const TrackedApp& app) {
    return store->state().settings.follows(app);
  };
  connectUpdater();
  updateSchedule_.startUpdateChecks();
  if (platform_.accessibility.isTrusted()) {
    startTracking();
  } else {
    onboarding_.begin([this] {
      startTracking();
      terms_->restKeys();
    });
  }
}

void AppDelegate::showItself() {
  if (!strip_) {
    onboarding_.showAgain();
  } else if (!terms_->isAccepted()) {
    terms_->showEula();
  }
  platform_.statusBar.openMenu();
}

void AppDelegate::buildStatusItem() {
  statusMenu_->onAutoSaveChosen = whileHere([this] { autoSave_.restart(); });
  statusMenu_->onToggleLaunchAtLogin = whileHere([this] { toggleLaunchAtLogin(); });
  statusMenu_->onShowAbout = whileHere([this] { about_.showAbout(); });
  statusItem_ = platform_.statusBar.addItem(
      {.imageName = "MenuBarTemplate", .imageHeight = menuBarImageHeight, .title = "⧉"},
      [menu = statusMenu_] { return menu->items(); });
}

void AppDelegate::connectUpdater() {
  updater_->onUpdate = whileHere([this](const Updater::Info& info) { about_.announce(info.latest); });
  updater_->onEula = whileHere([this](const std::string& version, const std::optional<std::string>& url) {
    terms_->require(version, url);
    const bool wasLocked = strip_ && strip_->locked;
    updateLock();
    terms_->presentGates();
    terms_->restKeys();
    if (wasLocked && !strip_->locked) tracker_->refresh();
  });
  terms_->onAccepted = whileHere([this] {
    updateLock();
    tracker_->refresh();
  });
}

void AppDelegate::startTracking() {
  strip_ = StripController::create(tracker_, store_, paths_, automation_, place_, platform_);
  updateLock();
  terms_->presentGates();
  strip_->autoSaveToggled = whileHere([this] { toggleAutoSave(); });
  connectHotkeys();
  hotkeys_->start();
  tracker_->start();
  Log::write("tracking started");
}

void AppDelegate::connectHotkeys() {
  hotkeys_->isActive = [weak = std::weak_ptr(strip_)] {
    const auto strip = weak.lock();
    return strip && strip->canCycle();
  };
  hotkeys_->onCycle =
      weakly(std::weak_ptr(strip_), [](StripController& strip, bool forward) { strip.cycle(forward); });
  strip_->canCycleMayHaveChanged = whileHere([this] { hotkeys_->activityChanged(); });
}

// Without accepted terms there is no strip.
void AppDelegate::updateLock() {
  if (!strip_) return;
  strip_->locked = !terms_->isAccepted();
  if (strip_->locked) strip_->hide();
}

// Pressing the strip's tool means one minute or off, whatever interval was chosen elsewhere.
void AppDelegate::toggleAutoSave() {
  store_->update(
      [](AppState& state) { state.settings.autoSaveMinutes = state.settings.autoSaves() ? 0 : 1; });
  autoSave_.restart();
  tracker_->refresh();
}

void AppDelegate::toggleLaunchAtLogin() {
  auto& item = platform_.loginItem;
  const auto failure = item.setEnabled(item.status() != LoginItemStatus::enabled);
  if (failure) Log::write("launch at login toggle failed: " + *failure);
  // Registered all the same, but without the user's approval nothing is started.
  if (item.status() == LoginItemStatus::requiresApproval) item.openSettings();
}

}  // namespace pellar
