#pragma once

#include <memory>

#include "app/shell/HotkeyTap.h"
#include "app/strip/StripController.h"
#include "app/tracking/WindowTracker.h"
#include "core/StateStore.h"
#include "platform/Platform.h"
#include "platform/Subscription.h"

namespace pellar {

// Owns every long-lived object of the program and connects them. One a process, made before its main loop
// runs. Main thread only.
class AppDelegate {
 public:
  // Loads the state. What `platform` refers to outlives the delegate.
  explicit AppDelegate(const Platform& platform);
  ~AppDelegate();
  AppDelegate(const AppDelegate&) = delete;
  AppDelegate& operator=(const AppDelegate&) = delete;

  // The start-up sequence: tracking begins at once, or as soon as the user has given the Accessibility
  // permission.
  void applicationDidFinishLaunching();

  [[nodiscard]] StateStore& store() { return *store_; }
  [[nodiscard]] WindowTracker& tracker() { return *tracker_; }
  // Null until tracking starts.
  [[nodiscard]] StripController* strip() { return strip_.get(); }

 private:
  void waitForPermission();
  void startTracking();
  void toggleAutoSave();

  Platform platform_;
  std::shared_ptr<StateStore> store_;
  std::shared_ptr<WindowTracker> tracker_;
  std::shared_ptr<StripController> strip_;
  HotkeyTap hotkeys_;  // depends-on: strip_
  Subscription trustTimer_;
};

}  // namespace pellar
