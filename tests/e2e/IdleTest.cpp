// With nothing happening, nothing runs.

#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/DesktopTest.h"

namespace pellar::e2e {

namespace {

class Idle : public DesktopTest {
 protected:
  // Two windows and the strip, which has been used.
  void startAndUse() {
    const auto report = editor().open("Report", {60, 160, 700, 400});
    const auto plan = editor().open("Plan", {200, 260, 700, 400});
    startPellar();
    strip.waitUntilOver(plan);
    strip.waitUntilTabs(2);
    strip.clickTab(0);
    strip.waitUntilOver(report);
    // The pointer leaves the strip, so that not even a hover is under way.
    desktop.observer().movePointer(1400, 880);
  }

  // Waits until a whole `window` of time passed without one wake-up.
  bool settles(std::chrono::milliseconds window) {
    for (int attempt = 0; attempt < 20; ++attempt) {
      const auto before = pellar->voluntarySwitches();
      if (pellar->waitForEnd(window)) return false;
      if (pellar->voluntarySwitches() == before) return true;
    }
    return false;
  }
};

TEST_F(Idle, NotOneWakeUpInAMinute) {
  startAndUse();
  // Longer than the program waits before it gives back what only starting needed, and before the first time
  // that it may look for updates.
  ASSERT_TRUE(settles(std::chrono::seconds(10)));
  const auto before = pellar->voluntarySwitches();
  ASSERT_FALSE(pellar->waitForEnd(std::chrono::seconds(60)).has_value());
  EXPECT_EQ(pellar->voluntarySwitches(), before);
}

TEST_F(Idle, NoWakeUpWhileTheStripIsHidden) {
  startAndUse();
  editor().quit();
  strip.waitUntilHidden();
  EXPECT_TRUE(settles(std::chrono::seconds(5)));
}

TEST_F(Idle, NoWakeUpBesideAnAccessibilityBusOnWhichNobodyListensYetOrAnyMore) {
  desktop.openSessionBus();
  startAndUse();
  EXPECT_TRUE(settles(std::chrono::seconds(5)));
  const auto reader = desktop.start({builtProgram("e2e_reader")}, "reader");
  const auto ask = [&reader](const std::string& command) {
    reader->write(command);
    return reader->readLine();
  };
  ask("on");
  desktop.observer().waitUntil("Pellar can be read", [&] { return ask("read") != "-"; });
  ask("off");
  reader->end();
  EXPECT_TRUE(settles(std::chrono::seconds(5)));
}

}  // namespace

}  // namespace pellar::e2e
