#include <gtest/gtest.h>

#include <set>

#include "platform/sim/SimMac.h"

namespace pellar {

class SimDesktopTest : public ::testing::Test {
 protected:
  SimMac mac;
  SimApplication editor = mac.launch({.bundleId = "com.example.editor", .name = "Editor"});
  SimWindow report = editor.open("Report", {100, 200, 600, 400});
  SimWindow plan = editor.open("Plan", {150, 250, 600, 400});
};

TEST_F(SimDesktopTest, FocusesTheNextWindowWhenTheFocusedOneGoes) {
  EXPECT_EQ(editor.focusedWindow(), plan);
  plan.minimise();
  EXPECT_EQ(editor.focusedWindow(), report);
  plan.restore();
  EXPECT_EQ(editor.focusedWindow(), plan);
  plan.close();
  EXPECT_EQ(editor.focusedWindow(), report);
  report.minimise();
  EXPECT_EQ(editor.focusedWindow(), std::nullopt);
}

TEST_F(SimDesktopTest, BringsTheNextApplicationToTheFrontWhenTheFirstEndsOrHides) {
  auto terminal = mac.launch({.bundleId = "com.example.terminal", .name = "Terminal"});
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, terminal.pid());
  terminal.hide();
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, editor.pid());
  mac.activate(terminal);
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, terminal.pid());
  mac.terminate(terminal);
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, editor.pid());
  mac.terminate(editor);
  EXPECT_EQ(mac.workspace().frontmostApplication(), std::nullopt);
}

TEST_F(SimDesktopTest, ActivatesATurnAfterItWasAsked) {
  auto terminal = mac.launch({.bundleId = "com.example.terminal", .name = "Terminal"});
  mac.workspace().activate(editor.pid());
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, terminal.pid());
  mac.settle();
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, editor.pid());
}

TEST_F(SimDesktopTest, FillsItsOwnScreenInFullScreenAndReturns) {
  mac.screens().set(
      {SimScreens::screen({0, 0, 1440, 900}, 25, 0), SimScreens::screen({-1280, 100, 1280, 800}, 25, 0)});
  report.moveTo({-1000, 300});
  report.enterFullScreen();
  EXPECT_TRUE(report.isFullScreen());
  EXPECT_EQ(report.frame(), (AxRect{-1280, 0, 1280, 800}));
  report.leaveFullScreen();
  EXPECT_EQ(report.frame(), (AxRect{-1000, 300, 600, 400}));
}

TEST_F(SimDesktopTest, RaisesTheWindowTheUserClicksWithItsApplication) {
  auto terminal = mac.launch({.bundleId = "com.example.terminal", .name = "Terminal"});
  terminal.open("Shell", {900, 200, 400, 300});
  mac.pointer().click(mac.screens().toScreen(AxPoint{110, 210}));
  EXPECT_EQ(mac.frontWindow(), report);
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, editor.pid());
}

TEST_F(SimDesktopTest, GivesEveryElementAnIdentifierOfItsOwn) {
  std::set<WindowId> ids;
  bool anyNegative = false;
  for (int count = 0; count < 500; ++count) {
    const auto id = editor.open("Many").id();
    ids.insert(id);
    anyNegative = anyNegative || id < 0;
  }
  EXPECT_EQ(ids.size(), 500U);
  EXPECT_TRUE(anyNegative);
}

TEST_F(SimDesktopTest, SendsKeysToTheApplicationInFront) {
  mac.type("h\u00e9");
  EXPECT_EQ(editor.typed(), "h\u00e9");
}

}  // namespace pellar
