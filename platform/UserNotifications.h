#pragma once

#include <functional>
#include <string>

#include "platform/Subscription.h"

namespace pellar {

struct UserNotification {
  std::string identifier;  // a later one with the same identifier takes the place of this one
  std::string title;
  std::string body;
};

// The system's notifications to the user. Main thread only.
class UserNotifications {
 public:
  virtual ~UserNotifications() = default;

  // Asks the user once for alerts and sounds; later the system remembers the answer. `answer` is called from
  // the main loop, perhaps much later and perhaps never, unless the subscription is dropped before.
  [[nodiscard]] virtual Subscription requestAuthorization(std::function<void(bool granted)> answer) = 0;

  // Shows a notification now. Whether the user sees it is not known.
  virtual void add(const UserNotification& notification) = 0;
};

}  // namespace pellar
