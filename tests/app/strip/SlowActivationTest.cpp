// The system brings an application to the front some time after it was asked to, if at all.

#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/StripStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class SlowActivation : public StripStory {
 protected:
  SlowActivation() { mac.workspace().activationTime = 100ms; }

  void openThree() {
    plan = open("Plan");
    report = open("Report");
    letter = open("Letter");
    start();
  }
  void clickTab(const std::string& label) { mac.pointer().click(strip().tabPoint(label)); }
  void expectWorkingIn(const SimWindow& window, const std::string& label) {
    mac.advance(1s);
    EXPECT_EQ(editor.focusedWindow(), window);
    EXPECT_EQ(mac.workspace().frontmostApplication()->pid, editor.pid());
    EXPECT_EQ(strip().activeTab(), label);
    const std::string before = editor.typed();
    mac.type("x");
    EXPECT_EQ(editor.typed(), before + "x");
  }

  std::optional<SimWindow> plan;
  std::optional<SimWindow> report;
  std::optional<SimWindow> letter;
};

TEST_F(SlowActivation, AClickOnATabOfTheApplicationInFront) {
  openThree();
  clickTab("Plan");
  expectWorkingIn(*plan, "Plan");
}

TEST_F(SlowActivation, OfQuickClicksOnDifferentTabsTheLastOneWins) {
  openThree();
  mac.pointer().doubleClick(strip().tabPoint("Plan"));
  mac.advance(20ms);
  mac.pointer().doubleClick(strip().tabPoint("Report"));
  expectWorkingIn(*report, "Report");
  clickTab("Plan");
  mac.advance(50ms);
  clickTab("Letter");
  mac.advance(50ms);
  clickTab("Report");
  expectWorkingIn(*report, "Report");
}

TEST_F(SlowActivation, GoingRoundTheTabsQuickly) {
  constexpr std::uint16_t tabKey = 48;
  openThree();
  for (int presses = 0; presses < 4; ++presses) mac.pressKey(tabKey, KeyFlags::control);
  expectWorkingIn(*plan, "Plan");
}

TEST_F(SlowActivation, AClickOnATabDuringASearchGoesToThatWindow) {
  openThree();
  strip().clickSearchField();
  clickTab("Plan");
  expectWorkingIn(*plan, "Plan");
}

}  // namespace
}  // namespace pellar
