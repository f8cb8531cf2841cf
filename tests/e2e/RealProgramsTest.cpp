// The strip on programs that people use.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/e2e/DesktopTest.h"

namespace pellar::e2e {

namespace {

class RealPrograms : public EveryWindowManager {
 protected:
  std::string document(const std::string& name) {
    const auto file = desktop.folders().home() / name;
    desktop.folders().write(file, "Some text in " + name + ".\n");
    return file.string();
  }
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(RealPrograms);

TEST_P(RealPrograms, AGtkEditorWithThreeDocumentsHasThreeTabs) {
  const auto mousepad = desktop.start({"mousepad", "--disable-server", "--opening-mode=window",
                                       document("report.txt"), document("plan.txt"), document("budget.txt")},
                                      "mousepad");
  std::vector<Window> all;
  for (const char* name : {"report.txt", "plan.txt", "budget.txt"})
    all.push_back(desktop.waitForWindow(name));
  startPellar();
  strip.waitUntilTabs(3);
  EXPECT_NE(std::ranges::find(all, waitUntilSettled()), all.end());
  const auto behind = strip.windowsBehindTabs(all);
  EXPECT_TRUE(std::is_permutation(behind.begin(), behind.end(), all.begin(), all.end()));
  desktop.move(behind.back(), 150, 250);
  strip.waitUntilOver(behind.back());
}

TEST_P(RealPrograms, AQtEditorHasATab) {
  const auto featherpad = desktop.start({"featherpad", "--standalone", document("letter.txt")}, "featherpad");
  const auto letter = desktop.waitForWindow("letter.txt");
  startPellar();
  strip.waitUntilOver(letter);
  strip.waitUntilTabs(1);
}

TEST_P(RealPrograms, TheStripGoesFromTheEditorToTheTerminalAndBack) {
  const auto mousepad = desktop.start({"mousepad", "--disable-server", document("report.txt")}, "mousepad");
  const auto report = desktop.waitForWindow("report.txt");
  const auto xterm =
      desktop.start({"xterm", "-geometry", "80x24+500+300", "-T", "Shell", "-e", "cat"}, "xterm");
  const auto shell = desktop.waitForWindow("Shell");
  startPellar();
  strip.waitUntilOver(shell);
  desktop.activate(report);
  strip.waitUntilOver(report);
  xterm->end();
  strip.waitUntilOver(report);
  mousepad->end();
  strip.waitUntilHidden();
}

TEST_P(RealPrograms, AMenuOpensAboveTheStrip) {
  const auto mousepad = desktop.start({"mousepad", "--disable-server", document("report.txt")}, "mousepad");
  const auto report = desktop.waitForWindow("report.txt");
  desktop.move(report, 200, 200);
  startPellar();
  strip.waitUntilOver(report);
  const auto before = desktop.observer().topLevels().size();
  const auto window = *desktop.observer().box(report.id);
  desktop.observer().click(window.x + 20, window.y + 12);
  desktop.observer().waitUntil("the menu is open above everything", [&] {
    const auto all = desktop.observer().topLevels();
    return all.size() > before && all.back() != strip.window() && desktop.observer().isViewable(all.back());
  });
  strip.waitUntilOver(report);
}

}  // namespace

}  // namespace pellar::e2e
