#pragma once

#import <Foundation/Foundation.h>

#include <functional>

#include "platform/Subscription.h"

namespace pellar {

// Observes a notification of a centre, of one object or of all (nil). The callback runs on the main thread
// and, unlike a block that is already on its way in the centre's queue, never after the subscription is
// dropped.
[[nodiscard]] Subscription observeNotification(NSNotificationCenter* center, NSNotificationName name,
                                               id object, std::function<void(NSNotification*)> callback);

}  // namespace pellar
