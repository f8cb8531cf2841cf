#include "tests/e2e/tour/StripSteps.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "tests/e2e/SidePanel.h"

namespace pellar::e2e {

namespace {

void expectOver(Stage& stage, Window window, std::size_t tabs, std::size_t active) {
  stage.strip().waitUntilOver(window);
  stage.strip().waitUntilTabs(tabs);
  stage.observer().waitUntil("tab " + std::to_string(active + 1) + " is the active one",
                             [&] { return stage.strip().activeTab() == active; });
}

Window frontWindow(Stage& stage) {
  return {stage.observer().activeWindow()};
}

std::size_t placeOf(Stage& stage, Window window) {
  const auto& all = stage.documents();
  const auto found = std::ranges::find(all, window);
  if (found == all.end()) throw std::runtime_error("\"" + stage.titleOf(window) + "\" is no document");
  return static_cast<std::size_t>(found - all.begin());
}

void expectOverDocument(Stage& stage, Window window) {
  expectOver(stage, window, stage.documents().size(), placeOf(stage, window));
}

void clickTab(Stage& stage, std::size_t index) {
  stage.strip().clickTab(index);
  expectOverDocument(stage, stage.documents().at(index));
}

// Takes the first tab, the active one, and holds it behind the last.
void holdFirstTabAtTheEnd(Stage& stage) {
  stage.strip().holdTab(0, stage.documents().size() - 1);
}

void letTabGo(Stage& stage) {
  auto& all = stage.documents();
  std::ranges::rotate(all, all.begin() + 1);
  stage.strip().dropTab();
  expectOverDocument(stage, all.back());
}

void closeTab(Stage& stage, std::size_t index) {
  auto& all = stage.documents();
  const auto front = frontWindow(stage);
  const auto closed = all.at(index);
  stage.strip().clickCloseMark(index);
  stage.observer().waitUntil("the window is closed",
                             [&] { return !stage.observer().box(closed.id).has_value(); });
  std::erase(all, closed);
  expectOverDocument(stage, front);
}

void expectMoved(Stage& stage, Window window, const Box& before, int byX, int byY) {
  // A window manager starts its drag some pixels late.
  constexpr int slack = 12;
  stage.observer().waitUntil("the window is at its new place", [&] {
    const auto now = stage.desktop().frame(window);
    return std::abs(now.x - before.x - byX) <= slack && std::abs(now.y - before.y - byY) <= slack;
  });
  expectOverDocument(stage, window);
}

void moveByTitleBar(Stage& stage) {
  constexpr int byX = -90;
  constexpr int byY = 70;
  const auto front = frontWindow(stage);
  const auto before = stage.desktop().frame(front);
  stage.desktop().dragByTitleBar(front, byX, byY);
  expectMoved(stage, front, before, byX, byY);
}

void moveByStrip(Stage& stage) {
  constexpr int byX = 60;
  constexpr int byY = -50;
  const auto front = frontWindow(stage);
  const auto before = stage.desktop().frame(front);
  stage.strip().dragEmptyPart(byX, byY);
  expectMoved(stage, front, before, byX, byY);
}

void zoom(Stage& stage) {
  const auto front = frontWindow(stage);
  stage.strip().clickWindowButton(WindowButton::zoom);
  const auto screen = stage.observer().box(stage.observer().root()).value_or(Box{});
  stage.observer().waitUntil("the window fills the screen below the strip", [&] {
    // A character-cell program may leave out less than a cell.
    const auto frame = stage.desktop().frame(front);
    return frame.x == 0 && frame.y == Strip::height && screen.width - frame.width < 20 &&
           screen.height - frame.y - frame.height < 20;
  });
  SidePanel::picker(stage.desktop(), stage.strip()).waitUntilGone();
  expectOverDocument(stage, front);
}

void zoomBack(Stage& stage) {
  const auto front = frontWindow(stage);
  const auto zoomed = stage.desktop().frame(front);
  stage.strip().clickWindowButton(WindowButton::zoom);
  stage.observer().waitUntil("the window is small again", [&] {
    const auto frame = stage.desktop().frame(front);
    return frame.width < zoomed.width && frame.height < zoomed.height && frame.y > Strip::height;
  });
  SidePanel::picker(stage.desktop(), stage.strip()).waitUntilGone();
  expectOverDocument(stage, front);
}

void clickTerminal(Stage& stage) {
  const auto frame = stage.desktop().frame(stage.terminal());
  stage.observer().click(frame.x + frame.width - 40, frame.y + frame.height - 40);
  expectOver(stage, stage.terminal(), 1, 0);
}

// By clicking into the window that was in front of the editor's others, and is `index` among the tabs.
void returnToEditor(Stage& stage, std::size_t index) {
  const auto window = stage.documents().at(index);
  stage.orderDocumentsAsOpened();
  const auto frame = stage.desktop().frame(window);
  stage.observer().click(frame.x + 40, frame.y + frame.height - 40);
  expectOverDocument(stage, window);
}

// Tells where the window was.
void minimise(Stage& stage, Box& place) {
  const auto front = frontWindow(stage);
  place = stage.desktop().frame(front);
  stage.strip().clickWindowButton(WindowButton::minimise);
  stage.observer().waitUntil("the window is minimised",
                             [&] { return stage.observer().managedState(front.id) == 3; });
  // The window manager gives the focus to the window that had it before: the other document.
  const auto& all = stage.documents();
  const auto other = std::ranges::find_if(all, [&](Window window) { return window != front; });
  if (other == all.end()) throw std::runtime_error("no other document to fall back to");
  expectOverDocument(stage, *other);
}

void restore(Stage& stage, const Box& place) {
  clickTab(stage, 0);
  // The window manager lets it fly there.
  stage.observer().waitUntil("the window is where it was",
                             [&] { return stage.desktop().frame(stage.documents().at(0)) == place; });
  expectOverDocument(stage, stage.documents().at(0));
}

void minimiseTerminal(Stage& stage) {
  clickTerminal(stage);
  stage.strip().clickWindowButton(WindowButton::minimise);
  stage.observer().waitUntil("the terminal is minimised",
                             [&] { return stage.observer().managedState(stage.terminal().id) == 3; });
  stage.observer().waitUntil("the strip is back on a document", [&] {
    const auto& all = stage.documents();
    return std::ranges::any_of(
        all, [&](Window window) { return stage.desktop().isActive(window) && stage.strip().isOver(window); });
  });
}

}  // namespace

std::vector<Step> stripSteps(Stage& stage) {
  const auto minimised = std::make_shared<Box>();
  return {
      {"second-tab", "clicked the second tab", [&] { clickTab(stage, 1); }},
      {"first-tab", "clicked the first tab", [&] { clickTab(stage, 0); }},
      {"tab-held", "took the first tab and holds it behind the last", [&] { holdFirstTabAtTheEnd(stage); }},
      {"tab-dropped", "let the tab go", [&] { letTabGo(stage); }},
      {"first-tab-is-another", "clicked the tab that is now the first", [&] { clickTab(stage, 0); }},
      {"tab-closed", "clicked the second tab's close mark", [&] { closeTab(stage, 1); }},
      {"window-moved", "dragged the window by its title bar", [&] { moveByTitleBar(stage); }},
      {"window-moved-by-the-strip",
       "dragged the empty part of the strip: the windows stacked there come along",
       [&] { moveByStrip(stage); }},
      {"terminal", "clicked into the terminal", [&] { clickTerminal(stage); }},
      {"editor-again", "clicked into the editor", [&] { returnToEditor(stage, 0); }},
      {"zoomed", "clicked the strip's zoom button", [&] { zoom(stage); }},
      {"zoomed-back", "clicked it again", [&] { zoomBack(stage); }},
      {"other-tab", "clicked the first tab", [&] { clickTab(stage, 0); }},
      {"minimised", "clicked the strip's minimise button",
       [&stage, minimised] { minimise(stage, *minimised); }},
      {"restored", "clicked the minimised window's tab", [&stage, minimised] { restore(stage, *minimised); }},
      {"terminal-minimised", "clicked into the terminal and minimised it", [&] { minimiseTerminal(stage); }},
  };
}

}  // namespace pellar::e2e
