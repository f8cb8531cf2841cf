#include "tests/e2e/tour/ShellSteps.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "tests/e2e/Keys.h"
#include "tests/e2e/PopUpMenu.h"

namespace pellar::e2e {

namespace {

constexpr const char* termsTitle = "Pellar End User Agreement";
constexpr const char* aboutTitle = "About Pellar";

// Of the items that can be chosen.
constexpr int autoSaveItem = 7;
constexpr int aboutItem = 11;

Window waitForDrawn(Stage& stage, const std::string& title) {
  const auto window = stage.desktop().waitForWindow(title);
  stage.observer().waitUntil("\"" + title + "\" is drawn", [&] {
    const auto picture = stage.observer().picture(window.id);
    return picture &&
           std::ranges::any_of(picture->pixels, [&](auto pixel) { return pixel != picture->pixels.front(); });
  });
  return window;
}

void waitUntilGone(Stage& stage, const std::string& title) {
  stage.observer().waitUntil("\"" + title + "\" is gone", [&] {
    const auto window = stage.observer().clientTitled(title);
    return !window || !stage.observer().isViewable(*window);
  });
}

void startForTheFirstTime(Stage& stage) {
  stage.startPellar();
  waitForDrawn(stage, termsTitle);
  if (stage.strip().window()) throw std::runtime_error("a strip before the terms are accepted");
}

void accept(Stage& stage) {
  stage.observer().strike(returnKey);
  waitUntilGone(stage, termsTitle);
  const auto front = stage.documents().back();
  stage.desktop().activate(front);
  stage.strip().waitUntilOver(front);
  stage.strip().waitUntilTabs(stage.documents().size());
}

void openMenu(Stage& stage) {
  stage.startPellarAgain();
  PopUpMenu menu(stage.desktop(), stage.pellar());
  menu.waitUntilOpen();
}

void openAutoSave(Stage& stage) {
  PopUpMenu(stage.desktop(), stage.pellar()).openSubmenu(autoSaveItem);
}

void openAbout(Stage& stage) {
  PopUpMenu menu(stage.desktop(), stage.pellar());
  stage.observer().strike(escapeKey);
  menu.waitUntilOpen(1);
  menu.choose(aboutItem - autoSaveItem);
  menu.waitUntilClosed();
  waitForDrawn(stage, aboutTitle);
}

void closeAbout(Stage& stage) {
  stage.observer().strike(escapeKey);
  waitUntilGone(stage, aboutTitle);
}

}  // namespace

std::vector<Step> firstStartSteps(Stage& stage) {
  return {
      {"terms", "started Pellar for the first time", [&] { startForTheFirstTime(stage); }},
      {"strip-on-the-editor", "accepted them with Return and went to the editor with three documents",
       [&] { accept(stage); }},
  };
}

std::vector<Step> shellSteps(Stage& stage) {
  return {
      {"program-menu", "started Pellar once more, which opens the menu of the one that runs",
       [&] { openMenu(stage); }},
      {"auto-save-choices", "went to the choices of auto-save", [&] { openAutoSave(stage); }},
      {"about", "left them with Escape and chose About Pellar", [&] { openAbout(stage); }},
      {"about-closed", "pressed Escape", [&] { closeAbout(stage); }},
  };
}

}  // namespace pellar::e2e
