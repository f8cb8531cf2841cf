#include <gtest/gtest.h>

#include <future>

#include "platform/linux/input/KeyDecision.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

TEST(KeyDecision, IsWhatTheMainThreadAnswers) {
  for (const bool swallow : {true, false}) {
    KeyDecision decision;
    auto waiting = std::async(std::launch::async, [&] { return decision.wait(1h); });
    decision.answer([&] { return swallow; });
    EXPECT_EQ(waiting.get(), swallow);
  }
}

TEST(KeyDecision, DeliversTheKeyWhenNobodyAnswersAndThenAsksNobody) {
  KeyDecision decision;
  EXPECT_FALSE(decision.wait(0ms));
  bool asked = false;
  decision.answer([&] { return asked = true; });
  EXPECT_FALSE(asked);
}

TEST(KeyDecision, WaitsForAnAnswerThatWasBegunInTime) {
  KeyDecision decision;
  std::future<bool> waiting;
  decision.answer([&] {
    std::promise<void> begun;
    waiting = std::async(std::launch::async, [&] {
      begun.set_value();
      return decision.wait(0ms);
    });
    begun.get_future().wait();
    EXPECT_EQ(waiting.wait_for(20ms), std::future_status::timeout);
    return true;
  });
  EXPECT_TRUE(waiting.get());
}

TEST(KeyDecision, DeliversTheKeyWhenItIsAbandoned) {
  KeyDecision decision;
  auto waiting = std::async(std::launch::async, [&] { return decision.wait(1h); });
  decision.abandon();
  EXPECT_FALSE(waiting.get());
}

TEST(KeyDecision, AbandonedWhileItIsAnsweredDeliversTheKey) {
  KeyDecision decision;
  decision.answer([&] {
    decision.abandon();
    return true;
  });
  EXPECT_FALSE(decision.wait(0ms));
}

}  // namespace
}  // namespace pellar
