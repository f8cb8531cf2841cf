// The keyboard is the user's, also while the search field has it.

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

#include "tests/e2e/DesktopTest.h"
#include "tests/e2e/Keys.h"
#include "tests/e2e/RecentPanel.h"
#include "tests/e2e/Stopping.h"
#include "tests/e2e/XReply.h"

namespace pellar::e2e {

namespace {

// Takes keyboard and mouse as screen lockers do, again and again until it has both.
class ScreenLocker {
 public:
  explicit ScreenLocker(Desktop& desktop)
      : desktop_(desktop), connection_(xcb_connect(desktop.display().c_str(), nullptr)) {
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  }
  ~ScreenLocker() { xcb_disconnect(connection_); }
  ScreenLocker(const ScreenLocker&) = delete;
  ScreenLocker& operator=(const ScreenLocker&) = delete;

  void lock() {
    desktop_.observer().waitUntil("the screen is locked", [this] {
      const XReply<xcb_grab_keyboard_reply_t> keys(
          xcb_grab_keyboard_reply(connection_,
                                  xcb_grab_keyboard(connection_, 1, root_, XCB_CURRENT_TIME,
                                                    XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                  nullptr));
      const XReply<xcb_grab_pointer_reply_t> mouse(
          xcb_grab_pointer_reply(connection_,
                                 xcb_grab_pointer(connection_, 1, root_, 0, XCB_GRAB_MODE_ASYNC,
                                                  XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
                                 nullptr));
      return keys && keys->status == XCB_GRAB_STATUS_SUCCESS && mouse &&
             mouse->status == XCB_GRAB_STATUS_SUCCESS;
    });
  }
  void unlock() {
    xcb_ungrab_pointer(connection_, XCB_CURRENT_TIME);
    xcb_ungrab_keyboard(connection_, XCB_CURRENT_TIME);
    const XReply<xcb_get_input_focus_reply_t> fence(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  }
  // How many keys were pressed since the last time.
  int keysReceived() {
    int count = 0;
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)})
      if ((event->response_type & 0x7f) == XCB_KEY_PRESS) ++count;
    return count;
  }

 private:
  Desktop& desktop_;
  xcb_connection_t* connection_;
  xcb_window_t root_ = XCB_NONE;
};

// A plain program that counts its keys, under a strip with a search field; three recent files are known.
class Keyboard : public EveryWindowManager {
 protected:
  Keyboard() : recent(desktop, strip) {}

  Window startWithReport() {
    std::vector<std::filesystem::path> files;
    for (const char* name : {"report.txt", "plan.txt", "budget.txt"}) {
      files.push_back(desktop.folders().home() / "Documents" / name);
      desktop.folders().write(files.back(), "Some text.\n");
    }
    desktop.folders().remember(files, "editor");
    report = editor().open("Report", {60, 150, 1200, 500});
    startPellar();
    strip.waitUntilOver(report);
    return report;
  }
  void strike(std::uint32_t key) { desktop.observer().strike(key); }
  void type(const std::string& text) { desktop.observer().type(text); }
  void searchFor(const std::string& text, int rows) {
    recent.openByClickOnTheField();
    type(text);
    recent.waitUntilRows(rows);
  }

  RecentPanel recent;
  Window report;
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(Keyboard);

TEST_P(Keyboard, TheScreenCanBeLockedDuringASearchAndThePasswordIsNotTypedIntoIt) {
  startWithReport();
  searchFor("documents", 3);
  ScreenLocker locker(desktop);
  locker.lock();
  type("secret");
  desktop.observer().waitUntil("the locker has the password",
                               [&, count = 0]() mutable { return (count += locker.keysReceived()) == 6; });
  locker.unlock();
  type("/plan");
  recent.waitUntilRows(1);
  strike(escapeKey);
  recent.waitUntilClosed();
  EXPECT_EQ(desktop.keysReceived(report, 's'), 0);
}

TEST_P(Keyboard, AltTabGoesToAnotherWindowDuringASearchAndEndsIt) {
  Application letters(desktop, "letters");
  const auto letter = letters.open("Letter", {300, 300, 700, 400});
  startWithReport();
  searchFor("documents", 3);
  const auto before = desktop.observer().viewableTopLevels();
  desktop.observer().key(altKey, true);
  desktop.observer().key(tabKey, true);
  // A window manager that comes to it only after the keys were let go of may wait for that in vain.
  desktop.observer().waitUntil("the window manager shows the windows",
                               [&, before] { return desktop.observer().viewableTopLevels() > before; });
  desktop.observer().key(tabKey, false);
  desktop.observer().key(altKey, false);
  desktop.waitUntilActive(letter);
  recent.waitUntilClosed();
  strip.waitUntilOver(letter);
  strike('x');
  desktop.waitUntilReceived(letter, 'x', 1);
  EXPECT_EQ(desktop.keysReceived(report, 'x'), 0);
}

TEST_P(Keyboard, ControlTabGoesToTheNextTabDuringASearchAndEndsIt) {
  const auto plan = editor().open("Plan", {60, 150, 1200, 500});
  startWithReport();
  strip.waitUntilTabs(2);
  searchFor("documents", 3);
  desktop.observer().key(controlKey, true);
  strike(tabKey);
  desktop.observer().key(controlKey, false);
  desktop.waitUntilActive(plan);
  recent.waitUntilClosed();
  strip.waitUntilOver(plan);
  strike('x');
  desktop.waitUntilReceived(plan, 'x', 1);
}

TEST_P(Keyboard, WhatIsTypedRightBehindEscapeReachesTheApplication) {
  startWithReport();
  constexpr int times = 5;
  for (int time = 1; time <= times; ++time) {
    searchFor("documents", 3);
    type("yy");
    strike(escapeKey);
    type("xx");
    desktop.waitUntilReceived(report, 'x', 2 * time);
    recent.waitUntilClosed();
  }
  EXPECT_EQ(desktop.keysReceived(report, 'y'), 0);
  desktop.waitUntilActive(report);
}

TEST_P(Keyboard, WhatIsTypedBehindReturnThatChoosesNothingStaysInTheField) {
  startWithReport();
  searchFor("nothing", 0);
  strike(returnKey);
  for (std::size_t i = 0; i < std::string("nothing").size(); ++i) strike(backspaceKey);
  type("plan");
  recent.waitUntilRows(1);
  strike(escapeKey);
  recent.waitUntilClosed();
  EXPECT_EQ(desktop.keysReceived(report, 'p'), 0);
}

TEST_P(Keyboard, TheStripStaysOverItsWindowWhileTheUserThinksWhatToSearch) {
  startWithReport();
  recent.openByClickOnTheField();
  // Longer than a window manager may take to say which window comes next.
  waitUntilIdle();
  const auto shown = strip.box();
  type("documents");
  recent.waitUntilRows(3);
  EXPECT_EQ(strip.box(), shown);
  EXPECT_TRUE(strip.isOver(report));
}

TEST_P(Keyboard, AClickIntoAnotherWindowTakesTheKeyboardThereThoughTheWindowManagerIsBusy) {
  Application letters(desktop, "letters");
  const auto letter = letters.open("Letter", {300, 600, 700, 250});
  startWithReport();
  searchFor("documents", 3);
  const auto frame = desktop.frame(letter);
  stop(desktop.windowManagerProcess(), desktop.observer());
  desktop.observer().click(frame.x + 100, frame.y + frame.height - 20);
  waitUntilIdle();
  desktop.windowManagerProcess().signal(SIGCONT);
  desktop.waitUntilActive(letter);
  recent.waitUntilClosed();
  strip.waitUntilOver(letter);
  strike('x');
  desktop.waitUntilReceived(letter, 'x', 1);
}

TEST_P(Keyboard, AClickIntoAnotherWindowEndsTheSearchAndKeysGoThere) {
  Application letters(desktop, "letters");
  const auto letter = letters.open("Letter", {300, 600, 700, 250});
  startWithReport();
  searchFor("documents", 3);
  type("yy");
  const auto frame = desktop.frame(letter);
  desktop.observer().click(frame.x + 100, frame.y + frame.height - 20);
  desktop.waitUntilActive(letter);
  recent.waitUntilClosed();
  strip.waitUntilOver(letter);
  strike('x');
  desktop.waitUntilReceived(letter, 'x', 1);
  EXPECT_EQ(desktop.keysReceived(report, 'y'), 0);
}

TEST_P(Keyboard, WhenTheWindowGoesDuringASearchTheNextOneHasTheKeyboard) {
  const auto plan = editor().open("Plan", {60, 150, 1200, 500});
  startWithReport();
  strip.waitUntilTabs(2);
  searchFor("documents", 3);
  editor().tell(report, "destroy");
  desktop.observer().waitUntil("the next window has the keyboard", [&] { return desktop.isActive(plan); });
  strip.waitUntilOver(plan);
  recent.waitUntilClosed();
  strike('x');
  desktop.waitUntilReceived(plan, 'x', 1);
}

}  // namespace

}  // namespace pellar::e2e
