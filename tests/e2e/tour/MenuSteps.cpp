#include "tests/e2e/tour/MenuSteps.h"

#include <stdexcept>

#include "tests/e2e/Keys.h"
#include "tests/e2e/PopUpMenu.h"

namespace pellar::e2e {

namespace {

// The items of a document's menu that can be chosen, and those of the groups' menu.
constexpr int layoutItem = 6;
constexpr int colourTagItem = 7;
constexpr int saveGroupItem = 1;
constexpr int firstGroupItem = 2;
constexpr std::uint32_t red = 0xff453a;

PopUpMenu menuOf(Stage& stage) {
  return PopUpMenu(stage.desktop(), stage.pellar());
}

void openTabMenu(Stage& stage) {
  auto menu = menuOf(stage);
  stage.strip().clickTab(0, 3);
  menu.waitUntilOpen();
}

void openColourTags(Stage& stage) {
  menuOf(stage).openSubmenu(colourTagItem);
}

void tagRed(Stage& stage) {
  auto menu = menuOf(stage);
  menu.click(0);  // the first is marked already
  menu.waitUntilClosed();
  stage.observer().waitUntil("the first tab has a red bar", [&] { return stage.strip().tagBar(0) == red; });
}

void openLayouts(Stage& stage) {
  openTabMenu(stage);
  menuOf(stage).openSubmenu(layoutItem);
}

void tileLeft(Stage& stage) {
  auto menu = menuOf(stage);
  stage.observer().strike(returnKey);
  menu.waitUntilClosed();
  const auto screen = stage.observer().box(stage.observer().root()).value_or(Box{});
  const Box half{0, Strip::height, screen.width / 2, screen.height - Strip::height};
  const auto window = stage.documents().at(0);
  stage.observer().waitUntil("the window fills the left half",
                             [&] { return stage.desktop().frame(window) == half; });
  stage.strip().waitUntilOver(window);
}

// The other document, whose window has room for all tools.
void goToTheOther(Stage& stage) {
  stage.strip().clickTab(1);
  stage.strip().waitUntilOver(stage.documents().at(1));
}

void openGroups(Stage& stage) {
  auto menu = menuOf(stage);
  stage.strip().clickTool(StripTool::groups);
  menu.waitUntilOpen();
}

void askForGroupName(Stage& stage) {
  openGroups(stage);
  menuOf(stage).choose(saveGroupItem);
  stage.observer().waitUntil("the question has the keyboard", [&] {
    return stage.observer().numbers(stage.observer().activeWindow(), "_NET_WM_PID") ==
           std::vector{static_cast<std::uint32_t>(stage.pellar().pid())};
  });
  if (stage.observer().numbers(stage.observer().activeWindow(), "_NET_WM_ICON").empty())
    throw std::runtime_error("the question has no icon");
  stage.observer().type("Friday");
}

void saveGroup(Stage& stage) {
  stage.observer().strike(returnKey);
  stage.strip().waitUntilOver(stage.documents().at(1));
  openGroups(stage);
  menuOf(stage).openSubmenu(firstGroupItem);
}

void openMore(Stage& stage) {
  auto menu = menuOf(stage);
  stage.observer().strike(escapeKey);
  stage.observer().strike(escapeKey);
  menu.waitUntilClosed();
  // So narrow that not even one tab has room beside the tools.
  constexpr int narrow = 240;
  const auto terminal = stage.terminal();
  const auto place = stage.placeOfTerminal();
  stage.desktop().restore(terminal);
  stage.observer().waitUntil("the terminal is where it was", [&] {
    const auto frame = stage.desktop().frame(terminal);
    return frame.x == place.x && frame.y == place.y;
  });
  stage.observer().configure(terminal.id, XCB_CONFIG_WINDOW_WIDTH, {narrow});
  stage.observer().waitUntil("the terminal is narrow",
                             [&] { return stage.observer().box(terminal.id)->width <= narrow; });
  stage.strip().waitUntilOver(terminal);
  stage.strip().clickTool(StripTool::more);
  menu.waitUntilOpen();
}

void closeMenu(Stage& stage) {
  stage.observer().strike(escapeKey);
  menuOf(stage).waitUntilClosed();
  stage.strip().waitUntilOver(stage.terminal());
}

}  // namespace

std::vector<Step> menuSteps(Stage& stage) {
  return {
      {"tab-menu", "clicked the first tab with the right button", [&] { openTabMenu(stage); }},
      {"colour-tags", "went to the colour tags with the keyboard", [&] { openColourTags(stage); }},
      {"tagged-red", "clicked red", [&] { tagRed(stage); }},
      {"layouts", "opened the menu again and its layouts", [&] { openLayouts(stage); }},
      {"tiled-left", "chose the left half with Return", [&] { tileLeft(stage); }},
      {"other-document", "clicked the other tab", [&] { goToTheOther(stage); }},
      {"group-name", "saves the open tabs as a group and types its name", [&] { askForGroupName(stage); }},
      {"groups", "pressed Return and opened the groups", [&] { saveGroup(stage); }},
      {"more", "went to the terminal, made it narrow and opened what does not fit", [&] { openMore(stage); }},
      {"menu-closed", "pressed Escape", [&] { closeMenu(stage); }},
  };
}

}  // namespace pellar::e2e
