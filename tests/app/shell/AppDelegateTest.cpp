#include <gtest/gtest.h>

#include <chrono>
#include <optional>

#include "app/shell/AppDelegate.h"
#include "tests/support/StripStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;
using Launch = StripStory;

TEST_F(Launch, WithThePermissionTheStripIsThereAtOnce) {
  const auto plan = open("Plan");
  start();
  expectStripOver(plan);
  EXPECT_EQ(mac.accessibility().prompts(), 0);
  EXPECT_TRUE(mac.windows().visible().empty());
  EXPECT_EQ(log.messages(), Labels{"tracking started"});
}

TEST_F(Launch, WithoutThePermissionTheUserIsAskedAndTheStripComesOnceItIsGiven) {
  mac.accessibility().setTrusted(false);
  const auto plan = open("Plan");
  start();
  EXPECT_EQ(mac.accessibility().prompts(), 1);
  EXPECT_EQ(pellar.strip(), nullptr);
  EXPECT_TRUE(log.messages().empty());
  mac.advance(10s);
  EXPECT_EQ(mac.accessibility().prompts(), 1);
  EXPECT_EQ(pellar.strip(), nullptr);

  mac.accessibility().setTrusted(true);
  mac.advance(1999ms);
  EXPECT_EQ(pellar.strip(), nullptr);
  mac.advance(1ms);
  EXPECT_EQ(log.messages(), Labels{"tracking started"});
  mac.activate(editor);
  expectStripOver(plan);
  mac.advance(10s);
  EXPECT_EQ(log.count("tracking started"), 1);
}

TEST_F(Launch, TakingThePermissionAwayLaterHidesTheStripQuietly) {
  auto plan = open("Plan");
  start();
  mac.accessibility().setTrusted(false);
  plan.retitle("Plan 2");
  EXPECT_FALSE(stripShown());
  EXPECT_EQ(log.messages(), Labels{"tracking started"});
}

TEST_F(Launch, TheStateIsReadFromTheUsersFolder) {
  pellar.store().update([](AppState& state) { state.tags["title:Plan"] = "green"; });
  open("Plan");
  AppDelegate again(mac.platform());
  EXPECT_EQ(again.store().state().tags.at("title:Plan"), "green");
}

TEST(AppDelegateEnd, LeavesNothingBehind) {
  SimMac mac;
  const auto editor = mac.launch({.bundleId = "org.example.editor"});
  auto plan = SimApplication(editor).open("Plan");
  std::optional<AppDelegate> pellar(std::in_place, mac.platform());
  pellar->applicationDidFinishLaunching();
  mac.settle();
  pellar->strip()->openRecent();
  plan.retitle("Plan 2");
  pellar.reset();
  mac.settle();
  EXPECT_TRUE(mac.panels().all().empty());
  EXPECT_FALSE(mac.eventMonitors().watched());
  EXPECT_EQ(mac.accessibility().liveObservers(), 0);
}

TEST(AppDelegateEnd, AlsoWhileItWaitsForThePermission) {
  SimMac mac;
  mac.accessibility().setTrusted(false);
  std::optional<AppDelegate> pellar(std::in_place, mac.platform());
  pellar->applicationDidFinishLaunching();
  EXPECT_GT(mac.mainLoop().activeTimers(), 0U);
  pellar.reset();
  EXPECT_EQ(mac.mainLoop().activeTimers(), 0U);
}

}  // namespace
}  // namespace pellar
