#include <gtest/gtest.h>

#include <utility>

#include "platform/Subscription.h"

namespace pellar::contract {

TEST(SubscriptionContract, EndsWhenItIsDropped) {
  int ends = 0;
  {
    const Subscription subscription([&ends] { ++ends; });
  }
  EXPECT_EQ(ends, 1);
}

TEST(SubscriptionContract, EndsOnlyOnceHoweverOftenItIsCancelled) {
  int ends = 0;
  {
    Subscription subscription([&ends] { ++ends; });
    EXPECT_TRUE(subscription.active());
    subscription.cancel();
    subscription.cancel();
    EXPECT_FALSE(subscription.active());
  }
  EXPECT_EQ(ends, 1);
}

TEST(SubscriptionContract, MovesWithoutEnding) {
  int ends = 0;
  Subscription first([&ends] { ++ends; });
  Subscription second(std::move(first));
  EXPECT_EQ(ends, 0);
  EXPECT_TRUE(second.active());
  second.cancel();
  EXPECT_EQ(ends, 1);
}

TEST(SubscriptionContract, EndsTheOldRegistrationWhenANewOneTakesItsPlace) {
  int firstEnds = 0;
  int secondEnds = 0;
  Subscription subscription([&firstEnds] { ++firstEnds; });
  subscription = Subscription([&secondEnds] { ++secondEnds; });
  EXPECT_EQ(firstEnds, 1);
  EXPECT_EQ(secondEnds, 0);
}

TEST(SubscriptionContract, MayBeCancelledAgainWhileItEnds) {
  int ends = 0;
  Subscription subscription;
  subscription = Subscription([&] {
    ++ends;
    subscription.cancel();
  });
  subscription.cancel();
  EXPECT_EQ(ends, 1);
}

}  // namespace pellar::contract
