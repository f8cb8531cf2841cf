#pragma once

#include <optional>
#include <string>

#include "platform/LoginItem.h"

namespace pellar {

// The system's list of programs to start at login, as far as this program is in it.
class SimLoginItem final : public LoginItem {
 public:
  [[nodiscard]] bool isEnabled() const override { return enabled; }
  std::optional<std::string> setEnabled(bool wanted) override {
    if (!failure) enabled = wanted;
    return failure;
  }

  bool enabled = false;                // the user may change it in the system's settings
  std::optional<std::string> failure;  // why every change fails
};

}  // namespace pellar
