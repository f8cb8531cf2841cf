#include <gtest/gtest.h>

#include "app/shell/HotkeyTap.h"
#include "tests/support/StripStory.h"

namespace pellar {
namespace {

constexpr std::uint16_t tabKey = 48;
using KeyFlags::command;
using KeyFlags::control;
using KeyFlags::option;
using KeyFlags::shift;

class Shortcut : public StripStory {
 protected:
  // What the editor received, in the order of pressing.
  [[nodiscard]] std::vector<SimKey> received() const { return editor.keysDown(); }
};

TEST_F(Shortcut, ControlTabGoesRoundTheTabsAndTheApplicationDoesNotSeeIt) {
  std::vector<SimWindow> windows;
  for (const char* title : {"A", "B", "C"}) windows.push_back(open(title));
  start();
  ASSERT_EQ(mac.frontWindow(), windows[2]);
  for (const std::size_t next : {0U, 1U, 2U, 0U}) {
    mac.pressKey(tabKey, control);
    EXPECT_EQ(mac.frontWindow(), windows[next]);
    expectStripOver(windows[next]);
  }
  EXPECT_TRUE(received().empty());
}

TEST_F(Shortcut, ControlShiftTabGoesBackward) {
  const auto a = open("A");
  const auto b = open("B");
  const auto c = open("C");
  start();
  for (const auto& next : {b, a, c}) {
    mac.pressKey(tabKey, control | shift);
    EXPECT_EQ(mac.frontWindow(), next);
  }
  EXPECT_TRUE(received().empty());
}

TEST_F(Shortcut, LockKeysAndOtherBitsDoNotMatter) {
  const auto a = open("A");
  const auto b = open("B");
  start();
  mac.pressKey(tabKey, control | KeyFlags::capsLock | 0x200100U);
  EXPECT_EQ(mac.frontWindow(), a);
  mac.pressKey(tabKey, control | shift | KeyFlags::capsLock);
  EXPECT_EQ(mac.frontWindow(), b);
}

TEST_F(Shortcut, OtherKeysAndModifiersReachTheApplication) {
  open("A");
  const auto b = open("B");
  start();
  const std::vector<SimKey> others{{tabKey, 0},
                                   {tabKey, shift},
                                   {tabKey, control | option},
                                   {tabKey, control | command},
                                   {tabKey, control | option | command | shift},
                                   {tabKey, command},
                                   {49, control},
                                   {0, control}};
  for (const auto& key : others) mac.pressKey(key.keyCode, key.flags);
  EXPECT_EQ(received(), others);
  EXPECT_EQ(mac.frontWindow(), b);
}

TEST_F(Shortcut, WhileTheStripIsHiddenTheApplicationGetsTheKey) {
  auto a = open("A");
  auto b = open("B");
  start();
  b.enterFullScreen();
  ASSERT_FALSE(stripShown());
  mac.pressKey(tabKey, control);
  EXPECT_EQ(received(), (std::vector<SimKey>{{tabKey, control}}));
  EXPECT_EQ(mac.frontWindow(), b);
  b.leaveFullScreen();
  mac.settle();
  mac.pressKey(tabKey, control);
  EXPECT_EQ(mac.frontWindow(), a);
  EXPECT_EQ(received().size(), 1U);
}

TEST_F(Shortcut, BeforeTrackingStartsTheApplicationGetsTheKey) {
  mac.accessibility().setTrusted(false);
  open("A");
  open("B");
  start();
  // The program may show a window of its own to ask for the permission.
  mac.activate(editor);
  mac.settle();
  mac.pressKey(tabKey, control);
  EXPECT_EQ(received().size(), 1U);
  EXPECT_EQ(mac.eventTaps().count(), 0U);
}

TEST_F(Shortcut, WorksAgainAfterTheSystemSwitchedTheTapOff) {
  const auto a = open("A");
  const auto b = open("B");
  start();
  mac.eventTaps().disable(TapEvent::Type::disabledByTimeout);
  mac.pressKey(tabKey, control);
  EXPECT_EQ(mac.frontWindow(), a);
  mac.eventTaps().disable(TapEvent::Type::disabledByUserInput);
  mac.pressKey(tabKey, control);
  EXPECT_EQ(mac.frontWindow(), b);
}

TEST_F(Shortcut, ARefusedTapIsLoggedAndTheProgramRunsOn) {
  mac.eventTaps().refused = true;
  const auto plan = open("Plan");
  start();
  EXPECT_EQ(log.count("event tap creation failed"), 1);
  EXPECT_TRUE(log.has("tracking started"));
  expectStripOver(plan);
  const auto report = open("Report");
  expectStripOver(report);
  mac.pressKey(tabKey, control);
  EXPECT_EQ(received().size(), 1U);
}

TEST_F(Shortcut, AGrantedTapIsNotWorthALogLine) {
  open("Plan");
  start();
  EXPECT_FALSE(log.has("event tap creation failed"));
  EXPECT_EQ(mac.eventTaps().count(), 1U);
}

TEST_F(Shortcut, OverTheOnlyWindowItIsTheApplications) {
  const auto plan = open("Plan");
  start();
  ASSERT_TRUE(stripShown());
  EXPECT_FALSE(mac.eventTaps().holdKeys()) << "no key waits for a shortcut that can do nothing";
  const int raises = plan.raises();
  mac.pressKey(tabKey, control);
  mac.pressKey(tabKey, control | shift);
  EXPECT_EQ(received(), (std::vector<SimKey>{{tabKey, control}, {tabKey, control | shift}}));
  EXPECT_EQ(plan.raises(), raises);
}

TEST_F(Shortcut, ActsFromTheSecondWindowOnAndNoLongerOnceOneIsLeft) {
  const auto plan = open("Plan");
  start();
  auto report = open("Report");
  expectStripOver(report);
  mac.pressKey(tabKey, control);
  EXPECT_EQ(mac.frontWindow(), plan);
  EXPECT_TRUE(received().empty());
  report.close();
  mac.settle();
  EXPECT_FALSE(mac.eventTaps().holdKeys());
  mac.pressKey(tabKey, control);
  EXPECT_EQ(received(), (std::vector<SimKey>{{tabKey, control}}));
}

TEST_F(Shortcut, BringsAMinimizedWindowBack) {
  auto plan = open("Plan");
  open("Report");
  start();
  plan.minimise();
  mac.settle();
  mac.pressKey(tabKey, control);
  EXPECT_EQ(mac.frontWindow(), plan);
  EXPECT_TRUE(received().empty());
}

TEST_F(Shortcut, WorksWhileAMenuIsOpen) {
  const auto a = open("A");
  open("B");
  start();
  std::optional<SimWindow> underTheMenu;
  mac.menus().next([&](SimOpenMenu&) {
    mac.pressKey(tabKey, control);
    underTheMenu = mac.frontWindow();
  });
  strip().rightClickTab("B");
  EXPECT_EQ(underTheMenu, a);
  EXPECT_TRUE(received().empty());
}

TEST_F(Shortcut, WorksWhileTheUserIsAskedForAName) {
  open("Plan").setDocument("file:///Users/ann/Plan.txt");
  const auto report = open("Report");
  start();
  std::optional<SimWindow> underTheQuestion;
  mac.alerts().next([&](const TextAlert&) {
    mac.pressKey(tabKey, control);
    underTheQuestion = mac.frontWindow();
    return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, "Monday"};
  });
  mac.menus().nextChoose({"Save open tabs as group…"});
  strip().clickTool("Groups");
  EXPECT_EQ(underTheQuestion->title(), "Plan");
  EXPECT_EQ(pellar.store().state().groups.at("Monday"), Labels{"/Users/ann/Plan.txt"});
  EXPECT_NE(mac.frontWindow(), report);
}

TEST_F(Shortcut, WorksWhilePellarItselfIsInFront) {
  const auto plan = open("Plan");
  open("Report");
  start();
  mac.activatePellar();
  mac.settle();
  mac.pressKey(tabKey, control);
  EXPECT_EQ(mac.frontWindow(), plan);
  expectStripOver(plan);
}

TEST_F(Shortcut, TheDropdownGoesWhenAnotherWindowComes) {
  const auto plan = open("Plan");
  open("Report");
  start();
  strip().clickSearchField();
  mac.type("re");
  ASSERT_TRUE(dropdown().isVisible());
  mac.pressKey(tabKey, control);
  EXPECT_EQ(mac.frontWindow(), plan);
  expectStripOver(plan);
  EXPECT_FALSE(dropdown().isVisible());
  mac.type("x");
  EXPECT_EQ(editor.typed(), "x");
  EXPECT_TRUE(received().empty());
}

// The tap by itself.
class TapAlone : public testing::Test {
 protected:
  SimMac mac;
  HotkeyTap tap{mac.eventTaps(), mac.mainLoop()};
  std::vector<bool> cycled;
};

TEST_F(TapAlone, LeavesTheWorkToALaterTurn) {
  tap.isActive = [] { return true; };
  tap.onCycle = [this](bool forward) { cycled.push_back(forward); };
  tap.start();
  EXPECT_TRUE(mac.eventTaps().keyDown(tabKey, control));
  EXPECT_TRUE(mac.eventTaps().keyDown(tabKey, control | shift));
  EXPECT_TRUE(cycled.empty());
  mac.settle();
  EXPECT_EQ(cycled, (std::vector<bool>{true, false}));
}

TEST_F(TapAlone, ActsOnNothingUntilItIsToldWhenToAct) {
  tap.start();
  EXPECT_FALSE(mac.eventTaps().keyDown(tabKey, control));
}

TEST_F(TapAlone, AsksWhetherToActOnlyForTheShortcut) {
  int asked = 0;
  tap.isActive = [&asked] { return ++asked > 0; };
  tap.start();
  asked = 0;
  EXPECT_FALSE(mac.eventTaps().keyDown(49, control));
  EXPECT_FALSE(mac.eventTaps().keyDown(tabKey, control | command));
  EXPECT_EQ(asked, 0);
  EXPECT_TRUE(mac.eventTaps().keyDown(tabKey, control));
  EXPECT_EQ(asked, 1);
}

TEST_F(TapAlone, LeavesAKeyAloneThatWasPressedBeforeItWasPutToRest) {
  bool acts = true;
  tap.isActive = [&acts] { return acts; };
  tap.onCycle = [this](bool forward) { cycled.push_back(forward); };
  tap.start();
  acts = false;
  EXPECT_FALSE(mac.eventTaps().keyDown(tabKey, control));
  mac.settle();
  EXPECT_TRUE(cycled.empty());
}

TEST_F(TapAlone, SwallowsTheKeyEvenIfNothingIsToBeDoneWithIt) {
  tap.isActive = [] { return true; };
  tap.start();
  EXPECT_TRUE(mac.eventTaps().keyDown(tabKey, control));
  mac.settle();
}

TEST_F(TapAlone, TakesANoticeOfTheSystemForNoKey) {
  tap.isActive = [] { return true; };
  tap.onCycle = [this](bool forward) { cycled.push_back(forward); };
  tap.start();
  mac.eventTaps().disable(TapEvent::Type::disabledByTimeout);
  mac.eventTaps().disable(TapEvent::Type::disabledByUserInput);
  mac.settle();
  EXPECT_TRUE(cycled.empty());
}

TEST_F(TapAlone, StaysAtRestWhenTheSystemTellsItThatItIs) {
  bool acts = true;
  tap.isActive = [&acts] { return acts; };
  tap.start();
  acts = false;
  tap.activityChanged();
  mac.settle();
  EXPECT_FALSE(mac.eventTaps().holdKeys());
}

TEST_F(TapAlone, DoesNothingMoreOnceItIsGone) {
  {
    HotkeyTap brief{mac.eventTaps(), mac.mainLoop()};
    brief.isActive = [] { return true; };
    brief.onCycle = [this](bool forward) { cycled.push_back(forward); };
    brief.start();
    EXPECT_TRUE(mac.eventTaps().keyDown(tabKey, control));
  }
  mac.settle();
  EXPECT_TRUE(cycled.empty());
  EXPECT_EQ(mac.eventTaps().count(), 0U);
}

}  // namespace
}  // namespace pellar
