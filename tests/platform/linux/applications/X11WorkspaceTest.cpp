#include <stdlib.h>

#include <vector>

#include "tests/e2e/Folders.h"
#include "tests/platform/linux/X11WorldTest.h"

namespace pellar::contract {
namespace {

class X11WorkspaceTest : public X11WorldTest {
 protected:
  X11WorkspaceTest() { setenv("XDG_DATA_HOME", folders.root().c_str(), 1); }
  ~X11WorkspaceTest() override { unsetenv("XDG_DATA_HOME"); }

  void install(const std::string& id, const std::string& name) {
    folders.write(folders.root() / "applications" / (id + ".desktop"),
                  "[Desktop Entry]\nName=" + name + "\n");
  }
  // The program comes back to its loop.
  void turn() {
    bool turned = false;
    mainLoop().post([&turned] { turned = true; });
    EXPECT_TRUE(wait([&turned] { return turned; }));
  }

  e2e::Folders folders;
};

TEST_F(X11WorkspaceTest, AnInstalledProgramHasTheNameOfItsEntry) {
  install("org.example.pad", "Pad");
  EXPECT_EQ(workspace().displayName("org.example.pad"), "Pad");
  EXPECT_EQ(workspace().displayName("org.example.nobody"), std::nullopt);
}

TEST_F(X11WorkspaceTest, WhatIsInstalledIsReadOnceForAllTheRowsOfAMenu) {
  install("org.example.pad", "Pad");
  EXPECT_EQ(workspace().displayName("org.example.pad"), "Pad");
  install("org.example.pen", "Pen");
  EXPECT_EQ(workspace().displayName("org.example.pen"), std::nullopt) << "it was read again";
  turn();
  EXPECT_EQ(workspace().displayName("org.example.pen"), "Pen") << "the next menu knows it";
}

TEST_F(X11WorkspaceTest, SaysWhenAnotherDesktopIsShown) {
  int told = 0;
  const auto subscription = workspace().onActiveSpaceChanged([&told] { ++told; });
  desktop().run({"xdotool", "set_desktop", "1"});
  EXPECT_TRUE(wait([&told] { return told == 1; }));
  desktop().run({"xdotool", "set_desktop", "0"});
  EXPECT_TRUE(wait([&told] { return told == 2; }));
}

TEST_F(X11WorkspaceTest, SaysWhichApplicationIsThereWithItsFirstWindow) {
  std::vector<ProcessId> told;
  const auto subscription = workspace().onLaunched([&told](ProcessId pid) { told.push_back(pid); });
  const ProcessId editor = world().launch("editor");
  world().open(editor, "Report.txt", {60, 160, 400, 300});
  elementOf(editor, "Report.txt");
  world().open(editor, "Plan.txt", {60, 160, 400, 300});
  elementOf(editor, "Plan.txt");
  EXPECT_EQ(told, std::vector<ProcessId>{editor});
}

}  // namespace
}  // namespace pellar::contract
