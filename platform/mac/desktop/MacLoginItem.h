#pragma once

#include "platform/LoginItem.h"

namespace pellar {

// The login item of the main application (SMAppService).
class MacLoginItem final : public LoginItem {
 public:
  [[nodiscard]] LoginItemStatus status() const override;
  std::optional<std::string> setEnabled(bool enabled) override;
  void openSettings() override;
};

}  // namespace pellar
