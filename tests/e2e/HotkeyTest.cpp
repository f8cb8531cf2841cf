#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <stdexcept>
#include <vector>

#include "tests/e2e/DesktopTest.h"
#include "tests/e2e/Keys.h"

namespace pellar::e2e {

namespace {

// Another program that has taken Control-Tab.
class KeyHolder {
 public:
  explicit KeyHolder(Desktop& desktop) : connection_(xcb_connect(desktop.display().c_str(), nullptr)) {
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    const auto cookie = xcb_grab_key_checked(connection_, 0, root, XCB_MOD_MASK_CONTROL,
                                             desktop.observer().keycode(tabKey).value(), XCB_GRAB_MODE_ASYNC,
                                             XCB_GRAB_MODE_ASYNC);
    if (xcb_request_check(connection_, cookie) != nullptr) throw std::runtime_error("the key is not free");
  }
  ~KeyHolder() { xcb_disconnect(connection_); }
  KeyHolder(const KeyHolder&) = delete;
  KeyHolder& operator=(const KeyHolder&) = delete;

 private:
  xcb_connection_t* connection_;
};

class Hotkey : public EveryWindowManager {
 protected:
  void openThree() {
    for (const char* title : {"Report", "Plan", "Budget"}) {
      const int offset = static_cast<int>(all.size()) * 60;
      all.push_back(editor().open(title, {60 + offset, 120 + offset, 900, 400}));
    }
    startPellar();
    strip.waitUntilOver(all.back());
    strip.waitUntilTabs(all.size());
  }
  void strike(std::uint32_t key) { desktop.observer().strike(key); }
  void pressTabWith(const std::vector<std::uint32_t>& held) {
    for (const auto key : held) desktop.observer().key(key, true);
    strike(tabKey);
    for (const auto key : held) desktop.observer().key(key, false);
  }
  [[nodiscard]] int tabsReceived() {
    int count = 0;
    for (const auto window : all) count += desktop.keysReceived(window, tabKey);
    return count;
  }
  void waitUntilTabsReceived(int count) {
    desktop.observer().waitUntil("the application has the key", [&] { return tabsReceived() == count; });
  }

  std::vector<Window> all;
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(Hotkey);

TEST_P(Hotkey, ControlTabGoesRoundTheWindowsAndTheApplicationDoesNotSeeIt) {
  openThree();
  for (const std::size_t next : {0U, 1U, 2U, 0U}) {
    pressTabWith({controlKey});
    strip.waitUntilOver(all[next]);
    desktop.observer().waitUntil("its tab stands out", [&] { return strip.activeTab() == next; });
  }
  for (const std::size_t next : {2U, 1U, 0U}) {
    pressTabWith({controlKey, shiftKey});
    strip.waitUntilOver(all[next]);
  }
  EXPECT_EQ(tabsReceived(), 0);
}

TEST_P(Hotkey, NumLockAndCapsLockDoNotMatter) {
  openThree();
  std::size_t next = 0;
  for (const auto lock : {numLockKey, capsLockKey}) {
    strike(lock);
    pressTabWith({controlKey});
    strip.waitUntilOver(all[next++]);
    strike(lock);
  }
  EXPECT_EQ(tabsReceived(), 0);
}

TEST_P(Hotkey, OtherModifiersReachTheApplication) {
  openThree();
  int expected = 0;
  pressTabWith({});
  waitUntilTabsReceived(++expected);
  pressTabWith({controlKey, superKey});
  waitUntilTabsReceived(++expected);
  // The others use Control-Alt-Tab themselves.
  if (desktop.windowManager() == WindowManager::xfwm4) {
    pressTabWith({controlKey, altKey});
    waitUntilTabsReceived(++expected);
  }
  EXPECT_TRUE(desktop.isActive(all.back()));
}

TEST_P(Hotkey, WhileTheStripIsHiddenTheApplicationGetsTheKey) {
  openThree();
  desktop.enterFullScreen(all.back());
  strip.waitUntilHidden();
  pressTabWith({controlKey});
  waitUntilTabsReceived(1);
  // Some window manager names no active window for a moment around it.
  desktop.waitUntilActive(all.back());
  EXPECT_FALSE(strip.window().has_value());
  desktop.leaveFullScreen(all.back());
  strip.waitUntilOver(all.back());
  pressTabWith({controlKey});
  strip.waitUntilOver(all.front());
  EXPECT_EQ(tabsReceived(), 1);
}

TEST_P(Hotkey, OverTheOnlyWindowTheApplicationGetsTheKey) {
  all.push_back(editor().open("Report", {60, 120, 900, 400}));
  startPellar();
  strip.waitUntilOver(all[0]);
  pressTabWith({controlKey});
  waitUntilTabsReceived(1);
  pressTabWith({controlKey, shiftKey});
  waitUntilTabsReceived(2);
  all.push_back(editor().open("Plan", {120, 180, 900, 400}));
  strip.waitUntilOver(all[1]);
  strip.waitUntilTabs(2);
  pressTabWith({controlKey});
  strip.waitUntilOver(all[0]);
  EXPECT_EQ(tabsReceived(), 2);
}

TEST_P(Hotkey, AKeyThatAnotherProgramHoldsIsLoggedAndTheStripWorks) {
  const KeyHolder other(desktop);
  openThree();
  desktop.observer().waitUntil("the log tells it",
                               [this] { return logLines("event tap creation failed") == 1; });
  strip.clickTab(0);
  strip.waitUntilOver(all.front());
}

}  // namespace

}  // namespace pellar::e2e
