#include "app/shell/AppDelegate.h"

#include <chrono>

#include "core/AppState.h"
#include "core/Log.h"
#include "platform/MainLoop.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr auto trustPollInterval = 2000ms;

}  // namespace

AppDelegate::AppDelegate(const Platform& platform)
    : platform_(platform),
      tracker_(WindowTracker::create(platform.accessibility, platform.workspace, platform.mainLoop)),
      hotkeys_(platform.eventTaps, platform.mainLoop) {
  // First of all, so that what the store has to say is kept.
  Log::setUrl(platform.folders.logFile);
  store_ = std::make_shared<StateStore>(StateStore::defaultURL(platform.folders.applicationSupport));
}

AppDelegate::~AppDelegate() {
  if (strip_) strip_->autoSaveToggled = nullptr;
}

void AppDelegate::applicationDidFinishLaunching() {
  tracker_->isEnabled = [store = store_](const TrackedApp& app) {
    return store->state().settings.follows(app);
  };
  if (platform_.accessibility.isTrusted()) {
    startTracking();
    return;
  }
  platform_.accessibility.isTrustedPromptingUser();
  waitForPermission();
}

void AppDelegate::waitForPermission() {
  trustTimer_ = platform_.mainLoop.every(trustPollInterval, [this] {
    if (!platform_.accessibility.isTrusted()) return;
    trustTimer_.cancel();
    startTracking();
  });
}

void AppDelegate::startTracking() {
  strip_ = StripController::create(tracker_, store_, platform_);
  strip_->autoSaveToggled = [this] { toggleAutoSave(); };
  hotkeys_.isActive = [this] { return strip_->panel().isVisible(); };
  hotkeys_.onCycle = [this](bool forward) { strip_->cycle(forward); };
  hotkeys_.start();
  tracker_->start();
  Log::write("tracking started");
}

// Pressing the strip's tool means one minute or off, whatever interval was chosen elsewhere.
void AppDelegate::toggleAutoSave() {
  store_->update([](AppState& state) {
    auto& minutes = state.settings.autoSaveMinutes;
    minutes = minutes < 1 ? 1 : 0;
  });
  tracker_->refresh();
}

}  // namespace pellar
