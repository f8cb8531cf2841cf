// A screen reader hears each key before the search does, and may keep it.

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "tests/e2e/AssistiveTest.h"
#include "tests/e2e/Hanging.h"
#include "tests/e2e/Keys.h"
#include "tests/e2e/RecentPanel.h"

namespace pellar::e2e {
namespace {

using namespace std::chrono_literals;

// Two recent files, of which each key that is lost or comes twice finds others.
class AssistiveKeys : public Assistive {
 protected:
  AssistiveKeys() : recent(desktop, strip) {}

  // `command` is the reader's that switches it on.
  void openTwoAndListen(const std::string& command = "on") {
    std::string times;
    std::string applications;
    for (const char* const name : {"aab.txt", "ab.txt"}) {
      const auto file = desktop.folders().home() / name;
      desktop.folders().write(file, "Some text.\n");
      times += (times.empty() ? "\"" : ",\"") + file.string() + "\":1700000000";
      applications += (applications.empty() ? "\"" : ",\"") + file.string() + "\":\"editor\"";
    }
    desktop.folders().write(desktop.folders().stateFile(),
                            "{\"recent\":{" + times + "},\"recentApp\":{" + applications + "}}");
    openTwo();
    tell(command);
    waitUntilRead();
    tell("keys");
  }
  void search(const std::string& text) {
    recent.openByClickOnTheField();
    desktop.observer().type(text);
    recent.waitUntilRows(1);
  }
  RecentPanel recent;
};

INSTANTIATE_TEST_SUITE_P(WindowManagers, AssistiveKeys, ::testing::Values(WindowManager::openbox),
                         [](const auto&) { return nameOf(WindowManager::openbox); });

TEST_P(AssistiveKeys, EachKeyIsHeardAndTypedOnce) {
  openTwoAndListen();
  search("aab");
  EXPECT_EQ(ask("heard"), "a a b");
}

TEST_P(AssistiveKeys, AReaderHearsThemAgainWhenItIsSwitchedOnAgain) {
  openTwoAndListen();
  tell("off");
  desktop.observer().waitUntil("Pellar tells nothing", [this] { return ask("read") == "-"; });
  search("aab");
  EXPECT_EQ(ask("heard"), "");
  desktop.observer().strike(escapeKey);
  recent.waitUntilClosed();
  switchOn();
  waitUntilIdle();
  search("aab");
  EXPECT_EQ(ask("heard"), "a a b");
}

TEST_P(AssistiveKeys, AReaderThatSaysLaterWhatItListensToHearsThem) {
  openTwoAndListen("announce");
  search("aab");
  EXPECT_EQ(ask("heard"), "");
  tell("listen");
  waitUntilIdle();
  for (int i = 0; i < 2; ++i) desktop.observer().strike(backspaceKey);
  recent.waitUntilRows(2);
  desktop.observer().type("ab");
  recent.waitUntilRows(1);
  EXPECT_EQ(ask("heard"), "BackSpace BackSpace a b");
}

TEST_P(AssistiveKeys, WhatIsTypedRightBehindEscapeReachesTheApplication) {
  openTwoAndListen();
  constexpr int times = 5;
  for (int time = 1; time <= times; ++time) {
    search("aab");
    desktop.observer().strike(escapeKey);
    desktop.observer().type("xx");
    desktop.observer().waitUntil("the application has the keys",
                                 [&] { return desktop.keysReceived(plan, 'x') == 2 * time; });
    recent.waitUntilClosed();
  }
  EXPECT_EQ(desktop.keysReceived(plan, 'a'), 0);
}

TEST_P(AssistiveKeys, AKeyThatTheReaderKeepsDoesNothingAndHoldsUpNoOther) {
  openTwoAndListen();
  tell("keep Escape");
  recent.openByClickOnTheField();
  desktop.observer().type("a");
  desktop.observer().strike(escapeKey);
  desktop.observer().type("ab");
  recent.waitUntilRows(1);
  EXPECT_EQ(ask("heard"), "a Escape a b");
  EXPECT_EQ(desktop.keysReceived(plan, 'a'), 0);
}

TEST_P(AssistiveKeys, KeysThatDoNothingHoldUpNothing) {
  openTwoAndListen();
  recent.openByClickOnTheField();
  // In no file's name, nor in that of the folder, which is any letters.
  desktop.observer().type(",");
  recent.waitUntilRows(0);
  const auto begin = std::chrono::steady_clock::now();
  constexpr int times = 20;
  for (int time = 0; time < times; ++time) desktop.observer().strike(returnKey);
  desktop.observer().strike(backspaceKey);
  desktop.observer().type("aab");
  recent.waitUntilRows(1);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, times * 150ms) << "each was waited for to the end";
}

TEST_P(AssistiveKeys, KeysGoOnWhileTheRegistryHangs) {
  openTwoAndListen();
  const Hanging registry(processOf("registry"));
  search("aab");
  desktop.observer().strike(escapeKey);
  desktop.observer().type("x");
  desktop.observer().waitUntil("the application has the key",
                               [&] { return desktop.keysReceived(plan, 'x') == 1; });
  recent.waitUntilClosed();
  EXPECT_EQ(desktop.keysReceived(plan, 'a'), 0);
}

}  // namespace
}  // namespace pellar::e2e
