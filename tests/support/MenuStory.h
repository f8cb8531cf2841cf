#pragma once

#include <filesystem>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "core/StateStore.h"
#include "tests/support/StripStory.h"

namespace pellar {

// Stories of a user who works the strip's menus and answers its questions.
class MenuStory : public StripStory {
 protected:
  using Rows = std::vector<std::string>;
  using Tags = NameMap<std::string>;  // colours by their tag keys

  void TearDown() override {
    EXPECT_EQ(mac.menus().awaited(), 0U) << "a menu that the story waited for never came";
    EXPECT_EQ(mac.alerts().awaited(), 0U) << "a question that the story waited for never came";
  }

  // What the user reads in a tab's menu, or in a submenu of it.
  Rows tabMenu(const std::string& tab, const std::string& submenu = {}) {
    Rows rows;
    mac.menus().next([&](SimOpenMenu& menu) { rows = submenu.empty() ? menu.rows() : menu.rows({submenu}); });
    strip().rightClickTab(tab);
    return rows;
  }
  Rows toolMenu(const std::string& tool, const std::string& submenu = {}) {
    Rows rows;
    mac.menus().next([&](SimOpenMenu& menu) { rows = submenu.empty() ? menu.rows() : menu.rows({submenu}); });
    strip().clickTool(tool);
    return rows;
  }
  void choose(const std::string& tab, std::initializer_list<std::string> titles) {
    mac.menus().nextChoose(titles);
    strip().rightClickTab(tab);
  }
  void chooseInTool(const std::string& tool, std::initializer_list<std::string> titles) {
    mac.menus().nextChoose(titles);
    strip().clickTool(tool);
  }
  // Something happens while the menu is open, and only then is the item chosen.
  void chooseAfter(const std::string& tab, const std::function<void()>& happening,
                   std::initializer_list<std::string> titles) {
    mac.menus().next([&](SimOpenMenu& menu) {
      happening();
      mac.settle();
      menu.choose(titles);
    });
    strip().rightClickTab(tab);
  }

  // What a program started now would read.
  [[nodiscard]] AppState saved() { return StateStore(pellar.store().url()).state(); }
};

// The same in Word, with documents in the user's home folder.
class WordStory : public MenuStory {
 protected:
  WordStory() { std::filesystem::create_directories(mac.home() / "Documents"); }

  [[nodiscard]] std::string pathOf(const std::string& name) { return mac.home() / "Documents" / name; }
  [[nodiscard]] static bool exists(const std::string& path) { return std::filesystem::exists(path); }
  // What is saved when this document alone is red.
  [[nodiscard]] Tags redOf(const std::string& name) { return {{pathOf(name), "red"}}; }
  [[nodiscard]] SimDocumentPointer openInWord(const std::string& name) {
    return inWideWindow(mac.office().openInWindow(word, {.path = pathOf(name)}));
  }
  // A new document that was never saved.
  [[nodiscard]] SimDocumentPointer newInWord(const std::string& name) {
    return inWideWindow(mac.office().openInWindow(word, {.name = name}));
  }
  void openThree() {
    for (const auto* name : {"Plan.docx", "Report.docx", "Notes.docx"}) static_cast<void>(openInWord(name));
  }
  // Another application is in front for a moment, so that the windows get new records.
  void lookAtTheEditor() {
    mac.activate(editor);
    mac.settle();
    mac.activate(word);
    mac.settle();
  }

  SimApplication word = launchWord();

 private:
  // Wide enough for every tool.
  static SimDocumentPointer inWideWindow(SimDocumentPointer document) {
    document->window->setFrame({100, 200, 1300, 600});
    return document;
  }
};

}  // namespace pellar
