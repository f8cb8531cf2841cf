// The strip's menus and its question, with mouse and keyboard.

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <optional>

#include "tests/e2e/DesktopTest.h"
#include "tests/e2e/Keys.h"
#include "tests/e2e/PopUpMenu.h"

namespace pellar::e2e {

namespace {

// The items of a tab's menu for a plain program's window, whose file nobody knows.
constexpr int closeItem = 1;
constexpr int closeOthersItem = 2;
constexpr int layoutItem = 4;
constexpr int colourTagItem = 5;
constexpr int redTag = 0;  // from the first, which is marked when the submenu opens
constexpr int noTag = 6;
constexpr std::uint32_t red = 0xff453a;

class Menus : public EveryWindowManager {
 protected:
  // Three windows of one program, the last in front, and Pellar.
  std::vector<Window> openThree() {
    std::vector<Window> all;
    int offset = 0;
    for (const char* title : {"Report", "Plan", "Budget"}) {
      all.push_back(editor().open(title, {60 + offset, 160 + offset, 1000, 400}));
      offset += 60;
    }
    showStrip(all);
    return all;
  }
  void showStrip(const std::vector<Window>& all) {
    startPellar();
    menu.emplace(desktop, *pellar);
    strip.waitUntilOver(all.back());
    strip.waitUntilTabs(all.size());
  }
  void openTabMenu(std::size_t tab) {
    strip.clickTab(tab, 3);
    menu->waitUntilOpen();
  }
  void waitUntilClosed(Window window) {
    desktop.observer().waitUntil("the window is closed",
                                 [&] { return !desktop.observer().box(window.id).has_value(); });
  }
  // What a tab looks like beside its marker.
  std::uint32_t groundOfTab(std::size_t index) {
    const auto picture = desktop.observer().picture(*strip.window());
    return picture->at(strip.tabs().at(index).marker - 8, Strip::height / 2);
  }

  std::optional<PopUpMenu> menu;
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(Menus);

TEST_P(Menus, ARightClickOpensOneAboveTheStripAndEscapeClosesIt) {
  const auto all = openThree();
  openTabMenu(1);
  const auto stacked = desktop.observer().topLevels();
  EXPECT_LT(std::ranges::find(stacked, *strip.window()), std::ranges::find(stacked, menu->windows().front()));
  EXPECT_TRUE(desktop.isActive(all[2])) << "the application stays in front";
  desktop.observer().strike(escapeKey);
  menu->waitUntilClosed();
  strip.waitUntilOver(all[2]);
  strip.waitUntilTabs(3);
  // It can be opened again, and by the same tab.
  openTabMenu(1);
  desktop.observer().strike(escapeKey);
  menu->waitUntilClosed();
}

TEST_P(Menus, ArrowsAndReturnChooseAnItem) {
  const auto all = openThree();
  openTabMenu(0);
  menu->choose(closeOthersItem);
  menu->waitUntilClosed();
  waitUntilClosed(all[1]);
  waitUntilClosed(all[2]);
  strip.waitUntilTabs(1);
  strip.waitUntilOver(all[0]);
}

TEST_P(Menus, AClickChoosesAnItem) {
  const auto all = openThree();
  openTabMenu(1);
  menu->click(closeItem);
  menu->waitUntilClosed();
  waitUntilClosed(all[1]);
  strip.waitUntilTabs(2);
  strip.waitUntilOver(all[2]);
}

TEST_P(Menus, APressHeldFromTheTabChoosesWhereItIsLetGo) {
  const auto all = openThree();
  strip.pointAtTab(1);
  desktop.observer().press(3);
  menu->waitUntilOpen();
  const auto box = menu->box();
  for (int y = box.y - 2; y <= box.y + 12; y += 7) desktop.observer().movePointer(box.x + 40, y);
  desktop.observer().waitUntil("the first item is marked", [&] { return menu->marked().has_value(); });
  desktop.observer().release(3);
  menu->waitUntilClosed();
  waitUntilClosed(all[1]);
  strip.waitUntilTabs(2);
}

TEST_P(Menus, AClickElsewhereOnlyClosesIt) {
  Application terminal(desktop, "terminal");
  const auto shell = terminal.open("Shell", {1100, 500, 300, 300});
  const auto all = openThree();
  openTabMenu(0);
  const auto other = desktop.frame(shell);
  desktop.observer().click(other.x + other.width / 2, other.y + other.height / 2);
  menu->waitUntilClosed();
  EXPECT_TRUE(desktop.isActive(all[2]));
  strip.waitUntilOver(all[2]);
  strip.clickTab(0);
  strip.waitUntilOver(all[0]);
}

TEST_P(Menus, TheStripKnowsWhereThePointerIsAfterwards) {
  openThree();
  const auto ground = groundOfTab(0);
  openTabMenu(0);
  // Away while the menu is open: the tab is no longer under the pointer when it closes.
  desktop.observer().movePointer(1400, 880);
  desktop.observer().strike(escapeKey);
  menu->waitUntilClosed();
  desktop.observer().waitUntil("the tab looks as before", [&] { return groundOfTab(0) == ground; });
  openTabMenu(0);
  desktop.observer().strike(escapeKey);
  menu->waitUntilClosed();
  desktop.observer().waitUntil("the tab under the pointer is raised",
                               [&] { return groundOfTab(0) != ground; });
  // Nothing is held: a movement neither drags nor selects.
  strip.pointAtTab(1);
  EXPECT_FALSE(strip.dropMarker().has_value());
  strip.clickTab(1);
  desktop.observer().waitUntil("the second tab is the active one", [&] { return strip.activeTab() == 1U; });
}

TEST_P(Menus, ATabIsTaggedRedAndStaysSoForTheNextRun) {
  openThree();
  openTabMenu(1);
  menu->openSubmenu(colourTagItem);
  menu->click(redTag);
  menu->waitUntilClosed();
  desktop.observer().waitUntil("the tab has a red bar", [&] { return strip.tagBar(1) == red; });
  EXPECT_EQ(strip.tagBar(0), std::nullopt);
  EXPECT_EQ(strip.tagBar(2), std::nullopt);
  EXPECT_TRUE(stateHas("\"title:Plan\": \"red\""));

  stopPellar();
  startPellar();
  menu.emplace(desktop, *pellar);
  strip.waitUntilTabs(3);
  desktop.observer().waitUntil("the tab has its red bar again", [&] { return strip.tagBar(1) == red; });
  openTabMenu(1);
  menu->openSubmenu(colourTagItem);
  menu->choose(noTag);
  menu->waitUntilClosed();
  desktop.observer().waitUntil("the bar is gone", [&] { return !strip.tagBar(1).has_value(); });
}

TEST_P(Menus, LeftGoesBackFromASubmenu) {
  openThree();
  openTabMenu(1);
  menu->openSubmenu(layoutItem);
  desktop.observer().strike(leftKey);
  menu->waitUntilOpen(1);
  desktop.observer().strike(escapeKey);
  menu->waitUntilClosed();
}

TEST_P(Menus, TilingLeftFillsExactlyTheLeftHalf) {
  const auto all = openThree();
  openTabMenu(1);
  menu->openSubmenu(layoutItem);
  desktop.observer().strike(returnKey);
  menu->waitUntilClosed();
  const Box half{0, Strip::height, 720, 900 - Strip::height};
  desktop.observer().waitUntil("the window fills the left half below the strip",
                               [&] { return desktop.frame(all[1]) == half; });
  strip.waitUntilOver(all[1]);
}

TEST_P(Menus, AWindowMayCloseUnderItsMenu) {
  const auto all = openThree();
  openTabMenu(1);
  editor().tell(all[1], "destroy");
  strip.waitUntilTabs(2);
  menu->choose(closeItem);
  menu->waitUntilClosed();
  openTabMenu(0);
  editor().tell(all[0], "destroy");
  editor().tell(all[2], "destroy");
  strip.waitUntilHidden();
  desktop.observer().strike(escapeKey);
  menu->waitUntilClosed();
  EXPECT_EQ(logLines("error"), 0);
}

TEST_P(Menus, PellarEndsInOrderWithOneOpen) {
  openThree();
  openTabMenu(1);
  menu->openSubmenu(layoutItem);
  stopPellar();
}

class GroupNames : public Menus {
 protected:
  void write(const std::string& groups) {
    desktop.folders().write(desktop.folders().stateFile(), "{\"groups\":{" + groups + "}}");
  }
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(GroupNames);

TEST_P(GroupNames, MayBeAnythingAndFitTheScreen) {
  write("\"A\\nB\\tC\":[\"/a\"],\"R&D & \\u202e\":[\"/a\"],\"" + std::string(10000, 'x') +
        "\":[\"/a\"],\"\\u05e9\\u05dc\\u05d5\\u05dd\":[\"/a\"],\"\\u0001\":[\"/a\"],\"" +
        std::string(600, 'y') + "\":[]");
  openThree();
  strip.clickTool(StripTool::groups);
  menu->waitUntilOpen();
  const auto box = menu->box();
  EXPECT_LE(box.width, 560);
  EXPECT_LT(box.x + box.width, 1441);
  menu->stepTo(2);
  // A row is one line high, whatever is in it: seven items, of which one is the first, and a line between.
  EXPECT_LT(box.height, menu->marked()->height * 8);
  // The name that begins with a control character is the first. Deleted from its submenu.
  desktop.observer().strike(rightKey);
  menu->waitUntilOpen(2);
  menu->choose(1);
  menu->waitUntilClosed();
  desktop.observer().waitUntil("the group is deleted", [this] { return !stateHas("\\u0001"); });
  EXPECT_TRUE(stateHas("R&D & "));
}

TEST_P(GroupNames, ACrowdedStripLeadsToThemThroughMore) {
  std::vector<Window> all;
  for (const char* title : {"One", "Two", "Three", "Four"})
    all.push_back(editor().open(title, {100, 200, 420, 300}));
  showStrip(all);
  strip.clickTool(StripTool::more);
  menu->waitUntilOpen();
  const auto more = menu->windows();
  menu->choose(1);
  desktop.observer().waitUntil("the groups' menu has taken its place", [&] {
    const auto open = menu->windows();
    return open.size() == 1 && open != more && desktop.observer().keyboardIsGrabbed();
  });
  desktop.observer().strike(escapeKey);
  menu->waitUntilClosed();
  strip.clickTool(StripTool::more);
  menu->waitUntilOpen();
  menu->choose(2);
  for (const Window window : all) waitUntilClosed(window);
  strip.waitUntilHidden();
}

}  // namespace

}  // namespace pellar::e2e
