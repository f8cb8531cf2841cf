#pragma once

#include "platform/UserNotifications.h"
#include "platform/mac/system/MainLoopDoor.h"

@class NotificationPresenter;

namespace pellar {

// The user notification centre. Without an application bundle there is none: asking for it would end the
// program, so the answer is no and nothing is shown.
class MacUserNotifications final : public UserNotifications {
 public:
  explicit MacUserNotifications(MainLoop& loop);
  ~MacUserNotifications() override;
  MacUserNotifications(const MacUserNotifications&) = delete;
  MacUserNotifications& operator=(const MacUserNotifications&) = delete;

  [[nodiscard]] Subscription requestAuthorization(std::function<void(bool granted)> answer) override;
  void add(const UserNotification& notification) override;

 private:
  NotificationPresenter* presenter_;  // null without a centre
  MainLoopDoor door_;
};

}  // namespace pellar
