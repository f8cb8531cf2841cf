#include <gtest/gtest.h>

#include <optional>
#include <string_view>
#include <variant>

#include "platform/sim/SimMac.h"
#include "platform/sim/menus/SimMenuBar.h"

namespace pellar {
namespace {

class SimMenuBarTest : public ::testing::Test {
 protected:
  SimMenuBarTest() {
    editor.setMenuBar({{"File",
                        {{"Save", [this] { ++saves; }},
                         {.title = "New", .submenu = {{"Window", [this] { ++windows; }}}}}}});
  }
  template <class T>
  std::optional<T> read(const Element& element, std::string_view name) {
    const auto value = mac.accessibility().attribute(element, name);
    const T* typed = value ? std::get_if<T>(&*value) : nullptr;
    return typed == nullptr ? std::nullopt : std::optional<T>(*typed);
  }
  // The item at that place of the File menu.
  Element item(std::size_t place) {
    return SimElement::ofMenu(editor.menu({"File"}).children.at(0)->children.at(place));
  }
  Performed press(const Element& element) { return mac.accessibility().perform(element, "AXPress"); }

  SimMac mac;
  SimApplication editor = mac.launch({.bundleId = "org.example.editor", .name = "Editor"});
  int saves = 0;
  int windows = 0;
};

TEST_F(SimMenuBarTest, AProgramThatValidatesOpenMenusOnlySaysWhatHeldWhenItWasOpenedLast) {
  editor.menu({"File", "Save"}).enabled = false;
  EXPECT_EQ(read<bool>(item(0), "AXEnabled"), false);
  editor.menu({"File", "Save"}).enabled = true;
  editor.quirks().validatesOpenMenusOnly = true;
  editor.openMenu("File");
  editor.menu({"File", "Save"}).enabled = false;
  EXPECT_EQ(read<bool>(item(0), "AXEnabled"), true);
  editor.openMenu("File");
  EXPECT_EQ(read<bool>(item(0), "AXEnabled"), false);
  editor.menu({"File", "Save"}).enabled = true;
  EXPECT_EQ(read<bool>(item(0), "AXEnabled"), false);
}

TEST_F(SimMenuBarTest, APressOfADisabledItemValidatesItDoesNothingAndReportsSuccess) {
  editor.quirks().validatesOpenMenusOnly = true;
  editor.menu({"File", "Save"}).enabled = false;
  EXPECT_EQ(read<bool>(item(0), "AXEnabled"), true);
  EXPECT_EQ(press(item(0)), Performed::done);
  EXPECT_EQ(saves, 0);
  EXPECT_EQ(read<bool>(item(0), "AXEnabled"), false);
}

TEST_F(SimMenuBarTest, APressMayBeDoneWithoutAnAnswer) {
  editor.menu({"File", "Save"}).unansweredPress = true;
  const auto start = mac.mainLoop().uptime();
  EXPECT_EQ(press(item(0)), Performed::unanswered);
  EXPECT_EQ(saves, 1);
  EXPECT_EQ(mac.mainLoop().uptime() - start, SimAccessibility::messagingTimeout);
}

TEST_F(SimMenuBarTest, AnItemWithASubmenuOnlyOpensIt) {
  EXPECT_EQ(press(item(1)), Performed::done);
  EXPECT_EQ(windows, 0);
  const auto menus = read<std::vector<Element>>(item(1), "AXChildren");
  ASSERT_TRUE(menus.has_value());
  const auto items = read<std::vector<Element>>(menus->front(), "AXChildren");
  EXPECT_EQ(press(items->front()), Performed::done);
  EXPECT_EQ(windows, 1);
}

TEST_F(SimMenuBarTest, AFrozenApplicationDoesWhatItWasAskedOnceItGoesOn) {
  const Element save = item(0);
  editor.freeze();
  EXPECT_EQ(press(save), Performed::unanswered);
  EXPECT_EQ(saves, 0);
  editor.resume();
  mac.settle();
  EXPECT_EQ(saves, 1);
}

TEST_F(SimMenuBarTest, AFrozenApplicationThatQuitsTakesWhatItWasAskedAlong) {
  const Element save = item(0);
  editor.freeze();
  EXPECT_EQ(press(save), Performed::unanswered);
  mac.terminate(editor);
  mac.settle();
  EXPECT_EQ(saves, 0);
  EXPECT_EQ(press(save), Performed::refused);
}

}  // namespace
}  // namespace pellar
