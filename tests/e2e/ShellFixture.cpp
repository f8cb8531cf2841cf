#include "tests/e2e/ShellFixture.h"

#include <algorithm>

namespace pellar::e2e {

void Shell::startWithStrip() {
  const auto report = openEditor();
  startPellar();
  menu.emplace(desktop, *pellar);
  strip.waitUntilOver(report);
}

void Shell::startFresh() {
  std::filesystem::remove(desktop.folders().stateFile());
  startIn({});
}

void Shell::startIn(const Environment& changed, const std::string& program) {
  auto environment = desktop.environment();
  for (const auto& [name, value] : changed) environment[name] = value;
  pellar = std::make_unique<Process>(std::vector{builtProgram(program)}, environment,
                                     desktop.folders().root() / "pellar.errors");
  menu.emplace(desktop, *pellar);
}

void Shell::openMenuBySecondStart() {
  const auto second = desktop.start({builtProgram("pellar")}, "second");
  const auto ending = second->waitForEnd();
  ASSERT_TRUE(ending.has_value());
  EXPECT_EQ(ending->exitCode, 0);
  EXPECT_EQ(second->errors(), "Pellar is already running; its menu is open.\n");
  menu->waitUntilOpen();
}

void Shell::chooseBySecondStart(int item) {
  openMenuBySecondStart();
  menu->choose(item);
  menu->waitUntilClosed();
}

void Shell::strikeBackwardTab() {
  desktop.observer().key(shiftKey, true);
  strike(tabKey);
  desktop.observer().key(shiftKey, false);
}

void Shell::moveFocus(Window window, bool backward) {
  const auto before = pixels(window);
  if (backward) {
    strikeBackwardTab();
  } else {
    strike(tabKey);
  }
  desktop.observer().waitUntil("the focus moves", [&] { return pixels(window) != before; });
}

Window Shell::waitForOwnWindow(const std::string& title) {
  constexpr int headingTop = 18;
  constexpr int headingBottom = 50;
  Window window;
  // Once it is drawn, it has asked for the focus for the last time.
  desktop.observer().waitUntil("a window titled \"" + title + "\" is drawn and active", [&] {
    window.id = desktop.observer().clientTitled(title).value_or(XCB_NONE);
    return window.id != XCB_NONE && desktop.observer().isViewable(window.id) &&
           darkPixels(window, headingTop, headingBottom) > 50 && desktop.isActive(window);
  });
  return window;
}

void Shell::agreeToTerms() {
  desktop.observer().waitUntil("the terms are agreed to", [&] {
    if (isOnScreen(termsTitle)) strike(returnKey);
    return !isOnScreen(termsTitle);
  });
}

bool Shell::isOnScreen(const std::string& title) {
  const auto window = desktop.observer().clientTitled(title);
  return window && desktop.observer().isViewable(*window);
}

void Shell::waitUntilGone(const std::string& title) {
  desktop.observer().waitUntil("\"" + title + "\" is gone", [&] { return !isOnScreen(title); });
}

int Shell::darkPixels(Window window, int from, int to) {
  const auto picture = desktop.observer().picture(window.id);
  int dark = 0;
  for (int y = from; picture && y < std::min(to, picture->height); ++y)
    for (int x = 0; x < picture->width; ++x)
      if ((picture->at(x, y) & 255) < 150) ++dark;
  return dark;
}

std::vector<std::uint32_t> Shell::pixels(Window window) {
  const auto picture = desktop.observer().picture(window.id);
  return picture ? picture->pixels : std::vector<std::uint32_t>();
}

void Shell::waitUntilStripIsBack() {
  desktop.observer().waitUntil("the strip is back", [this] { return strip.window().has_value(); });
}

Environment Shell::environmentWithOpener() {
  const auto folder = desktop.folders().root() / "bin";
  const auto opener = folder / "xdg-open";
  desktop.folders().write(opener, "#!/bin/sh\necho \"$1\" >>\"" + opened().string() + "\"\n");
  std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
  return {{"PATH", folder.string() + ":" + desktop.environment().at("PATH")}};
}

std::string Shell::waitForOpened() {
  desktop.observer().waitUntil("something is opened",
                               [this] { return Folders::read(opened()).ends_with('\n'); });
  return Folders::read(opened());
}

}  // namespace pellar::e2e
