#pragma once

#include "platform/Alerts.h"

namespace pellar {

// NSAlert, run modally.
class MacAlerts final : public Alerts {
 public:
  [[nodiscard]] std::optional<TextAlertAnswer> runModal(const TextAlert& alert) override;
};

}  // namespace pellar
