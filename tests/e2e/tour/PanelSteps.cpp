#include "tests/e2e/tour/PanelSteps.h"

#include <memory>
#include <stdexcept>
#include <string>

#include "tests/e2e/Keys.h"
#include "tests/e2e/RecentPanel.h"
#include "tests/e2e/SidePanel.h"

namespace pellar::e2e {

namespace {

// The right one of the picker's two halves, from its corner.
constexpr int rightHalfX = 84;
constexpr int rightHalfY = 42;

void goToEditor(Stage& stage) {
  stage.desktop().activate(stage.documents().at(1));
  stage.orderDocumentsAsOpened();
  stage.strip().waitUntilTabs(2);
  stage.strip().waitUntilOver({stage.observer().activeWindow()});
}

void restOnTab(Stage& stage) {
  stage.strip().pointAtTab(1);
  SidePanel::card(stage.desktop(), stage.strip()).waitUntilShown();
}

void restOnZoom(Stage& stage) {
  stage.strip().pointAtWindowButton(WindowButton::zoom);
  SidePanel::card(stage.desktop(), stage.strip()).waitUntilGone();
  const auto picker = SidePanel::picker(stage.desktop(), stage.strip()).waitUntilShown();
  stage.observer().movePointer(picker.x + rightHalfX, picker.y + rightHalfY);
}

void pickRightHalf(Stage& stage) {
  auto panel = SidePanel::picker(stage.desktop(), stage.strip());
  const auto picker = panel.waitUntilShown();
  const Window front{stage.observer().activeWindow()};
  stage.observer().click(picker.x + rightHalfX, picker.y + rightHalfY);
  const auto screen = stage.observer().box(stage.observer().root()).value_or(Box{});
  const Box half{screen.width / 2, Strip::height, screen.width / 2, screen.height - Strip::height};
  stage.observer().waitUntil("the window fills the right half",
                             [&] { return stage.desktop().frame(front) == half; });
  panel.waitUntilGone();
  stage.strip().waitUntilOver(front);
}

void openRecentFiles(Stage& stage) {
  RecentPanel recent(stage.desktop(), stage.strip());
  recent.openByClickOnTheMagnifier();
}

// The document whose window was closed.
std::string closedDocument(Stage& stage) {
  for (const char* name : {"report", "plan", "budget"})
    if (!stage.observer().clientTitled(name + std::string(".txt"))) return name;
  throw std::runtime_error("all documents are open");
}

void typeItsName(Stage& stage, const std::string& name) {
  stage.observer().type(name);
  RecentPanel recent(stage.desktop(), stage.strip());
  recent.waitUntilRows(1);
  stage.observer().strike(downKey);
  recent.waitUntilSelected(0);
}

void openIt(Stage& stage, const std::string& name) {
  stage.observer().strike(returnKey);
  RecentPanel(stage.desktop(), stage.strip()).waitUntilClosed();
  Window opened;
  stage.observer().waitUntil("the document is open again", [&] {
    opened.id = stage.observer().clientTitled(name).value_or(XCB_NONE);
    return opened.id != XCB_NONE && stage.desktop().isActive(opened);
  });
  stage.documents().push_back(opened);
  stage.strip().waitUntilTabs(3);
  stage.strip().waitUntilOver(opened);
}

void pressControlTab(Stage& stage) {
  const auto before = stage.strip().activeTab();
  stage.observer().key(controlKey, true);
  stage.observer().strike(tabKey);
  stage.observer().key(controlKey, false);
  stage.observer().waitUntil("another tab is active", [&] {
    const auto now = stage.strip().activeTab();
    return now && now != before;
  });
  stage.strip().waitUntilOver({stage.observer().activeWindow()});
}

}  // namespace

std::vector<Step> panelSteps(Stage& stage) {
  const auto name = std::make_shared<std::string>();
  return {
      {"editor-once-more", "went back to the editor", [&] { goToEditor(stage); }},
      {"card", "rests on a tab", [&] { restOnTab(stage); }},
      {"picker", "rests on the zoom button, then on a half of the picker", [&] { restOnZoom(stage); }},
      {"tiled-right", "clicked it", [&] { pickRightHalf(stage); }},
      {"recent-files", "clicked the magnifier", [&] { openRecentFiles(stage); }},
      {"recent-file-found", "typed the name of the document that was closed, and pressed the Down arrow",
       [&stage, name] {
         *name = closedDocument(stage);
         typeItsName(stage, *name);
       }},
      {"recent-file-opened", "pressed Return", [&stage, name] { openIt(stage, *name); }},
      {"next-tab", "pressed Control-Tab", [&] { pressControlTab(stage); }},
      {"tab-after-it", "pressed it again", [&] { pressControlTab(stage); }},
  };
}

}  // namespace pellar::e2e
