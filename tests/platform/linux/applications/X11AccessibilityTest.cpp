#include <xcb/xcb.h>

#include <csignal>
#include <string>

#include "tests/platform/linux/X11WorldTest.h"

namespace pellar::contract {
namespace {

using namespace std::chrono_literals;

constexpr AxRect frame{200, 150, 600, 400};

class X11AccessibilityTest : public X11WorldTest {
 protected:
  X11AccessibilityTest() : pid(world().launch("Editor")), window(world().open(pid, "Report.txt", frame)) {}
  Element element() { return elementOf(pid, "Report.txt"); }
  Element named(const std::string& title) { return elementOf(pid, title); }

  void setText(WorldWindow target, xcb_atom_t name, xcb_atom_t type, const std::string& bytes) {
    auto& observer = desktop().observer();
    xcb_change_property(observer.connection(), XCB_PROP_MODE_REPLACE, x11().window(target).id, name, type, 8,
                        static_cast<std::uint32_t>(bytes.size()), bytes.data());
    observer.fence();
  }

  ProcessId pid;
  WorldWindow window;
};

TEST_F(X11AccessibilityTest, AFrameWrittenIsReadBackInTheSameTurn) {
  const Element report = element();
  for (const AxRect& target :
       {AxRect{40, 60, 500, 350}, AxRect{300, 200, 700, 420}, AxRect{300, 200, 640, 380}}) {
    // More than once only for a window manager that is slower than the adapter is patient.
    EXPECT_TRUE(wait([&] { return writeAndRead(report, target) == target; }));
    EXPECT_EQ(seenFrame(window), target);
  }
}

TEST_F(X11AccessibilityTest, AMaximisedWindowLeavesThatStateToBePlaced) {
  const Element report = element();
  desktop().maximise(x11().window(window));
  ASSERT_TRUE(wait([&] { return frameOf(report)->width > 1000; }));
  const AxRect target{120, 100, 640, 400};
  // Its borders differ in the two states, so that the first attempt may miss by them.
  for (int attempt = 0; attempt < 3 && writeAndRead(report, target) != target; ++attempt) {
  }
  EXPECT_TRUE(wait([&] { return frameOf(report) == target; }));
  EXPECT_EQ(seenFrame(window), target);
}

TEST_F(X11AccessibilityTest, AWindowThatKeepsItsSizeIsReadBackAtThatSizeSoon) {
  x11().application(pid).tell(x11().window(window), "fixed");
  const Element report = element();
  letPass(100ms);
  const auto start = mainLoop().uptime();
  const AxRect read = writeAndRead(report, {80, 90, 900, 600});
  EXPECT_LT(mainLoop().uptime() - start, 500ms);
  EXPECT_LT(read.width, 700);
  EXPECT_TRUE(wait([&] { return frameOf(report) == seenFrame(window); }));
  EXPECT_EQ(frameOf(report)->origin(), (AxPoint{80, 90}));
}

TEST_F(X11AccessibilityTest, AWindowThatGoesBackCostsABoundedWait) {
  x11().application(pid).tell(x11().window(window), "stubborn");
  const Element report = element();
  for (int attempt = 0; attempt < 8; ++attempt) {
    const auto start = mainLoop().uptime();
    writeAndRead(report, {500, 400, 600, 400});
    EXPECT_LT(mainLoop().uptime() - start, 500ms);
  }
  EXPECT_TRUE(wait([&] { return frameOf(report)->origin() == seenFrame(window).origin(); }));
}

TEST_F(X11AccessibilityTest, MovingAStoppedProgramsWindowDoesNotWaitForTheProgram) {
  const Element report = element();
  x11().application(pid).process().signal(SIGSTOP);
  const auto start = mainLoop().uptime();
  writeAndRead(report, {90, 110, 600, 400});
  EXPECT_LT(mainLoop().uptime() - start, 500ms);
  EXPECT_TRUE(wait([&] { return frameOf(report)->origin() == AxPoint{90, 110}; }));
  x11().application(pid).process().signal(SIGCONT);
}

TEST_F(X11AccessibilityTest, ADragWritesPositionsWithoutWaiting) {
  const Element report = element();
  const auto start = mainLoop().uptime();
  constexpr int moves = 200;
  for (int move = 1; move <= moves; ++move) {
    accessibility().set(report, "AXPosition", AxPoint{200.0 + move, 150});
  }
  EXPECT_LT(mainLoop().uptime() - start, 500ms);
  EXPECT_TRUE(wait([&] { return seenFrame(window).x == 200 + moves; }));
  EXPECT_TRUE(wait([&] { return frameOf(report)->x == 200 + moves; }));
}

TEST_F(X11AccessibilityTest, AShadowIsNotPartOfTheFrame) {
  const auto shadowed = x11().application(pid).openWithShadow("Shadowed", {260, 200, 500, 300}, 20);
  const Element element = named("Shadowed");
  const auto seen = [&] {
    const auto box = desktop().frame(shadowed);
    return AxRect{static_cast<double>(box.x), static_cast<double>(box.y), static_cast<double>(box.width),
                  static_cast<double>(box.height)};
  };
  ASSERT_TRUE(wait([&] { return frameOf(element) == seen(); }));
  EXPECT_EQ(frameOf(element)->width, desktop().observer().box(shadowed.id)->width - 40);
  const AxRect target{260, 180, 520, 320};
  EXPECT_TRUE(wait([&] { return writeAndRead(element, target) == target; }));
  EXPECT_EQ(seen(), target);
}

TEST_F(X11AccessibilityTest, AWindowOfAnyGravityGoesWhereItIsPut) {
  const Element report = element();
  auto& observer = desktop().observer();
  for (const std::uint32_t gravity : {XCB_GRAVITY_STATIC, XCB_GRAVITY_NORTH_EAST, XCB_GRAVITY_SOUTH_EAST,
                                      XCB_GRAVITY_CENTER, XCB_GRAVITY_NORTH_WEST}) {
    std::uint32_t hints[18] = {1U << 9U};
    hints[17] = gravity;
    xcb_change_property(observer.connection(), XCB_PROP_MODE_REPLACE, x11().window(window).id,
                        XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32, 18, hints);
    observer.fence();
    letPass(50ms);
    const AxRect target{150.0 + gravity * 10, 120.0 + gravity * 5, 500, 300};
    EXPECT_TRUE(wait([&] { return writeAndRead(report, target) == target; }));
    EXPECT_EQ(seenFrame(window), target)
        << "gravity " << gravity << ": " << seenFrame(window).x << "," << seenFrame(window).y;
  }
}

TEST_F(X11AccessibilityTest, FullScreenIsSeenComingAndGoing) {
  const Element report = element();
  desktop().enterFullScreen(x11().window(window));
  EXPECT_TRUE(wait([&] { return read<bool>(report, "AXFullScreen") == true; }));
  EXPECT_TRUE(wait([&] { return frameOf(report) == AxRect{0, 0, 1440, 900}; }));
  desktop().leaveFullScreen(x11().window(window));
  EXPECT_TRUE(wait([&] { return read<bool>(report, "AXFullScreen") == false && frameOf(report) == frame; }));
}

TEST_F(X11AccessibilityTest, ADialogIsNoStandardWindow) {
  const auto other = world().open(pid, "Open File", {300, 300, 300, 200});
  const Element dialog = named("Open File");
  EXPECT_EQ(read<std::string>(dialog, "AXSubrole"), "AXStandardWindow");
  x11().application(pid).tell(x11().window(other), "dialog " + std::to_string(x11().window(window).id));
  EXPECT_TRUE(wait([&] { return read<std::string>(dialog, "AXSubrole") == "AXDialog"; }));
}

TEST_F(X11AccessibilityTest, TitlesComeAsTheyAre) {
  const Element report = element();
  const auto utf8 = desktop().observer().atom("UTF8_STRING");
  const auto netName = desktop().observer().atom("_NET_WM_NAME");
  const auto becomes = [&](const std::string& title) {
    return wait([&] { return read<std::string>(report, "AXTitle") == title; });
  };
  for (const std::string title : {"", "\xd7\x93\xd7\x95\xd7\x97", "bad \xff\xc3 bytes", "a\tb\nc\x01"}) {
    setText(window, netName, utf8, title);
    EXPECT_TRUE(becomes(title)) << title;
  }
  xcb_delete_property(desktop().observer().connection(), x11().window(window).id, netName);
  setText(window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, "Caf\xe9");
  EXPECT_TRUE(becomes("Caf\xc3\xa9"));
  setText(window, XCB_ATOM_WM_NAME, desktop().observer().atom("COMPOUND_TEXT"), "\x1b-F\xc3\xe5\xe9\xdc");
  EXPECT_TRUE(becomes("Γειά"));
}

TEST_F(X11AccessibilityTest, AVeryLongTitleEndsBetweenTwoCharacters) {
  const Element report = element();
  std::string title = "x";
  while (title.size() < 100'000) title += "\xe2\x82\xac";
  setText(window, desktop().observer().atom("_NET_WM_NAME"), desktop().observer().atom("UTF8_STRING"), title);
  ASSERT_TRUE(wait([&] { return read<std::string>(report, "AXTitle")->size() > 60'000; }));
  const std::string seen = *read<std::string>(report, "AXTitle");
  EXPECT_EQ(seen, title.substr(0, 65'536 - (65'536 - 1) % 3));
}

TEST_F(X11AccessibilityTest, ActivatingTheApplicationAfterARaiseKeepsTheRaisedWindow) {
  const auto shellPid = world().launch("Shell");
  world().open(pid, "Plan.txt", {260, 220, 600, 400});
  world().open(shellPid, "Shell", {600, 300, 400, 300});
  elementOf(shellPid, "Shell");
  ASSERT_TRUE(wait([&] { return isInFront(shellPid); }));
  const Element report = element();
  accessibility().perform(report, "AXRaise");
  workspace().activate(pid);
  ASSERT_TRUE(wait([&] { return isInFront(pid); }));
  letPass(100ms);
  EXPECT_TRUE(isFocused(pid, report));
}

TEST_F(X11AccessibilityTest, ActivatingAnApplicationBringsTheWindowThatWasUsedLast) {
  const auto shellPid = world().launch("Shell");
  world().open(pid, "Plan.txt", {260, 220, 600, 400});
  const Element report = element();
  named("Plan.txt");
  world().focus(window);
  ASSERT_TRUE(wait([&] { return isFocused(pid, report); }));
  world().open(shellPid, "Shell", {600, 300, 400, 300});
  ASSERT_TRUE(wait([&] { return isInFront(shellPid); }));
  workspace().activate(pid);
  EXPECT_TRUE(wait([&] { return isFocused(pid, report); }));
}

TEST_F(X11AccessibilityTest, AWindowTellsTheDocumentInItsTitle) {
  const auto file = desktop().folders().home() / "a plan.txt";
  desktop().folders().write(file, "Some text.\n");
  const std::string url = "file://" + file.parent_path().string() + "/a%20plan.txt";
  const Element report = element();
  EXPECT_EQ(read<std::string>(report, "AXDocument"), std::nullopt);
  int heard = 0;
  const auto observer = accessibility().observe(pid, [&heard] { ++heard; });
  observer->add(report, "AXTitleChanged");
  world().retitle(window, "*" + file.string() + " - Editor");
  ASSERT_TRUE(wait([&heard] { return heard > 0; }));
  EXPECT_TRUE(wait([&] { return read<std::string>(report, "AXDocument") == url; }));
  world().retitle(window, "Untitled - Editor");
  EXPECT_TRUE(wait([&] { return read<std::string>(report, "AXDocument") == std::nullopt; }));
  // A window that is new is known at the first look.
  world().open(pid, file.string(), {260, 220, 600, 400});
  const Element plan = named(file.string());
  EXPECT_TRUE(wait([&] { return read<std::string>(plan, "AXDocument") == url; }));
}

TEST_F(X11AccessibilityTest, AStormOfTitlesEndsWithTheLastAndLeavesTheLoopAlive) {
  const Element report = element();
  int heard = 0;
  const auto observer = accessibility().observe(pid, [&heard] { ++heard; });
  observer->add(report, "AXTitleChanged");
  x11().application(pid).tellWithoutWaiting(x11().window(window), "storm 1000 1000");
  EXPECT_TRUE(wait([&] { return read<std::string>(report, "AXTitle") == "Step 1000"; }));
  EXPECT_GT(heard, 0);
  x11().application(pid).waitUntilDone();
}

TEST_F(X11AccessibilityTest, WindowsThatAreGoneAtOnceLeaveNoTrace) {
  x11().application(pid).churn(50);
  desktop().observer().waitUntil("only the first is left",
                                 [&] { return desktop().observer().clients().size() == 1; });
  EXPECT_TRUE(wait([&] { return windowsOf(pid).size() == 1; }));
  EXPECT_EQ(read<std::string>(windowsOf(pid).front(), "AXTitle"), "Report.txt");
}

TEST_F(X11AccessibilityTest, ReadingTheMirrorAsksTheServerNothing) {
  const Element report = element();
  letPass(100ms);
  ASSERT_FALSE(x11().platform().screens.screens().empty());
  xcb_connection_t* connection = x11().connection().xcb();
  const auto before = xcb_total_written(connection);
  for (int round = 0; round < 100; ++round) {
    for (const auto name : {"AXTitle", "AXSubrole", "AXPosition", "AXSize", "AXMinimized", "AXFullScreen"}) {
      ASSERT_TRUE(accessibility().attribute(report, name).has_value());
    }
    ASSERT_FALSE(windowsOf(pid).empty());
    ASSERT_TRUE(workspace().frontmostApplication().has_value());
    ASSERT_FALSE(x11().platform().screens.screens().empty());
  }
  xcb_flush(connection);
  EXPECT_EQ(xcb_total_written(connection), before);
}

}  // namespace
}  // namespace pellar::contract
