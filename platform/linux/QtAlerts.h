#pragma once

#include "platform/Alerts.h"

namespace pellar {

// Modal questions as dialogs of the toolkit.
class QtAlerts final : public Alerts {
 public:
  [[nodiscard]] std::optional<TextAlertAnswer> runModal(const TextAlert& alert) override;

 private:
  bool open_ = false;
};

}  // namespace pellar
