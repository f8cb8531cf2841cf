#include "platform/linux/panel/X11KeyboardFocus.h"
#include "tests/e2e/Keys.h"
#include "tests/e2e/XReply.h"
#include "tests/platform/linux/X11WorldTest.h"

namespace pellar::contract {
namespace {

class X11KeyboardFocusTest : public X11WorldTest {
 protected:
  X11KeyboardFocusTest() {
    const auto pid = world().launch("editor");
    window = world().open(pid, "Plan.txt", {60, 100, 500, 300});
    elementOf(pid, "Plan.txt");
    if (!wait([&] { return isInFront(pid); })) throw std::runtime_error("nothing comes to the front");
  }

  // What a screen locker or a window manager tries, without waiting.
  bool anotherProgramGetsTheKeyboard() {
    auto* const xcb = desktop().observer().connection();
    const e2e::XReply<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(xcb,
                                xcb_grab_keyboard(xcb, 1, desktop().observer().root(), XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
  }

  WorldWindow window{};
  X11KeyboardFocus focus{x11().connection(), mainLoop()};
};

TEST_F(X11KeyboardFocusTest, AnotherProgramGetsTheKeyboardBehindAKeyThatAHungMainThreadDoesNotRead) {
  // Keys that are sent on go to a window of nobody.
  focus.take(x11().connection().root(), XCB_CURRENT_TIME);
  desktop().observer().strike(e2e::escapeKey);
  desktop().observer().fence();
  ASSERT_FALSE(anotherProgramGetsTheKeyboard());
  // Nothing runs the main loop meanwhile.
  desktop().observer().waitUntil("another program has the keyboard",
                                 [this] { return anotherProgramGetsTheKeyboard(); });
  xcb_ungrab_keyboard(desktop().observer().connection(), XCB_CURRENT_TIME);
  desktop().observer().fence();
  // It answers again, and all is as ever.
  mainLoop().post([this] { focus.giveBack(); });
  letPass(std::chrono::milliseconds(50));
  world().pressTab({});
  EXPECT_TRUE(wait([this] { return world().tabsReceived(window) == 1; }));
}

}  // namespace
}  // namespace pellar::contract
