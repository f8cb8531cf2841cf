// What the strip does with the documents of programs that people use.

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <optional>

#include "tests/e2e/DesktopTest.h"
#include "tests/e2e/Keys.h"
#include "tests/e2e/PopUpMenu.h"
#include "tests/e2e/Stopping.h"

namespace pellar::e2e {

namespace {

using namespace std::chrono_literals;

// The items of a document's menu that can be chosen.
constexpr int containingFolderItem = 4;
constexpr int copyPathItem = 5;

class Documents : public EveryWindowManager {
 protected:
  Documents() { desktop.folders().openTextFilesWith("mousepad --disable-server --opening-mode=window %f"); }

  std::string document(const std::string& name) {
    const auto file = desktop.folders().home() / "Documents" / name;
    if (!std::filesystem::exists(file)) desktop.folders().write(file, "Some text.\n");
    return file.string();
  }
  std::string contents(const std::string& name) { return Folders::read(document(name)); }
  // A GTK editor with these documents, each in a window of its own with room for all tools, the last in
  // front.
  std::vector<Window> openInEditor(const std::vector<std::string>& names) {
    std::vector<std::string> command{"mousepad", "--disable-server", "--opening-mode=window"};
    for (const auto& name : names) command.push_back(document(name));
    mousepad = desktop.start(command, "mousepad");
    std::vector<Window> all;
    int offset = 0;
    for (const auto& name : names) {
      all.push_back(desktop.waitForWindow("/" + name));
      desktop.resize(all.back(), 1000, 350);
      desktop.move(all.back(), 60 + offset, 160 + offset);
      offset += 50;
    }
    return all;
  }
  void showStrip(Window front, std::size_t tabs) {
    startPellar();
    menu.emplace(desktop, *pellar);
    strip.waitUntilOver(front);
    strip.waitUntilTabs(tabs);
  }
  // The same, and waits until each document is known by its path.
  void showStripOverDocuments(const std::vector<std::string>& names, Window front) {
    showStrip(front, names.size());
    for (const auto& name : names) waitUntilStateHas("\"" + document(name) + "\"");
  }
  void openTabMenu(std::size_t tab) {
    strip.clickTab(tab, 3);
    menu->waitUntilOpen();
  }
  void openGroups() {
    strip.clickTool(StripTool::groups);
    menu->waitUntilOpen();
  }
  // The question that Pellar asks, when it has the keyboard.
  Window waitForPrompt() {
    Window prompt;
    desktop.observer().waitUntil("the question is asked and has the keyboard", [&] {
      prompt.id = desktop.observer().activeWindow();
      return desktop.observer().numbers(prompt.id, "_NET_WM_PID") ==
             std::vector{static_cast<std::uint32_t>(pellar->pid())};
    });
    return prompt;
  }
  void waitUntilClosed(Window window) {
    desktop.observer().waitUntil("the window is closed",
                                 [&] { return !desktop.observer().isViewable(window.id); });
  }
  // At the beginning of a document. What is typed before the editor listens is lost, so that the first letter
  // may come to stand there more than once.
  void typeInto(Window window, const std::string& text) {
    desktop.activate(window);
    desktop.observer().waitUntil("the keyboard reaches the editor", [&] {
      desktop.observer().type(text.substr(0, 1));
      return titleOf(window).starts_with('*');
    });
    desktop.observer().type(text.substr(1));
  }
  std::string titleOf(Window window) { return desktop.observer().text(window.id, "_NET_WM_NAME"); }

  std::unique_ptr<Process> mousepad;
  std::optional<PopUpMenu> menu;
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(Documents);

TEST_P(Documents, AreKnownByTheirPathsAndRemembered) {
  const auto all = openInEditor({"report.txt", "plan.txt"});
  const auto featherpad = desktop.start({"featherpad", "--standalone", document("letter.txt")}, "featherpad");
  const auto letter = desktop.waitForWindow("letter.txt");
  showStrip(letter, 1);
  waitUntilStateHas("\"" + document("letter.txt") + "\": \"featherpad\"");
  desktop.activate(all[0]);
  strip.waitUntilOver(all[0]);
  for (const char* name : {"report.txt", "plan.txt"})
    waitUntilStateHas("\"" + document(name) + "\": \"org.xfce.mousepad\"");
}

TEST_P(Documents, ATerminalShowsNone) {
  desktop.folders().write(document("plan.txt"), "Some text.\n");
  const auto xterm = desktop.start(
      {"xterm", "-geometry", "120x24+100+200", "-T", "plan.txt", "-e", "cat", document("plan.txt"), "-"},
      "xterm");
  const auto shell = desktop.waitForWindow("plan.txt");
  const auto all = openInEditor({"report.txt"});
  desktop.activate(shell);
  showStrip(shell, 1);
  waitUntilIdle();
  desktop.activate(all[0]);
  strip.waitUntilOver(all[0]);
  waitUntilStateHas("\"" + document("report.txt") + "\"");
  EXPECT_FALSE(stateHas("plan.txt"));
}

TEST_P(Documents, APathIsCopied) {
  const auto all = openInEditor({"report.txt", "my plan.txt"});
  showStripOverDocuments({"report.txt", "my plan.txt"}, all[1]);
  openTabMenu(*strip.activeTab());
  menu->choose(copyPathItem);
  menu->waitUntilClosed();
  desktop.observer().waitUntil("the clipboard has the path",
                               [&] { return desktop.observer().clipboard() == document("my plan.txt"); });
  EXPECT_TRUE(desktop.isActive(all[1]));
}

TEST_P(Documents, TheContainingFolderIsOpenedAndARenameIsNotOffered) {
  const auto opened = desktop.folders().root() / "opened";
  desktop.folders().openFoldersWith("cp -r %f " + opened.string());
  const auto all = openInEditor({"report.txt"});
  showStripOverDocuments({"report.txt"}, all[0]);
  openTabMenu(0);
  menu->choose(containingFolderItem);
  menu->waitUntilClosed();
  desktop.observer().waitUntil("the folder was opened",
                               [&] { return std::filesystem::exists(opened / "report.txt"); });
}

TEST_P(Documents, AreSavedAsAGroupClosedAndOpenedAgain) {
  auto all = openInEditor({"report.txt", "plan.txt", "budget.txt"});
  showStripOverDocuments({"report.txt", "plan.txt", "budget.txt"}, all[2]);
  const auto before = *strip.box();
  openGroups();
  menu->choose(1);
  const auto prompt = waitForPrompt();
  EXPECT_EQ(strip.box(), before) << "the strip stays as it was";
  EXPECT_EQ(strip.tabs().size(), 3U);
  desktop.observer().type("Monday");
  desktop.observer().strike(returnKey);
  waitUntilClosed(prompt);
  desktop.waitUntilActive(all[2]);
  strip.waitUntilOver(all[2]);
  waitUntilStateHas("\"Monday\"");

  // Another program has the strip while none of the documents is open.
  const auto other = editor().open("Other", {200, 300, 1000, 300});
  strip.waitUntilOver(other);
  desktop.activate(all[2]);
  strip.waitUntilOver(all[2]);
  strip.clickTool(StripTool::closeAll);
  for (const Window window : all) waitUntilClosed(window);
  mousepad->end();
  desktop.activate(other);
  strip.waitUntilOver(other);

  stopPellar();
  showStrip(other, 1);
  openGroups();
  menu->openSubmenu(2);
  desktop.observer().strike(returnKey);
  all.clear();
  for (const char* name : {"/report.txt", "/plan.txt", "/budget.txt"})
    all.push_back(desktop.waitForWindow(name));
  strip.waitUntilTabs(3);
  // Each file's program starts on its own, and comes to the front when it likes: which is there at last is
  // between them.
  EXPECT_NE(std::ranges::find(all, waitUntilSettled()), all.end());
  openGroups();
  menu->openSubmenu(2);
  menu->choose(1);
  desktop.observer().waitUntil("the group is deleted", [this] { return !stateHas("\"Monday\""); });
  for (const Window window : all) desktop.close(window);
}

TEST_P(Documents, AQuestionIsCancelledByEscapeAndByItsButton) {
  const auto all = openInEditor({"report.txt"});
  showStripOverDocuments({"report.txt"}, all[0]);
  openGroups();
  menu->choose(1);
  auto prompt = waitForPrompt();
  desktop.observer().type("x");
  desktop.observer().strike(escapeKey);
  waitUntilClosed(prompt);
  strip.waitUntilOver(all[0]);
  openGroups();
  menu->choose(1);
  prompt = waitForPrompt();
  // By mouse: the second button is at the right end, below the field.
  const auto box = *desktop.observer().box(prompt.id);
  desktop.observer().click(box.x + box.width - 40, box.y + box.height - 25);
  waitUntilClosed(prompt);
  desktop.waitUntilActive(all[0]);
  // An empty answer is none.
  openGroups();
  menu->choose(1);
  prompt = waitForPrompt();
  desktop.observer().type("   ");
  desktop.observer().strike(returnKey);
  waitUntilClosed(prompt);
  desktop.waitUntilActive(all[0]);
  strip.waitUntilOver(all[0]);
  EXPECT_TRUE(stateHas("\"groups\": {}"));
}

TEST_P(Documents, AQuestionIsNotBehindTheStrip) {
  const auto all = openInEditor({"report.txt"});
  for (const int y : {120, 260, 340, 400, 480}) {
    desktop.move(all[0], 200, y);
    if (!pellar) showStripOverDocuments({"report.txt"}, all[0]);
    strip.waitUntilOver(all[0]);
    openGroups();
    menu->choose(1);
    const auto prompt = waitForPrompt();
    const auto question = desktop.frame(prompt);
    const auto place = *strip.box();
    EXPECT_TRUE(question.y + question.height <= place.y || question.y >= place.y + place.height)
        << describe(question) << " and the strip at " << describe(place);
    desktop.observer().strike(escapeKey);
    waitUntilClosed(prompt);
    desktop.waitUntilActive(all[0]);
  }
}

TEST_P(Documents, PellarEndsInOrderWithAQuestionOpen) {
  const auto all = openInEditor({"report.txt"});
  showStripOverDocuments({"report.txt"}, all[0]);
  openGroups();
  menu->choose(1);
  waitForPrompt();
  stopPellar();
}

// With a session bus, on which programs can be asked for their menus.
class FileMenus : public Documents {
 protected:
  FileMenus() { desktop.openSessionBus(); }
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(FileMenus);

TEST_P(FileMenus, SaveAllWritesTwoChangedDocuments) {
  const auto all = openInEditor({"report.txt", "plan.txt", "budget.txt"});
  typeInto(all[0], "one");
  typeInto(all[2], "three");
  showStripOverDocuments({"report.txt", "plan.txt", "budget.txt"}, all[2]);
  strip.clickTool(StripTool::saveAll);
  desktop.observer().waitUntil("both are written", [&] {
    return contents("report.txt").ends_with("oneSome text.\n") &&
           contents("budget.txt").ends_with("threeSome text.\n");
  });
  desktop.observer().waitUntil("the log says how many",
                               [this] { return logLines("save all: 2 of 3 windows") == 1; });
  EXPECT_EQ(contents("plan.txt"), "Some text.\n");
  EXPECT_TRUE(desktop.isActive(all[2]));
  desktop.observer().waitUntil("the editor has nothing left to save", [&] {
    return std::ranges::none_of(all, [&](Window window) { return titleOf(window).starts_with('*'); });
  });
}

TEST_P(FileMenus, AQtEditorSavesToo) {
  const auto featherpad = desktop.start({"featherpad", "--standalone", document("letter.txt")}, "featherpad");
  const auto letter = desktop.waitForWindow("letter.txt");
  desktop.resize(letter, 1000, 400);
  typeInto(letter, "x");
  showStripOverDocuments({"letter.txt"}, letter);
  strip.clickTool(StripTool::saveAll);
  desktop.observer().waitUntil("it is written",
                               [&] { return contents("letter.txt").ends_with("xSome text.\n"); });
  desktop.observer().waitUntil("the log says so",
                               [this] { return logLines("save all: 1 of 1 windows") == 1; });
}

TEST_P(FileMenus, PlusMakesANewDocument) {
  const auto all = openInEditor({"report.txt"});
  showStripOverDocuments({"report.txt"}, all[0]);
  strip.clickTool(StripTool::newDocument);
  desktop.observer().waitUntil("there is a document without a name",
                               [&] { return desktop.observer().clientTitled("Untitled").has_value(); });
}

TEST_P(FileMenus, AStoppedProgramDoesNotHoldTheStripUp) {
  const auto all = openInEditor({"report.txt", "plan.txt", "budget.txt"});
  const auto other = editor().open("Other", {200, 300, 1000, 300});
  showStrip(other, 1);
  desktop.activate(all[0]);
  strip.waitUntilOver(all[0]);
  strip.waitUntilTabs(3);
  stop(*mousepad, desktop.observer());
  waitUntilIdle();
  strip.clickTool(StripTool::saveAll);
  desktop.activate(other);
  strip.waitUntilOver(other);
  EXPECT_EQ(logLines("save all"), 0) << "the strip goes on while the program is waited for";
  const auto start = std::chrono::steady_clock::now();
  desktop.observer().waitUntil("it has given up",
                               [this] { return logLines("save all: 0 of 3 windows") == 1; });
  EXPECT_LT(std::chrono::steady_clock::now() - start, 4s);
  mousepad->signal(SIGCONT);
}

TEST_P(FileMenus, PellarEndsInOrderWhileAProgramIsWaitedFor) {
  const auto all = openInEditor({"report.txt"});
  showStrip(all[0], 1);
  waitUntilStateHas("report.txt");
  stop(*mousepad, desktop.observer());
  strip.clickTool(StripTool::saveAll);
  stopPellar();
  mousepad->signal(SIGCONT);
}

TEST_P(FileMenus, AProgramWithoutMenusIsLeftAlone) {
  const auto xterm =
      desktop.start({"xterm", "-geometry", "140x24+100+200", "-T", "Shell", "-e", "cat"}, "xterm");
  const auto shell = desktop.waitForWindow("Shell");
  showStrip(shell, 1);
  strip.clickTool(StripTool::newDocument);
  strip.clickTool(StripTool::saveAll);
  desktop.observer().waitUntil("it has nothing to save",
                               [this] { return logLines("save all: 0 of 1") == 1; });
  EXPECT_EQ(logLines(), 2) << Folders::read(desktop.folders().logFile());
  strip.waitUntilOver(shell);
}

class IdleMenus : public DesktopTest {};

TEST_F(IdleMenus, NothingRunsAfterMenusAndQuestionsWereUsed) {
  desktop.openSessionBus();
  const auto file = desktop.folders().home() / "report.txt";
  desktop.folders().write(file, "Some text.\n");
  const auto mousepad = desktop.start({"mousepad", "--disable-server", file.string()}, "mousepad");
  const auto report = desktop.waitForWindow("report.txt");
  desktop.resize(report, 1000, 400);
  desktop.move(report, 100, 150);
  startPellar();
  PopUpMenu menu(desktop, *pellar);
  strip.waitUntilOver(report);
  strip.clickTool(StripTool::saveAll);
  desktop.observer().waitUntil("it was tried", [this] { return logLines("save all:") == 1; });
  strip.clickTab(0, 3);
  menu.waitUntilOpen();
  desktop.observer().strike(escapeKey);
  menu.waitUntilClosed();
  desktop.observer().movePointer(1400, 880);
  bool idle = false;
  for (int attempt = 0; attempt < 20 && !idle; ++attempt) {
    const auto before = pellar->voluntarySwitches();
    ASSERT_FALSE(pellar->waitForEnd(5s).has_value());
    idle = pellar->voluntarySwitches() == before;
  }
  EXPECT_TRUE(idle);
}

}  // namespace

}  // namespace pellar::e2e
