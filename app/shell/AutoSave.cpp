#include "app/shell/AutoSave.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

#include "app/automation/Automation.h"
#include "app/automation/FileMenu.h"
#include "core/Log.h"
#include "core/Settings.h"
#include "core/TrueWhile.h"
#include "core/Weakly.h"
#include "platform/MainLoop.h"

namespace pellar {
namespace {

// Longer than any program runs; the clock's numbers end somewhere.
constexpr std::chrono::minutes longestInterval = std::chrono::weeks(5'000);

}  // namespace

// Scripts run the main loop nested, in which the timer may be due again or be replaced, or the program end.
struct AutoSave::SavePass : std::enable_shared_from_this<SavePass> {
  SavePass(const Platform& ports, std::shared_ptr<StateStore> settings,
           std::shared_ptr<WindowTracker> windows, std::shared_ptr<Automation> scripts)
      : platform(ports),
        store(std::move(settings)),
        tracker(std::move(windows)),
        automation(std::move(scripts)) {}

  Platform platform;
  std::shared_ptr<StateStore> store;
  std::shared_ptr<WindowTracker> tracker;
  std::shared_ptr<Automation> automation;
  bool waits = false;  // for the end of a script
  bool running = false;

  void runInTurn() {
    // What is due while this very save goes on is being saved.
    if (running || std::exchange(waits, true)) return;
    automation->whenFree(weakly(weak_from_this(), [](SavePass& self) {
      if (std::exchange(self.waits, false)) self.run();
    }));
  }

  void run() {
    const TrueWhile pass(running);
    saveOfficeDocuments();
    saveFrontDocument();
  }

  void saveOfficeDocuments() {
    for (const OfficeApp app : allOfficeApps) {
      if (!store->state().settings.isEnabled(app)) continue;
      const int saved = automation->saveAll(app, /*onlyModified=*/true);
      if (saved < 1) continue;
      Log::write("autosave: " + std::string(displayName(app)) + " saved " + std::to_string(saved));
    }
  }

  void saveFrontDocument() {
    // Of an Office window no file is known here: a script alone saves its document.
    const auto front = tracker->front();
    if (front && FileMenu::save(platform.accessibility, *front))
      Log::write("autosave: " + front->app.name + " saved " + front->title);
  }
};

AutoSave::AutoSave(const Platform& platform, std::shared_ptr<StateStore> store,
                   std::shared_ptr<WindowTracker> tracker, std::shared_ptr<Automation> automation)
    : loop_(platform.mainLoop),
      pass_(std::make_shared<SavePass>(platform, std::move(store), std::move(tracker),
                                       std::move(automation))) {}

void AutoSave::restart() {
  timer_.cancel();
  pass_->waits = false;
  const Settings& settings = pass_->store->state().settings;
  if (!settings.autoSaves()) return;
  const auto interval = std::min(std::chrono::minutes(settings.autoSaveMinutes), longestInterval);
  timer_ = loop_.every(interval, [pass = pass_] { pass->runInTurn(); });
}

}  // namespace pellar
