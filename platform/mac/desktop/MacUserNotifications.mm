#include "platform/mac/desktop/MacUserNotifications.h"

#import <UserNotifications/UserNotifications.h>

#include <memory>
#include <utility>

#include "platform/mac/system/Conversions.h"

// Without a delegate that says otherwise, nothing is shown while this program is in front.
@interface NotificationPresenter : NSObject <UNUserNotificationCenterDelegate>
@end

@implementation NotificationPresenter

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions))handler {
  handler(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionList);
}

@end

namespace pellar {
namespace {

// +currentNotificationCenter raises an exception in a process that is no application bundle.
bool hasCentre() {
  NSBundle* bundle = NSBundle.mainBundle;
  return bundle.bundleIdentifier != nil && [bundle.bundleURL.pathExtension isEqualToString:@"app"];
}

}  // namespace

MacUserNotifications::MacUserNotifications(MainLoop& loop) : presenter_(nil), door_(loop) {
  if (!hasCentre()) return;
  presenter_ = [[NotificationPresenter alloc] init];
  UNUserNotificationCenter.currentNotificationCenter.delegate = presenter_;
}

MacUserNotifications::~MacUserNotifications() = default;

Subscription MacUserNotifications::requestAuthorization(std::function<void(bool)> answer) {
  // Touched on the main thread only, whatever thread the centre answers on.
  const auto waiting = std::make_shared<std::function<void(bool)>>(std::move(answer));
  const auto key = door_.key();
  const auto tell = [waiting, key](bool granted) {
    key.post([waiting, granted] {
      if (const auto told = std::exchange(*waiting, nullptr)) told(granted);
    });
  };
  if (presenter_ != nil) {
    [UNUserNotificationCenter.currentNotificationCenter
        requestAuthorizationWithOptions:UNAuthorizationOptionAlert | UNAuthorizationOptionSound
                      completionHandler:^(BOOL granted, NSError*) {
                        tell(granted);
                      }];
  } else {
    tell(false);
  }
  return Subscription([waiting] { *waiting = nullptr; });
}

void MacUserNotifications::add(const UserNotification& notification) {
  if (presenter_ == nil) return;
  UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
  content.title = toNSString(notification.title);
  content.body = toNSString(notification.body);
  UNNotificationRequest* request =
      [UNNotificationRequest requestWithIdentifier:toNSString(notification.identifier)
                                           content:content
                                           trigger:nil];
  [UNUserNotificationCenter.currentNotificationCenter addNotificationRequest:request
                                                       withCompletionHandler:nil];
}

}  // namespace pellar
