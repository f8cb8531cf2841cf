#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Alerts.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

// Modal questions and what the user answers. A question that nobody waits for is cancelled.
class SimAlerts final : public Alerts {
 public:
  // Sees the question and answers it.
  using User = std::function<TextAlertAnswer(const TextAlert&)>;

  explicit SimAlerts(SimMainLoop& loop) : loop_(loop) {}

  [[nodiscard]] std::optional<TextAlertAnswer> runModal(const TextAlert& alert) override;

  void next(User user) { users_.push_back(std::move(user)); }
  // The user types a text over what is there and presses the first button.
  void nextType(const std::string& text);
  // The user presses the second button with a text in the field.
  void nextCancel(const std::string& text = {});

  // How many questions the user still waits for.
  [[nodiscard]] std::size_t awaited() const { return users_.size(); }

  [[nodiscard]] const std::vector<TextAlert>& shown() const { return shown_; }

 private:
  SimMainLoop& loop_;
  std::deque<User> users_;
  std::vector<TextAlert> shown_;
  bool open_ = false;
};

}  // namespace pellar
