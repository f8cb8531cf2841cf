#include "tests/e2e/tour/ScreenSteps.h"

#include "tests/e2e/Keys.h"
#include "tests/e2e/PopUpMenu.h"
#include "tests/e2e/RecentPanel.h"
#include "tests/e2e/SidePanel.h"

namespace pellar::e2e {

namespace {

constexpr int colourTagItem = 7;

Box screenOf(Stage& stage) {
  return stage.observer().box(stage.observer().root()).value_or(Box{});
}

Window frontWindow(Stage& stage) {
  return {stage.observer().activeWindow()};
}

// --- two monitors ---

void plugIn(Stage& stage) {
  stage.addMonitor();
  const auto window = frontWindow(stage);
  const auto screen = screenOf(stage);
  stage.desktop().resize(window, screen.width / 2 - 120, screen.height / 2);
  stage.desktop().move(window, screen.width / 2 + 60, 200);
  stage.strip().waitUntilOver(window);
}

void fillSecondMonitor(Stage& stage) {
  const auto window = frontWindow(stage);
  const auto screen = screenOf(stage);
  stage.strip().clickWindowButton(WindowButton::zoom);
  const Box wanted{screen.width / 2, Strip::height, screen.width / 2, screen.height - Strip::height};
  stage.observer().waitUntil("the window fills the second monitor below the strip",
                             [&] { return stage.desktop().frame(window) == wanted; });
  SidePanel::picker(stage.desktop(), stage.strip()).waitUntilGone();
  stage.strip().waitUntilOver(window);
}

// --- a dense screen ---

void openTabMenu(Stage& stage) {
  PopUpMenu menu(stage.desktop(), stage.pellar());
  stage.strip().clickTab(1, 3);
  menu.waitUntilOpen();
  menu.openSubmenu(colourTagItem);
}

void restOnTab(Stage& stage) {
  PopUpMenu menu(stage.desktop(), stage.pellar());
  stage.observer().strike(escapeKey);
  stage.observer().strike(escapeKey);
  menu.waitUntilClosed();
  stage.strip().pointAtTab(0);
  SidePanel::card(stage.desktop(), stage.strip()).waitUntilShown();
}

void openRecentFiles(Stage& stage) {
  RecentPanel(stage.desktop(), stage.strip()).openByClickOnTheMagnifier();
}

void leaveRecentFiles(Stage& stage) {
  stage.observer().strike(escapeKey);
  RecentPanel(stage.desktop(), stage.strip()).waitUntilClosed();
  stage.strip().waitUntilOver(stage.documents().back());
}

}  // namespace

std::vector<Step> secondMonitorSteps(Stage& stage) {
  return {
      {"second-monitor", "plugged in a second monitor and moved the window there", [&] { plugIn(stage); }},
      {"second-monitor-filled", "clicked the strip's zoom button", [&] { fillSecondMonitor(stage); }},
  };
}

std::vector<Step> doubleDensitySteps(Stage& stage) {
  return {
      {"dense-tab-menu", "clicked the second tab with the right button and went to the colour tags",
       [&] { openTabMenu(stage); }},
      {"dense-card", "left the menu with Escape and rests on the first tab", [&] { restOnTab(stage); }},
      {"dense-recent-files", "clicked the magnifier", [&] { openRecentFiles(stage); }},
      {"dense-recent-files-closed", "pressed Escape", [&] { leaveRecentFiles(stage); }},
  };
}

}  // namespace pellar::e2e
