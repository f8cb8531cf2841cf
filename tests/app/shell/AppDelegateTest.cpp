#include <gtest/gtest.h>

#include <optional>

#include "app/shell/AppDelegate.h"
#include "tests/support/ShellStory.h"
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

class ProgramEnd : public ShellStory {};

TEST_F(ProgramEnd, LeavesNoPanelWithAViewThatIsGone) {
  editor.open("Plan", {100, 200, 1200, 600});
  start();
  const PanelReader panels(mac);
  mac.strip().hoverTab("Plan");
  mac.advance(cardDelay);
  ASSERT_TRUE(panels.cardShown());
  mac.strip().hoverTool(tool::zoom);
  ASSERT_TRUE(panels.pickerShown());
  mac.strip().clickSearchField();
  ASSERT_TRUE(panels.dropdown()->isVisible());
  pellar.reset();
  EXPECT_TRUE(mac.panels().all().empty());
  EXPECT_EQ(mac.panels().endedWithView(), 0);
}

// What its user chose there is done after it has ended.
TEST_F(ProgramEnd, UnderTheStripsMenuLeavesAutoSaveAsItWas) {
  auto word = mac.launch({.bundleId = "com.microsoft.Word", .name = "Microsoft Word"});
  word.open("Plan.docx", {100, 200, 250, 600});
  start();
  mac.menus().next([&](SimOpenMenu& menu) {
    menu.choose({"Auto-save: off"});
    pellar.reset();
  });
  mac.strip().clickTool(tool::overflow);
  ASSERT_FALSE(pellar.has_value());
  EXPECT_EQ(saved().autoSaveMinutes, 0);
}

}  // namespace
}  // namespace pellar
