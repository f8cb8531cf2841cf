#include "tests/e2e/tour/WindowSteps.h"

#include <memory>
#include <stdexcept>

#include "tests/e2e/Keys.h"

namespace pellar::e2e {

namespace {

constexpr const char* dialogTitle = "Open File";
constexpr const char* maximisedState = "_NET_WM_STATE_MAXIMIZED_VERT";

// The editor's own, over the last of its windows, which keeps the strip below it.
void askForFile(Stage& stage) {
  const auto asking = stage.documents().back();
  const auto active = stage.strip().activeTab();
  stage.observer().key(controlKey, true);
  stage.observer().type("o");
  stage.observer().key(controlKey, false);
  const auto dialog = stage.desktop().waitForWindow(dialogTitle);
  stage.observer().waitUntil("the strip is on the window that asks, below its dialog", [&] {
    const auto strip = stage.strip().window();
    return strip && stage.strip().isOver(asking) &&
           stage.observer().heightInStack(*strip) < stage.observer().heightInStack(dialog.id);
  });
  // Down and aside, so that the strip is seen.
  const auto window = stage.desktop().frame(asking);
  stage.desktop().resize(dialog, 760, 400);
  stage.desktop().move(dialog, window.x + 200, window.y + 90);
  if (!stage.strip().isOver(asking) || stage.strip().activeTab() != active)
    throw std::runtime_error("the strip left the window that asks");
}

void leaveDialog(Stage& stage) {
  stage.observer().strike(escapeKey);
  stage.observer().waitUntil("the dialog is gone",
                             [&] { return !stage.observer().clientTitled(dialogTitle).has_value(); });
  stage.strip().waitUntilOver(stage.documents().back());
}

void doubleClickTitleBar(Stage& stage, Window window) {
  const auto frame = stage.desktop().frame(window);
  stage.observer().doubleClick(frame.x + frame.width / 2, frame.y + 10);
}

// Tells where the window was.
void maximise(Stage& stage, Box& before) {
  const auto window = stage.documents().back();
  before = stage.desktop().frame(window);
  const auto screen = stage.observer().box(stage.observer().root()).value_or(Box{});
  const Box belowStrip{0, Strip::height, screen.width, screen.height - Strip::height};
  doubleClickTitleBar(stage, window);
  stage.observer().waitUntil("the window is maximised below the strip", [&] {
    return stage.observer().hasState(window.id, maximisedState) &&
           stage.desktop().frame(window) == belowStrip;
  });
  stage.strip().waitUntilOver(window);
}

void restore(Stage& stage, const Box& before) {
  const auto window = stage.documents().back();
  doubleClickTitleBar(stage, window);
  stage.observer().waitUntil("the window is as it was", [&] {
    return !stage.observer().hasState(window.id, maximisedState) && stage.desktop().frame(window) == before;
  });
  stage.strip().waitUntilOver(window);
}

}  // namespace

std::vector<Step> windowSteps(Stage& stage) {
  const auto before = std::make_shared<Box>();
  return {
      {"dialog", "pressed Control-O in the third editor", [&] { askForFile(stage); }},
      {"dialog-closed", "pressed Escape", [&] { leaveDialog(stage); }},
      {"maximised", "double-clicked the title bar: the window is maximised below the strip",
       [&stage, before] { maximise(stage, *before); }},
      {"as-before", "double-clicked it again", [&stage, before] { restore(stage, *before); }},
  };
}

}  // namespace pellar::e2e
