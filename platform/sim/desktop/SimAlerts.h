#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Alerts.h"
#include "platform/sim/applications/SimDesktop.h"
#include "platform/sim/panel/SimPanels.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

// Modal questions and what the user answers. A question that no story waits for is cancelled.
//
// A question takes the keys from the program's panels, and from the application in front when the user
// answers: a click into a window of a program makes it the active one. Nothing gives them back by itself when
// the question is gone.
class SimAlerts final : public Alerts {
 public:
  // Sees the question and answers it.
  using User = std::function<TextAlertAnswer(const TextAlert&)>;

  SimAlerts(SimMainLoop& loop, SimDesktop& desktop, SimPanels& panels)
      : loop_(loop), desktop_(desktop), panels_(panels) {}

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
  TextAlertAnswer answerOfUser(const TextAlert& alert);

  SimMainLoop& loop_;
  SimDesktop& desktop_;
  SimPanels& panels_;
  std::deque<User> users_;
  std::vector<TextAlert> shown_;
  bool open_ = false;
};

}  // namespace pellar
