#include "tests/platform/linux/X11WorldTest.h"

namespace pellar::contract {
namespace {

using namespace std::chrono_literals;

constexpr AxRect place{200, 150, 500, 300};

using X11ApplicationsTest = X11WorldTest;

TEST_F(X11ApplicationsTest, TwoProcessesOfOneClassAreOneApplication) {
  const auto first = world().launch("Terminal");
  const auto second = world().launch("Terminal");
  world().open(first, "one", place);
  elementOf(first, "one");
  world().open(second, "two", {300, 250, 500, 300});
  elementOf(first, "two");
  EXPECT_EQ(windowsOf(first).size(), 2U);
  EXPECT_EQ(windowsOf(second).size(), 2U);
  ASSERT_TRUE(wait([&] { return isFocused(first, elementOf(first, "two")); }));
  EXPECT_EQ(workspace().frontmostApplication()->pid, first);
}

TEST_F(X11ApplicationsTest, AnApplicationEndsWithItsLastWindow) {
  const auto first = world().launch("Terminal");
  const auto second = world().launch("Terminal");
  world().open(first, "one", place);
  const auto last = world().open(second, "two", place);
  elementOf(first, "one");
  elementOf(first, "two");
  std::vector<std::optional<ProcessId>> ended;
  const auto subscription =
      workspace().onTerminated([&](std::optional<ProcessId> pid) { ended.push_back(pid); });
  world().terminate(first);
  ASSERT_TRUE(wait([&] { return windowsOf(second).size() == 1; }));
  letPass(200ms);
  EXPECT_TRUE(ended.empty());
  // The process that its number came from is gone; the application keeps the number.
  EXPECT_TRUE(find(first, "two").has_value());
  world().destroy(last);
  ASSERT_TRUE(wait([&] { return !ended.empty(); }));
  EXPECT_EQ(ended, (std::vector<std::optional<ProcessId>>{first}));
}

TEST_F(X11ApplicationsTest, WithoutAWindowInFrontNoApplicationIs) {
  const auto pid = world().launch("Editor");
  const auto window = world().open(pid, "only", place);
  elementOf(pid, "only");
  ASSERT_TRUE(wait([&] { return isInFront(pid); }));
  int told = 0;
  const auto subscription = workspace().onActivated([&told] { ++told; });
  world().minimise(window);
  EXPECT_TRUE(wait([&] { return !workspace().frontmostApplication().has_value(); }));
  EXPECT_TRUE(wait([&told] { return told > 0; }));
  world().restore(window);
  EXPECT_TRUE(wait([&] { return isInFront(pid); }));
}

TEST_F(X11ApplicationsTest, AWindowThatIsGoneLeavesItsApplicationInFrontForAMoment) {
  const auto pid = world().launch("Editor");
  world().open(pid, "only", place);
  elementOf(pid, "only");
  ASSERT_TRUE(wait([&] { return isInFront(pid); }));
  // As window managers do between the end of a window and the next one's turn.
  auto& observer = desktop().observer();
  const xcb_window_t gone = xcb_generate_id(observer.connection());
  const auto since = std::chrono::steady_clock::now();
  xcb_change_property(observer.connection(), XCB_PROP_MODE_REPLACE, observer.root(),
                      observer.atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW, 32, 1, &gone);
  observer.fence();
  ASSERT_TRUE(wait([&] { return !workspace().frontmostApplication().has_value(); }));
  EXPECT_GE(std::chrono::steady_clock::now() - since, 100ms);
  EXPECT_TRUE(find(pid, "only").has_value());
}

TEST_F(X11ApplicationsTest, ADialogIsOfTheApplicationItWasOpenedFor) {
  const auto editor = world().launch("Editor");
  const auto chooser = world().launch("Chooser");
  const auto text = world().open(editor, "text", place);
  elementOf(editor, "text");
  const auto dialog = world().open(chooser, "Open File", {300, 250, 400, 200});
  elementOf(chooser, "Open File");
  ASSERT_TRUE(wait([&] { return isInFront(chooser); }));
  x11().application(chooser).tell(x11().window(dialog), "dialog " + std::to_string(x11().window(text).id));
  EXPECT_TRUE(wait([&] { return isInFront(editor); }));
  EXPECT_EQ(read<std::string>(elementOf(editor, "Open File"), "AXSubrole"), "AXDialog");
  EXPECT_TRUE(isFocused(editor, elementOf(editor, "text")));
}

TEST_F(X11ApplicationsTest, DialogsOfOneAnotherAreOfTheirOwnApplications) {
  const auto first = world().launch("First");
  const auto second = world().launch("Second");
  const auto one = world().open(first, "one", place);
  elementOf(first, "one");
  const auto two = world().open(second, "two", {300, 250, 400, 200});
  elementOf(second, "two");
  x11().application(first).tell(x11().window(one), "dialog " + std::to_string(x11().window(two).id));
  ASSERT_TRUE(wait([&] { return find(second, "one").has_value(); }));
  x11().application(second).tell(x11().window(two), "dialog " + std::to_string(x11().window(one).id));
  ASSERT_TRUE(wait([&] { return read<std::string>(elementOf(second, "two"), "AXSubrole") == "AXDialog"; }));
  world().destroy(two);
  EXPECT_TRUE(wait([&] { return find(first, "one").has_value(); }));
}

TEST_F(X11ApplicationsTest, NamesAnApplicationByItsDesktopEntry) {
  const auto pid = world().launch("xterm-of-nobody");
  world().open(pid, "unknown", place);
  elementOf(pid, "unknown");
  ASSERT_TRUE(wait([&] { return isInFront(pid); }));
  EXPECT_EQ(workspace().frontmostApplication()->bundleId, "xterm-of-nobody");
  EXPECT_EQ(workspace().frontmostApplication()->localizedName, "xterm-of-nobody");
  EXPECT_EQ(workspace().ownBundleId(), "app.pellar.Pellar");
}

}  // namespace
}  // namespace pellar::contract
