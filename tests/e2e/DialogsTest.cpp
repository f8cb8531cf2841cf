// The strip while a dialog of its window is open.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/e2e/DesktopTest.h"
#include "tests/e2e/Keys.h"

namespace pellar::e2e {

namespace {

class Dialogs : public EveryWindowManager {
 protected:
  // The strip is over a window although another one is the active one.
  void waitUntilStripOver(Window window) {
    desktop.observer().waitUntil("the strip is over the window", [&] { return strip.isOver(window); });
  }

  [[nodiscard]] std::size_t height(xcb_window_t window) {
    return desktop.observer().heightInStack(window).value();
  }
  // metacity raises what it does not manage above what it does. There the strip leaves out what it may not
  // cover.
  void waitUntilStripIsDirectlyAbove(Window window) {
    desktop.observer().waitUntil("the strip stands directly above the window", [&] {
      const auto shown = strip.window();
      return shown && strip.isOver(window) &&
             (GetParam() == WindowManager::metacity || height(*shown) == height(window.id) + 1);
    });
  }
  // A window of one colour is seen whole.
  void waitUntilSeen(Window window) {
    const auto box = *desktop.observer().box(window.id);
    desktop.observer().waitUntil("the window is seen whole", [&] {
      const auto screen = *desktop.observer().picture(desktop.observer().root());
      const int x = box.x + box.width / 2;
      const auto colour = screen.at(x, box.y + box.height - 2);
      for (int y = box.y + 1; y < box.y + box.height - 1; ++y) {
        if (screen.at(x, y) != colour) return false;
      }
      return true;
    });
  }

  // Three editors of one program, each with a document, the third in front.
  std::vector<Window> openThreeEditors() {
    std::vector<std::string> command{"mousepad", "--disable-server", "--opening-mode=window"};
    for (const char* name : {"report.txt", "plan.txt", "budget.txt"}) {
      const auto file = desktop.folders().home() / name;
      desktop.folders().write(file, "Some text.\n");
      command.push_back(file.string());
    }
    editors_ = desktop.start(command, "mousepad");
    std::vector<Window> all;
    int offset = 0;
    for (const char* name : {"report.txt", "plan.txt", "budget.txt"}) {
      all.push_back(desktop.waitForWindow(name));
      desktop.move(all.back(), 120 + offset, 160 + offset);
      offset += 60;
    }
    desktop.activate(all.back());
    return all;
  }

  std::unique_ptr<Process> editors_;
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(Dialogs);

TEST_P(Dialogs, TheStripStaysOnTheThirdEditorWhileItOpensAFile) {
  const auto all = openThreeEditors();
  startPellar();
  strip.waitUntilOver(all[2]);
  strip.waitUntilTabs(3);
  const auto active = strip.activeTab();

  desktop.observer().key(controlKey, true);
  desktop.observer().type("o");
  desktop.observer().key(controlKey, false);
  const auto dialog = desktop.waitForWindow("Open File");
  waitUntilIdle();
  EXPECT_TRUE(strip.isOver(all[2]));

  // Out of the strip's way, so that its tabs are seen. Some open it as high as the screen.
  desktop.resize(dialog, 700, 450);
  desktop.move(dialog, 400, desktop.frame(all[2]).y + 120);
  waitUntilIdle();
  EXPECT_TRUE(strip.isOver(all[2]));
  EXPECT_EQ(strip.activeTab(), active);

  // The third is asked, which does not go while its dialog waits for an answer; nor does another.
  strip.clickWindowButton(WindowButton::close);
  waitUntilIdle();
  desktop.close(dialog);
  strip.waitUntilOver(all[2]);
  strip.waitUntilTabs(3);
}

TEST_P(Dialogs, TheStripsCloseButtonAsksTheWindowUnderTheDialog) {
  const auto report = editor().open("Report", {100, 200, 700, 400});
  const auto plan = editor().open("Plan", {200, 260, 700, 400});
  const auto budget = editor().open("Budget", {300, 320, 700, 400});
  startPellar();
  strip.waitUntilTabs(3);
  const auto question = editor().openWithoutWaiting("Save changes?", {400, 500, 300, 160});
  editor().tell(question, "dialog " + std::to_string(budget.id));
  desktop.activate(question);
  waitUntilIdle();
  waitUntilStripOver(budget);
  strip.clickWindowButton(WindowButton::close);
  desktop.observer().waitUntil("the third window is closed",
                               [&] { return !desktop.observer().box(budget.id); });
  EXPECT_TRUE(desktop.observer().box(report.id));
  EXPECT_TRUE(desktop.observer().box(plan.id));
}

TEST_P(Dialogs, TheStripStaysUnderADialogOfADialog) {
  const auto report = editor().open("Report", {100, 200, 700, 400});
  const auto plan = editor().open("Plan", {300, 260, 700, 400});
  startPellar();
  strip.waitUntilOver(plan);
  const auto options = editor().openWithoutWaiting("Options", {400, 400, 300, 160});
  editor().tell(options, "dialog " + std::to_string(report.id));
  desktop.activate(options);
  waitUntilStripOver(report);
  const auto sure = editor().openWithoutWaiting("Sure?", {450, 450, 200, 100});
  editor().tell(sure, "dialog " + std::to_string(options.id));
  desktop.activate(sure);
  waitUntilIdle();
  EXPECT_TRUE(strip.isOver(report));
  strip.waitUntilTabs(2);
}

TEST_P(Dialogs, NothingOfADialogIsCovered) {
  const auto report = editor().open("Report", {100, 300, 700, 400});
  const auto plan = editor().open("Plan", {200, 360, 700, 400});
  startPellar();
  strip.waitUntilOver(plan);
  const auto question = editor().openWithoutWaiting("Save changes?", {300, 300, 400, 200});
  editor().tell(question, "dialog " + std::to_string(plan.id));
  desktop.activate(question);
  // Its text lies over the strip.
  const auto tabs = *strip.box();
  desktop.move(question, tabs.x + 60, tabs.y - 60);
  waitUntilIdle();
  EXPECT_TRUE(strip.isOver(plan));
  waitUntilStripIsDirectlyAbove(plan);
  waitUntilSeen(question);

  // Going away and coming back changes nothing, nor does what the window manager does to either.
  desktop.activate(report);
  strip.waitUntilOver(report);
  waitUntilStripIsDirectlyAbove(report);
  for (int time = 0; time < 5; ++time) {
    desktop.activate(plan);
    desktop.activate(question);
    waitUntilStripIsDirectlyAbove(plan);
    waitUntilSeen(question);
    desktop.activate(report);
    waitUntilStripIsDirectlyAbove(report);
  }
  waitUntilIdle();
  waitUntilStripIsDirectlyAbove(report);
}

TEST_P(Dialogs, TheStripStaysBelowAWindowThatIsKeptAbove) {
  Application other(desktop, "notes");
  const auto note = other.open("Note", {200, 160, 300, 300});
  desktop.setState(note, "_NET_WM_STATE_ABOVE", true);
  const auto report = editor().open("Report", {100, 300, 700, 400});
  startPellar();
  strip.waitUntilOver(report);
  waitUntilStripIsDirectlyAbove(report);
  waitUntilSeen(note);
}

}  // namespace

}  // namespace pellar::e2e
