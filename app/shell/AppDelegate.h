#pragma once

#include <memory>
#include <utility>

#include "app/automation/Automation.h"
#include "app/info/Updater.h"
#include "app/shell/AboutPellar.h"
#include "app/shell/AutoSave.h"
#include "app/shell/HotkeyTap.h"
#include "app/shell/Onboarding.h"
#include "app/shell/OwnWindows.h"
#include "app/shell/StatusMenu.h"
#include "app/shell/TermsGate.h"
#include "app/shell/UpdateSchedule.h"
#include "app/strip/StripController.h"
#include "app/strip/documents/DocumentPaths.h"
#include "app/tracking/PlaceInFront.h"
#include "app/tracking/WindowTracker.h"
#include "core/Alive.h"
#include "core/FileOperations.h"
#include "core/StateStore.h"
#include "platform/Platform.h"
#include "platform/Subscription.h"

namespace pellar {

// Owns every long-lived object of the program and connects them. One a process, made before its main loop
// runs. Main thread only.
class AppDelegate {
 public:
  // Loads the state. What `platform` refers to outlives the delegate, as `files` do, through which its own
  // files and renamed documents are worked on.
  explicit AppDelegate(const Platform& platform, FileOperations& files = systemFileOperations());
  AppDelegate(const AppDelegate&) = delete;
  AppDelegate& operator=(const AppDelegate&) = delete;

  // The start-up sequence: tracking begins at once, or as soon as the user has given the Accessibility
  // permission.
  void applicationDidFinishLaunching();

  // The program was started once more: by a user who does not find it, for instance because the menu bar has
  // no room for its item. The window that waits for him comes to the front, and the menu opens.
  void showItself();

  [[nodiscard]] StateStore& store() { return *store_; }
  [[nodiscard]] WindowTracker& tracker() { return *tracker_; }
  [[nodiscard]] DocumentPaths& documentPaths() { return *paths_; }
  // Null until tracking starts.
  [[nodiscard]] StripController* strip() { return strip_.get(); }

 private:
  void buildStatusItem();
  void connectUpdater();
  void startTracking();
  void connectHotkeys();
  void updateLock();
  void toggleAutoSave();
  void toggleLaunchAtLogin();

  // A callback for an object that a call under way may keep for the rest of a turn when the delegate is gone:
  // it does nothing then.
  template <class Action>
  [[nodiscard]] auto whileHere(Action action) const {
    return [here = alive_.watch(), action = std::move(action)](const auto&... arguments) {
      if (here) action(arguments...);
    };
  }

  std::shared_ptr<HotkeyTap> hotkeys_;
  Platform platform_;
  std::shared_ptr<PlaceInFront> place_;
  std::shared_ptr<OwnWindows> windows_;
  std::shared_ptr<StateStore> store_;
  std::shared_ptr<WindowTracker> tracker_;
  std::shared_ptr<Automation> automation_;
  std::shared_ptr<DocumentPaths> paths_;
  std::shared_ptr<StripController> strip_;
  std::shared_ptr<Updater> updater_;
  std::shared_ptr<TermsGate> terms_;
  AboutPellar about_;
  AutoSave autoSave_;
  std::shared_ptr<StatusMenu> statusMenu_;
  UpdateSchedule updateSchedule_;
  Onboarding onboarding_;
  Subscription statusItem_;
  Alive alive_;  // ends first, so that the others call nothing back while they end
};

}  // namespace pellar
