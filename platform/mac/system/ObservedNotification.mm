#include "platform/mac/system/ObservedNotification.h"

#include <memory>
#include <utility>

namespace pellar {
namespace {

struct Observation {
  std::function<void(NSNotification*)> callback;
  bool ended = false;
};

}  // namespace

Subscription observeNotification(NSNotificationCenter* center, NSNotificationName name, id object,
                                 std::function<void(NSNotification*)> callback) {
  const auto observation = std::make_shared<Observation>(Observation{.callback = std::move(callback)});
  const id token = [center addObserverForName:name
                                       object:object
                                        queue:NSOperationQueue.mainQueue
                                   usingBlock:^(NSNotification* notification) {
                                     // The callback may end the observation, and with it this block.
                                     const auto running = observation;
                                     if (!running->ended) running->callback(notification);
                                   }];
  return Subscription([center, token, observation] {
    observation->ended = true;
    [center removeObserver:token];
  });
}

}  // namespace pellar
