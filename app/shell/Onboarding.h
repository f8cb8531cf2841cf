#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "app/shell/OwnWindows.h"
#include "platform/Platform.h"
#include "platform/Subscription.h"
#include "platform/Windows.h"

namespace pellar {

// Waits for the user to give the Accessibility permission, and says in a window how. Main thread only.
class Onboarding {
 public:
  // What `platform` refers to outlives this.
  Onboarding(const Platform& platform, std::shared_ptr<OwnWindows> windows)
      : platform_(platform), windows_(std::move(windows)) {}
  Onboarding(const Onboarding&) = delete;
  Onboarding& operator=(const Onboarding&) = delete;

  // Has the system ask the user, shows the window, and calls `onTrusted` once after the permission is given,
  // whether the user closed the window or not.
  void begin(std::function<void()> onTrusted);
  // Brings the window back, also one that the user closed. Nothing happens when nothing is waited for.
  void showAgain();

 private:
  struct Shown {
    std::unique_ptr<PlainWindow> window;
    Subscription closed;  // depends-on: window
  };

  void showOnboarding();
  void openAccessibilityPane();
  void poll();

  Platform platform_;
  std::shared_ptr<OwnWindows> windows_;
  std::function<void()> onTrusted_;
  std::optional<Shown> shown_;
  Subscription trustTimer_;
};

}  // namespace pellar
