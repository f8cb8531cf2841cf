#include <gtest/gtest.h>

#include <optional>

#include "app/shell/AppDelegate.h"
#include "tests/support/StripStory.h"

namespace pellar {
namespace {

using Launch = StripStory;

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
  acceptTerms(*pellar);
  pellar->applicationDidFinishLaunching();
  mac.settle();
  pellar->strip()->openRecent();
  ASSERT_TRUE(mac.eventMonitors().watched()) << "by the drop-down";
  plan.retitle("Plan 2");
  pellar.reset();
  mac.settle();
  EXPECT_TRUE(mac.panels().all().empty());
  EXPECT_FALSE(mac.eventMonitors().watched());
  EXPECT_EQ(mac.accessibility().liveObservers(), 0);
}

}  // namespace
}  // namespace pellar
