#pragma once

#include <QVariantList>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/UserNotifications.h"

class QDBusMessage;

namespace pellar {

class MainLoop;

// The desktop's notifications (org.freedesktop.Notifications on the session bus). Where there is no bus, or
// no program on it that shows notifications, the user has not granted any.
class DesktopNotifications final : public UserNotifications {
 public:
  explicit DesktopNotifications(MainLoop& loop) : loop_(loop) {}

  [[nodiscard]] Subscription requestAuthorization(std::function<void(bool granted)> answer) override;
  void add(const UserNotification& notification) override;

 private:
  // Sends a call and hands over the answer; an error one where there is no bus.
  static void call(const QString& method, const QVariantList& arguments,
                   std::function<void(const QDBusMessage& answer)> receive);

  MainLoop& loop_;
  // The numbers that the desktop gave to what it shows, by identifier.
  std::shared_ptr<std::map<std::string, unsigned>> shown_ =
      std::make_shared<std::map<std::string, unsigned>>();
};

}  // namespace pellar
