#include <xcb/xcb.h>

#include "platform/linux/input/X11EventTaps.h"
#include "tests/e2e/Keys.h"
#include "tests/platform/linux/X11WorldTest.h"

namespace pellar::contract {
namespace {

constexpr KeyCombination wanted{48, KeyFlags::control | KeyFlags::option | KeyFlags::command,
                                KeyFlags::control};
constexpr xcb_keycode_t usualTabCode = 23;

class X11EventTapsTest : public X11WorldTest {
 protected:
  X11EventTapsTest()
      : pid(world().launch("editor")), window(world().open(pid, "Plan.txt", {60, 100, 500, 300})) {
    elementOf(pid, "Plan.txt");
    if (!wait([this] { return isInFront(pid); })) throw std::runtime_error("nothing comes to the front");
  }

  std::unique_ptr<EventTap> swallowingTap() {
    return world().platform().eventTaps.tapKeyDowns(wanted, [this](const TapEvent& event) {
      seen.push_back(event);
      return true;
    });
  }
  void key(std::uint32_t keysym, bool down) { desktop().observer().key(keysym, down); }
  void strike(std::uint32_t keysym) { desktop().observer().strike(keysym); }
  // Presses Control-Tab until the tap sees it; whether that happens in time.
  bool tapSeesControlTab() {
    const auto before = seen.size();
    for (int attempt = 0; attempt < 50 && seen.size() == before; ++attempt) {
      world().pressTab({.control = true});
      letPass(std::chrono::milliseconds(20));
    }
    return seen.size() > before;
  }

  ProcessId pid;
  WorldWindow window;
  std::vector<TapEvent> seen;
};

TEST_F(X11EventTapsTest, AKeyThatABusyMainThreadDoesNotAskForReachesTheApplicationAndIsNotActedOn) {
  const auto tap = swallowingTap();
  ASSERT_NE(tap, nullptr);
  key(e2e::controlKey, true);
  strike(e2e::tabKey);
  key(e2e::controlKey, false);
  // Nothing runs the main loop meanwhile.
  desktop().observer().waitUntil("the application has the key",
                                 [this] { return world().tabsReceived(window) == 1; });
  letPass(std::chrono::milliseconds(200));
  EXPECT_TRUE(seen.empty());
}

TEST_F(X11EventTapsTest, LockKeysDoNotMatter) {
  const auto tap = swallowingTap();
  ASSERT_NE(tap, nullptr);
  struct Locks {
    std::vector<std::uint32_t> keys;
    std::string modifiers;  // as the application sees them
  };
  int plainTabs = 0;
  for (const auto& [keys, modifiers] : {Locks{{e2e::numLockKey}, "+10"}, Locks{{e2e::capsLockKey}, "+2"},
                                        Locks{{e2e::numLockKey, e2e::capsLockKey}, "+12"}}) {
    seen.clear();
    for (const auto lock : keys) strike(lock);
    world().pressTab({.control = true});
    world().pressTab({.shift = true, .control = true});
    EXPECT_TRUE(wait([this] { return seen.size() == 2; }));
    EXPECT_EQ(world().tabsReceived(window), plainTabs);
    // The locks were on indeed.
    world().pressTab({});
    ASSERT_TRUE(wait([&] { return world().tabsReceived(window) == plainTabs + 1; }));
    ++plainTabs;
    EXPECT_TRUE(desktop().observer().text(x11().window(window).id, "E2E_KEYS").ends_with(modifiers + " "));
    for (const auto lock : keys) strike(lock);
  }
}

TEST_F(X11EventTapsTest, WhatIsTypedWhileTheSwallowedKeyIsStillDownIsNotLost) {
  const auto tap = swallowingTap();
  ASSERT_NE(tap, nullptr);
  key(e2e::controlKey, true);
  key(e2e::tabKey, true);
  ASSERT_TRUE(wait([this] { return !seen.empty(); }));
  key(e2e::controlKey, false);
  strike('a');
  key(e2e::tabKey, false);
  desktop().observer().waitUntil("the application has the letter",
                                 [this] { return desktop().keysReceived(x11().window(window), 'a') == 1; });
  EXPECT_EQ(world().tabsReceived(window), 0);
}

TEST_F(X11EventTapsTest, IsRefusedWhileAnotherProgramHasTheKey) {
  auto first = swallowingTap();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(swallowingTap(), nullptr);
  EXPECT_TRUE(tapSeesControlTab()) << "the first one goes on";
  first.reset();
  EXPECT_NE(swallowingTap(), nullptr);
}

TEST_F(X11EventTapsTest, KnowsOnlyKeysThatAreTapped) {
  constexpr KeyCombination unknown{49, KeyFlags::control, KeyFlags::control};
  const auto handler = [](const TapEvent&) { return true; };
  EXPECT_EQ(world().platform().eventTaps.tapKeyDowns(unknown, handler), nullptr);
}

TEST_F(X11EventTapsTest, FollowsTheKeyToItsPlaceOnANewKeyboardMap) {
  const auto tap = swallowingTap();
  ASSERT_NE(tap, nullptr);
  ASSERT_TRUE(tapSeesControlTab());

  xcb_connection_t* connection = desktop().observer().connection();
  constexpr xcb_keycode_t otherCode = 97;
  const auto give = [&](xcb_keycode_t code, xcb_keysym_t keysym) {
    xcb_change_keyboard_mapping(connection, 1, code, 1, &keysym);
    desktop().observer().fence();
  };
  give(usualTabCode, 'x');
  give(otherCode, e2e::tabKey);
  EXPECT_TRUE(tapSeesControlTab());
  // The old place is free again.
  const auto before = seen.size();
  key(e2e::controlKey, true);
  strike('x');
  key(e2e::controlKey, false);
  desktop().observer().waitUntil("the application has the key",
                                 [this] { return desktop().keysReceived(x11().window(window), 'x') == 1; });
  EXPECT_EQ(seen.size(), before);

  give(otherCode, XCB_NO_SYMBOL);
  give(usualTabCode, e2e::tabKey);
  EXPECT_TRUE(tapSeesControlTab());
}

}  // namespace
}  // namespace pellar::contract
