// Which window has the focus while a dialog has the keyboard.

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>

#include "tests/platform/linux/X11WorldTest.h"

namespace pellar::contract {
namespace {

using namespace std::chrono_literals;

class X11DialogsTest : public X11WorldTest {
 protected:
  X11DialogsTest() : editor(world().launch("Editor")) {
    for (const char* title : {"first", "second", "third"}) open(editor, title, {200, 150, 500, 300});
  }

  WorldWindow open(ProcessId pid, const std::string& title, const AxRect& where) {
    const auto window = world().open(pid, title, where);
    elementOf(pid, title);
    return windows[title] = window;
  }
  WorldWindow openDialog(ProcessId pid, const std::string& title, xcb_window_t parent) {
    const auto dialog = open(pid, title, {300, 250, 300, 200});
    tell(title, "dialog " + std::to_string(parent));
    return dialog;
  }

  void tell(const std::string& title, const std::string& command) {
    const auto owner = std::ranges::find_if(owners, [&](const auto& each) { return each.first == title; });
    x11()
        .application(owner == owners.end() ? editor : owner->second)
        .tell(x11().window(windows.at(title)), command);
  }
  xcb_window_t id(const std::string& title) { return x11().window(windows.at(title)).id; }
  bool becomesFocused(const std::string& title) {
    return wait([&] { return isFocused(editor, elementOf(editor, title)); });
  }
  void group(std::initializer_list<const char*> titles) {
    for (const char* title : titles) tell(title, "group " + std::to_string(id("first")));
  }

  ProcessId editor;
  std::map<std::string, WorldWindow> windows;
  std::map<std::string, ProcessId> owners;  // of windows that are not the editor's
};

TEST_F(X11DialogsTest, AWindowKeepsTheFocusUnderItsDialog) {
  openDialog(editor, "Open File", id("second"));
  EXPECT_TRUE(becomesFocused("second"));
}

TEST_F(X11DialogsTest, AlsoUnderADialogOfItsDialog) {
  openDialog(editor, "Options", id("second"));
  openDialog(editor, "Colours", id("Options"));
  openDialog(editor, "Sure?", id("Colours"));
  EXPECT_TRUE(becomesFocused("second"));
}

TEST_F(X11DialogsTest, AlsoUnderTheFileChooserOfTheDesktop) {
  const auto portal = world().launch("Portal");
  owners["Save As"] = portal;
  openDialog(portal, "Save As", id("second"));
  EXPECT_TRUE(wait([&] { return isInFront(editor); }));
  EXPECT_TRUE(becomesFocused("second"));
}

TEST_F(X11DialogsTest, ADialogThatGetsItsWindowLateIsSeen) {
  openDialog(editor, "Open File", id("second"));
  ASSERT_TRUE(becomesFocused("second"));
  tell("Open File", "dialog " + std::to_string(id("first")));
  EXPECT_TRUE(becomesFocused("first"));
}

TEST_F(X11DialogsTest, ADialogOfAMinimisedWindowIsStillItsDialog) {
  const auto dialog = openDialog(editor, "Open File", id("second"));
  ASSERT_TRUE(becomesFocused("second"));
  const Element second = elementOf(editor, "second");
  world().minimise(windows.at("second"));
  ASSERT_TRUE(wait([&] { return read<bool>(second, "AXMinimized") == true; }));
  // Window managers minimise it along; where one does not, or the user brings it back alone, no other window
  // is taken for the one in front.
  world().focus(dialog);
  EXPECT_TRUE(becomesFocused("second"));
}

TEST_F(X11DialogsTest, WindowsThatNameOneAnotherHaveTheFocusThemselves) {
  openDialog(editor, "one", id("first"));
  openDialog(editor, "two", id("one"));
  ASSERT_TRUE(becomesFocused("first"));
  group({"first", "one", "two"});
  tell("one", "dialog " + std::to_string(id("two")));
  EXPECT_TRUE(becomesFocused("two"));
  tell("two", "dialog " + std::to_string(id("two")));
  letPass(50ms);
  EXPECT_TRUE(becomesFocused("two"));
}

TEST_F(X11DialogsTest, ADialogOfAWindowThatIsGoneHasTheFocusItself) {
  openDialog(editor, "Orphan", id("second"));
  ASSERT_TRUE(becomesFocused("second"));
  world().destroy(windows.at("second"));
  EXPECT_TRUE(becomesFocused("Orphan"));
}

TEST_F(X11DialogsTest, ADialogOfTheGroupBelongsToItsOnlyWindow) {
  group({"second"});
  tell("second", "group " + std::to_string(id("first")));
  openDialog(editor, "Preferences", XCB_NONE);
  ASSERT_TRUE(becomesFocused("Preferences"));
  group({"Preferences"});
  EXPECT_TRUE(becomesFocused("second"));
  tell("Preferences", "dialog " + std::to_string(desktop().observer().root()));
  letPass(50ms);
  EXPECT_TRUE(becomesFocused("second"));
}

TEST_F(X11DialogsTest, ADialogOfAGroupOfTwoBelongsToNeither) {
  group({"second", "third"});
  openDialog(editor, "Preferences", desktop().observer().root());
  group({"Preferences"});
  letPass(50ms);
  EXPECT_TRUE(becomesFocused("Preferences"));
  // One that is not seen is not meant.
  world().minimise(windows.at("second"));
  world().focus(windows.at("Preferences"));
  EXPECT_TRUE(becomesFocused("third"));
}

}  // namespace
}  // namespace pellar::contract
