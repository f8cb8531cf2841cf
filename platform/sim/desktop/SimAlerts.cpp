#include "platform/sim/desktop/SimAlerts.h"

namespace pellar {

std::optional<TextAlertAnswer> SimAlerts::runModal(const TextAlert& alert) {
  if (open_) return std::nullopt;
  const Subscription closed([this] { open_ = false; });
  open_ = true;
  const auto modal = loop_.enterOtherMode();
  const auto session = panels_.beginModalSession();
  shown_.push_back(alert);
  panels_.keys().loseKey();
  loop_.runUntilIdle();
  const TextAlertAnswer answer = answerOfUser(alert);
  loop_.runUntilIdle();
  return answer;
}

TextAlertAnswer SimAlerts::answerOfUser(const TextAlert& alert) {
  if (users_.empty()) return {TextAlertAnswer::firstButtonReturn + 1, alert.fieldText};
  const auto user = std::move(users_.front());
  users_.pop_front();
  const TextAlertAnswer answer = user(alert);
  loop_.runUntilIdle();
  desktop_.activatePellar();
  return answer;
}

void SimAlerts::nextType(const std::string& text) {
  next([text](const TextAlert&) { return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, text}; });
}

void SimAlerts::nextCancel(const std::string& text) {
  next([text](const TextAlert&) { return TextAlertAnswer{TextAlertAnswer::firstButtonReturn + 1, text}; });
}

}  // namespace pellar
