#include "platform/sim/desktop/SimAlerts.h"

namespace pellar {

std::optional<TextAlertAnswer> SimAlerts::runModal(const TextAlert& alert) {
  if (open_) return std::nullopt;
  open_ = true;
  shown_.push_back(alert);
  loop_.runUntilIdle();
  TextAlertAnswer answer{TextAlertAnswer::firstButtonReturn + 1, alert.fieldText};
  if (!users_.empty()) {
    const auto user = std::move(users_.front());
    users_.pop_front();
    try {
      answer = user(alert);
    } catch (...) {
      open_ = false;
      throw;
    }
    loop_.runUntilIdle();
  }
  open_ = false;
  return answer;
}

void SimAlerts::nextType(const std::string& text) {
  next([text](const TextAlert&) { return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, text}; });
}

void SimAlerts::nextCancel(const std::string& text) {
  next([text](const TextAlert&) { return TextAlertAnswer{TextAlertAnswer::firstButtonReturn + 1, text}; });
}

}  // namespace pellar
