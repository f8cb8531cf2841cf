#pragma once

#include <optional>
#include <string>

#include "platform/LoginItem.h"

namespace pellar {

// The system's list of programs to start at login, as far as this program is in it.
class SimLoginItem final : public LoginItem {
 public:
  [[nodiscard]] LoginItemStatus status() const override { return status_; }
  // Registering succeeds also where the user has to allow it first, or has taken his permission back
  // (github.com/vorssaint/vorssaint-utils/pull/760; "requiresApproval" in Apple's documentation of
  // SMAppService.Status).
  std::optional<std::string> setEnabled(bool wanted) override {
    if (failure) return failure;
    if (!wanted) {
      status_ = LoginItemStatus::notRegistered;
    } else {
      status_ = needsApproval ? LoginItemStatus::requiresApproval : LoginItemStatus::enabled;
    }
    return std::nullopt;
  }
  void openSettings() override { ++settingsOpened_; }

  bool needsApproval = false;          // the user has to allow it before it counts
  std::optional<std::string> failure;  // why every change fails

  // The user switches it on or off in the system's settings, which keep it registered.
  void switchInSettings(bool on) {
    needsApproval = !on;
    status_ = on ? LoginItemStatus::enabled : LoginItemStatus::requiresApproval;
  }
  [[nodiscard]] bool enabled() const { return status_ == LoginItemStatus::enabled; }
  // How often the program opened the settings for the user.
  [[nodiscard]] int settingsOpened() const { return settingsOpened_; }

 private:
  LoginItemStatus status_ = LoginItemStatus::notRegistered;
  int settingsOpened_ = 0;
};

}  // namespace pellar
