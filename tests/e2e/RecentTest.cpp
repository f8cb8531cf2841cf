// The list of recent files under the strip's search field.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/e2e/DesktopTest.h"
#include "tests/e2e/Keys.h"
#include "tests/e2e/RecentPanel.h"

namespace pellar::e2e {

namespace {

// A GTK editor with one document in front, and some more that were used with it before.
class Recent : public EveryWindowManager {
 protected:
  Recent() : recent(desktop, strip) {
    const auto& folders = desktop.folders();
    folders.write(folders.dataHome() / "applications" / "one-window-editor.desktop",
                  "[Desktop Entry]\nType=Application\nName=One window editor\n"
                  "Exec=mousepad --disable-server --opening-mode=window %f\nMimeType=text/plain;\n");
    folders.write(folders.config() / "mimeapps.list",
                  "[Default Applications]\ntext/plain=one-window-editor.desktop\n");
  }

  std::string document(const std::string& name) {
    const auto file = desktop.folders().home() / "Documents" / name;
    desktop.folders().write(file, "Some text in " + name + ".\n");
    return file.string();
  }
  // Documents that the editor was used for, the newest first.
  void remember(const std::vector<std::string>& names) {
    std::vector<std::filesystem::path> files;
    for (const auto& name : names) files.emplace_back(document(name));
    desktop.folders().remember(files, "org.xfce.mousepad");
  }
  // The editor shows a letter in a window wide enough for the search field.
  Window startWithLetter() {
    // Apart from the others, since it may be listed as well.
    const auto file = desktop.folders().home() / "letter.txt";
    desktop.folders().write(file, "Dear Ann,\n");
    mousepad = desktop.start({"mousepad", "--disable-server", file.string()}, "mousepad");
    const auto letter = desktop.waitForWindow("letter.txt");
    desktop.resize(letter, 1200, 500);
    desktop.move(letter, 100, 150);
    startPellar();
    strip.waitUntilOver(letter);
    strip.waitUntilTabs(1);
    return letter;
  }
  void strike(std::uint32_t key) { desktop.observer().strike(key); }
  void type(const std::string& text) { desktop.observer().type(text); }
  // The window of a document that the editor has just opened, under a strip with that many tabs.
  void expectOpened(const std::string& name, std::size_t tabs) {
    Window opened;
    desktop.observer().waitUntil("a window shows " + name, [&] {
      opened.id = desktop.observer().clientTitled(name).value_or(XCB_NONE);
      return opened.id != XCB_NONE && desktop.isActive(opened);
    });
    strip.waitUntilTabs(tabs);
    strip.waitUntilOver(opened);
  }

  RecentPanel recent;
  std::unique_ptr<Process> mousepad;
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(Recent);

TEST_P(Recent, AFileTypedForOpensInItsProgramAndGetsATab) {
  remember({"report.txt", "plan.txt", "budget.txt"});
  const auto letter = startWithLetter();
  recent.openByClickOnTheField();
  type("documents");
  recent.waitUntilRows(3);
  EXPECT_TRUE(desktop.isActive(letter)) << "the application stays in front";
  for (std::size_t i = 0; i < std::string("documents").size(); ++i) strike(backspaceKey);
  type("bud");
  recent.waitUntilRows(1);
  EXPECT_TRUE(desktop.isActive(letter));
  strike(returnKey);
  recent.waitUntilClosed();
  expectOpened("budget.txt", 2);
}

TEST_P(Recent, ArrowsChooseAnotherFile) {
  remember({"report.txt", "plan.txt", "budget.txt"});
  const auto letter = startWithLetter();
  recent.openByClickOnTheField();
  type("documents");
  recent.waitUntilRows(3);
  for (int i = 0; i < 4; ++i) strike(downKey);
  recent.waitUntilSelected(2);
  strike(upKey);
  recent.waitUntilSelected(1);
  EXPECT_TRUE(desktop.isActive(letter));
  strike(returnKey);
  recent.waitUntilClosed();
  expectOpened("plan.txt", 2);
}

TEST_P(Recent, ADoubleClickOpensAFileAndOneClickDoesNot) {
  remember({"report.txt", "plan.txt"});
  startWithLetter();
  recent.openByClickOnTheField();
  type("documents/x");
  recent.waitUntilRows(0);
  strike(backspaceKey);
  recent.waitUntilRows(2);
  recent.clickRow(0);
  recent.waitUntilSelected(0);
  ASSERT_TRUE(recent.isOpen());
  recent.doubleClickRow(1);
  recent.waitUntilClosed();
  expectOpened("plan.txt", 2);
}

TEST_P(Recent, TheWheelBringsLaterFilesIntoSight) {
  std::vector<std::string> names;
  for (char letter = 'a'; letter <= 't'; ++letter) names.push_back(std::string(1, letter) + "-file.txt");
  remember(names);
  startWithLetter();
  recent.openByClickOnTheField();
  recent.waitUntilRows(8);
  recent.clickRow(0);
  recent.waitUntilSelected(0);
  recent.turnWheel(40);
  recent.waitUntilSelected(std::nullopt);
  recent.clickLastRowInSight();
  recent.waitUntilSelected(7);
  strike(returnKey);
  recent.waitUntilClosed();
  expectOpened("t-file.txt", 2);
}

TEST_P(Recent, AFileThatIsGoneIsNotListed) {
  remember({"report.txt", "plan.txt"});
  std::filesystem::remove(desktop.folders().home() / "Documents" / "report.txt");
  startWithLetter();
  recent.openByClickOnTheField();
  type("documents");
  recent.waitUntilRows(1);
  type("/report");
  recent.waitUntilRows(0);
}

TEST_P(Recent, TheMagnifierUnfoldsTheField) {
  remember({"report.txt"});
  mousepad = desktop.start({"mousepad", "--disable-server", "--opening-mode=window", document("letter.txt"),
                            document("notes.txt"), document("song.txt")},
                           "mousepad");
  Window front;
  for (const char* name : {"letter.txt", "notes.txt", "song.txt"}) front = desktop.waitForWindow(name);
  desktop.resize(front, 860, 500);
  desktop.move(front, 100, 150);
  startPellar();
  strip.waitUntilOver(front);
  strip.waitUntilTabs(3);
  ASSERT_FALSE(recent.field().has_value()) << "no room for the field";
  recent.openByClickOnTheMagnifier();
  type("repo");
  recent.waitUntilRows(1);
  strike(returnKey);
  recent.waitUntilClosed();
  expectOpened("report.txt", 4);
}

// What happens to the keyboard, seen by a plain program that counts its keys.
class RecentKeys : public EveryWindowManager {
 protected:
  RecentKeys() : recent(desktop, strip) {}
  Window startWithPlainWindow() {
    const auto window = editor().open("Report", {60, 150, 1200, 500});
    startPellar();
    strip.waitUntilOver(window);
    strip.waitUntilTabs(1);
    return window;
  }
  void strike(std::uint32_t key) { desktop.observer().strike(key); }

  RecentPanel recent;
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(RecentKeys);

TEST_P(RecentKeys, EscapeClosesAndKeysGoToTheApplicationAgain) {
  const auto window = startWithPlainWindow();
  recent.openByClickOnTheField();
  strike('x');
  strike(downKey);
  strike(escapeKey);
  recent.waitUntilClosed();
  EXPECT_EQ(desktop.keysReceived(window, 'x'), 0);
  EXPECT_TRUE(desktop.isActive(window));
  strike('x');
  desktop.waitUntilReceived(window, 'x', 1);
}

TEST_P(RecentKeys, AClickOutsideClosesAndKeysGoToTheApplicationAgain) {
  const auto window = startWithPlainWindow();
  recent.openByClickOnTheField();
  strike('x');
  const auto frame = desktop.frame(window);
  desktop.observer().click(frame.x + 100, frame.y + 200);
  recent.waitUntilClosed();
  EXPECT_EQ(desktop.keysReceived(window, 'x'), 0);
  strike('x');
  desktop.waitUntilReceived(window, 'x', 1);
}

TEST_P(RecentKeys, AskedToEndWhileItIsOpenTheProgramEndsInOrder) {
  startWithPlainWindow();
  recent.openByClickOnTheField();
  stopPellar();
}

TEST_P(RecentKeys, AClickOnTheStripClosesToo) {
  const auto window = startWithPlainWindow();
  recent.openByClickOnTheField();
  strip.clickTab(0);
  recent.waitUntilClosed();
  strike('x');
  desktop.waitUntilReceived(window, 'x', 1);
}

TEST_P(RecentKeys, AClickOnATabBesideTheUnfoldedFieldGoesToThatTab) {
  std::vector<Window> all;
  for (const char* title : {"One", "Two", "Three", "Four", "Five"})
    all.push_back(editor().open(title, {60, 150, 1200, 500}));
  startPellar();
  strip.waitUntilOver(all.back());
  strip.waitUntilTabs(all.size());
  recent.openByClickOnTheMagnifier();
  strip.clickTab(3);
  recent.waitUntilClosed();
  strip.waitUntilOver(all[3]);
  strike('x');
  desktop.waitUntilReceived(all[3], 'x', 1);
  EXPECT_EQ(desktop.keysReceived(all[2], 'x'), 0);
}

}  // namespace

}  // namespace pellar::e2e
