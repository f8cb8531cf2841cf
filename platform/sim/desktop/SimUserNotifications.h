#pragma once

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "platform/UserNotifications.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

// The notification centre, and the user who lets the program use it or not.
class SimUserNotifications final : public UserNotifications {
 public:
  explicit SimUserNotifications(SimMainLoop& loop) : loop_(loop) {}

  [[nodiscard]] Subscription requestAuthorization(std::function<void(bool granted)> answer) override {
    ++requests_;
    if (!granted) return Subscription([] {});
    return loop_.after(std::chrono::milliseconds(0),
                       [answer = std::move(answer), granted = *granted] { answer(granted); });
  }
  void add(const UserNotification& notification) override {
    std::erase_if(shown_, [&](const auto& each) { return each.identifier == notification.identifier; });
    shown_.push_back(notification);
  }

  // What the user answers; absent while he looks at the question.
  std::optional<bool> granted = true;

  // What stands in the notification centre, the latest last.
  [[nodiscard]] const std::vector<UserNotification>& shown() const { return shown_; }
  // How often the program asked for permission.
  [[nodiscard]] int requests() const { return requests_; }

 private:
  SimMainLoop& loop_;
  std::vector<UserNotification> shown_;
  int requests_ = 0;
};

}  // namespace pellar
