#include "tests/support/ShellStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class StartUp : public ShellStory {};

TEST_F(StartUp, WithPermissionAndAcceptedTermsThereIsNoWindow) {
  editor.open("Plan");
  start();
  EXPECT_TRUE(stripShown());
  EXPECT_EQ(mac.windows().made(), 0);
  EXPECT_EQ(mac.accessibility().prompts(), 0);
  EXPECT_EQ(log.messages(), Rows{"tracking started"});
  mac.advance(1h);
  EXPECT_EQ(mac.windows().made(), 0);
}

TEST_F(StartUp, WithoutPermissionAWindowSaysHowToGiveIt) {
  mac.accessibility().setTrusted(false);
  start();
  EXPECT_EQ(mac.accessibility().prompts(), 1);
  EXPECT_EQ(mac.windows().visible(), Rows{onboardingTitle});
  const auto& shown = window(onboardingTitle);
  EXPECT_EQ(mac.windows().key(), &shown);
  EXPECT_EQ(
      shown.texts(),
      (Rows{"Pellar reads the positions of Word, Excel, PowerPoint and Outlook windows to draw the tab "
            "strip. Allow it under Privacy & Security > Accessibility. This window closes by itself once "
            "granted.",
            "[Open Accessibility settings]"}));
  const auto& description = shown.description();
  EXPECT_EQ(description.contentSize, (Size{420, 170}));
  EXPECT_TRUE(description.closable);
  EXPECT_EQ(std::get<WindowLabel>(description.elements[0]).frame, (WindowFrame{20, 70, 380, 80}));
  EXPECT_EQ(std::get<WindowButton>(description.elements[1]).frame, (WindowFrame{20, 20, 220, 32}));
}

TEST_F(StartUp, TrackingIsSaidToHaveStartedOnceTheApplicationInFrontWasLookedAt) {
  editor.quirks().refuses = SimRefusal::observers;
  start();
  EXPECT_EQ(log.messages().front(), "AXObserverCreate failed for pid " + std::to_string(editor.pid()));
  EXPECT_TRUE(log.has("tracking started"));
}

TEST_F(StartUp, ItsButtonOpensTheRightPane) {
  mac.accessibility().setTrusted(false);
  start();
  window(onboardingTitle).press("Open Accessibility settings");
  EXPECT_EQ(mac.workspace().openedUrls(),
            Rows{"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"});
  EXPECT_EQ(mac.windows().visible(), Rows{onboardingTitle});
}

TEST_F(StartUp, OncePermissionIsGivenTheWindowGoesAndTheStripComes) {
  mac.accessibility().setTrusted(false);
  editor.open("Plan");
  start();
  mac.advance(10s);
  EXPECT_EQ(mac.windows().visible(), Rows{onboardingTitle});
  EXPECT_EQ(log.messages(), Rows{});
  mac.accessibility().setTrusted(true);
  mac.advance(2s);
  EXPECT_FALSE(mac.windows().exists(onboardingTitle));
  goTo(editor);
  EXPECT_TRUE(stripShown());
  mac.advance(1min);
  EXPECT_EQ(log.count("tracking started"), 1);
  EXPECT_EQ(mac.accessibility().prompts(), 1);
}

TEST_F(StartUp, AlsoWhenTheUserClosedTheWindowBefore) {
  mac.accessibility().setTrusted(false);
  editor.open("Plan");
  start();
  window(onboardingTitle).clickClose();
  EXPECT_TRUE(mac.windows().visible().empty());
  mac.accessibility().setTrusted(true);
  mac.advance(2s);
  goTo(editor);
  EXPECT_TRUE(stripShown());
  EXPECT_EQ(mac.windows().made(), 1);
}

TEST_F(StartUp, TheItemInTheMenuBarIsThereFromTheFirstMoment) {
  mac.accessibility().setTrusted(false);
  start();
  EXPECT_TRUE(mac.statusBar().hasItem());
}

TEST_F(StartUp, PermissionIsNoticedWithinTwoSeconds) {
  mac.accessibility().setTrusted(false);
  start();
  mac.accessibility().setTrusted(true);
  mac.advance(2s - 1ms);
  EXPECT_EQ(mac.windows().visible(), Rows{onboardingTitle});
  EXPECT_EQ(pellar->strip(), nullptr);
  mac.advance(1ms);
  EXPECT_TRUE(mac.windows().visible().empty());
  EXPECT_NE(pellar->strip(), nullptr);
}

TEST_F(StartUp, UpdatesAreLookedForWhileThePermissionIsAwaited) {
  mac.accessibility().setTrusted(false);
  start();
  mac.web().answer(R"({"latest":"1.5.0"})");
  mac.advance(9s);
  EXPECT_EQ(menu().front(), "Update to 1.5.0 — Download");
}

TEST_F(StartUp, TermsComeAfterThePermission) {
  forgetTerms();
  mac.accessibility().setTrusted(false);
  start();
  mac.advance(1min);
  EXPECT_EQ(mac.windows().visible(), Rows{onboardingTitle});
  mac.accessibility().setTrusted(true);
  mac.advance(2s);
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
}

TEST_F(StartUp, TheShortcutActsOnlyWhileTheStripIsSeen) {
  constexpr std::uint16_t tab = 48;
  const auto plan = editor.open("Plan");
  const auto report = editor.open("Report");
  start();
  mac.pressKey(tab, KeyFlags::control);
  EXPECT_TRUE(editor.keysDown().empty());
  EXPECT_EQ(editor.focusedWindow(), plan);
  mac.statusBar().choose({"All apps"});
  mac.pressKey(tab, KeyFlags::control);
  EXPECT_EQ(editor.keysDown().size(), 1U);
}

TEST_F(StartUp, EndingWhileThePermissionIsAwaitedLeavesNothing) {
  mac.accessibility().setTrusted(false);
  start();
  EXPECT_GT(mac.mainLoop().activeTimers(), 0U);
  pellar.reset();
  mac.settle();
  EXPECT_EQ(mac.mainLoop().activeTimers(), 0U);
  EXPECT_FALSE(mac.windows().exists(onboardingTitle));
}

}  // namespace
}  // namespace pellar
