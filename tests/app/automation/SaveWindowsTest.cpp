#include "app/automation/FileMenu.h"
#include "platform/sim/faults/FaultyAccessibility.h"
#include "tests/app/automation/AutomationStory.h"

namespace pellar {
namespace {

class SaveWindows : public AutomationStory {
 protected:
  SaveWindows() {
    // Like a real application's, the menu acts on the main window.
    editor.setMenuBar(
        {{"Apple", {}}, {"File", {{"Save", [this] { saved.push_back(editor.mainWindow()->title()); }}}}});
  }
  // The record of a new window; with a file behind it unless said otherwise.
  std::shared_ptr<OfficeWindow> open(const std::string& title, bool withPath = true) {
    auto opened = editor.open(title);
    auto window = std::make_shared<OfficeWindow>(mac.accessibility(), opened.element(),
                                                 TrackedApp{"org.example.editor", "Editor", std::nullopt},
                                                 editor.pid());
    if (!withPath) return window;
    opened.setDocument("file:///d/" + title);
    window->path = "/d/" + title;
    return window;
  }
  void saveAll(const WindowList& windows, const std::shared_ptr<OfficeWindow>& front) {
    FileMenu::saveAll(mac.accessibility(), windows, front);
  }

  SimApplication editor = mac.launch({.bundleId = "org.example.editor", .name = "Editor"});
  std::vector<std::string> saved;
};

TEST_F(SaveWindows, SavesEachAndGivesTheFrontOneItsPlaceBack) {
  const auto a = open("a");
  const auto b = open("b");
  const auto c = open("c");
  saveAll({a, b, c}, b);
  EXPECT_EQ(saved, (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(editor.focusedWindow()->title(), "b");
  EXPECT_EQ(log.messages(), std::vector<std::string>{"save all: 3 of 3 windows"});
}

TEST_F(SaveWindows, EachIsMadeTheMainOneAlsoWhereTheUserKeepsTheKeysInAnother) {
  const auto a = open("a");
  const auto b = open("b");
  editor.quirks().mainIsNotKey = true;
  saveAll({a, b}, b);
  EXPECT_EQ(saved, (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(editor.focusedWindow()->title(), "b");
  EXPECT_EQ(editor.mainWindow()->title(), "b");
}

TEST_F(SaveWindows, WithoutAFrontOneTheLastStaysMain) {
  const auto a = open("a");
  open("b");
  saveAll({a}, nullptr);
  EXPECT_EQ(editor.focusedWindow()->title(), "a");
}

TEST_F(SaveWindows, AnEmptyListIsLoggedToo) {
  saveAll({}, nullptr);
  EXPECT_EQ(log.messages(), std::vector<std::string>{"save all: 0 of 0 windows"});
}

TEST_F(SaveWindows, MinimisedOnesAndThoseWithoutAFileAreCountedButNeverPressed) {
  const auto plain = open("plain");
  const auto untitled = open("untitled", false);
  const auto unread = open("unread");
  unread->path.reset();
  const auto minimised = open("minimised");
  minimised->minimized = true;
  mac.accessibility().forgetRoundTrips();
  saveAll({untitled, plain, unread, minimised}, untitled);
  EXPECT_EQ(saved, std::vector<std::string>{"plain"});
  EXPECT_EQ(log.messages(), std::vector<std::string>{"save all: 1 of 4 windows"});
  EXPECT_EQ(mac.accessibility().roundTrips().writes, 2) << "plain is made the main one, then the front one";
}

TEST_F(SaveWindows, ADisabledSaveIsNotCounted) {
  const auto a = open("a");
  const auto b = open("b");
  editor.menu({"File", "Save"}).onPress = [this] { editor.menu({"File", "Save"}).enabled = false; };
  saveAll({a, b}, a);
  EXPECT_EQ(log.messages(), std::vector<std::string>{"save all: 1 of 2 windows"});
}

TEST_F(SaveWindows, OfAnApplicationThatQuitsInTheMiddleAreNotCounted) {
  const auto a = open("a");
  const auto b = open("b");
  editor.menu({"File", "Save"}).onPress = [this] { mac.terminate(editor); };
  saveAll({a, b}, b);
  EXPECT_EQ(log.messages(), std::vector<std::string>{"save all: 1 of 2 windows"});
}

TEST_F(SaveWindows, OfAFrozenApplicationAreNotCounted) {
  const auto a = open("a");
  editor.freeze();
  saveAll({a}, a);
  EXPECT_TRUE(saved.empty());
  EXPECT_EQ(log.messages(), std::vector<std::string>{"save all: 0 of 1 windows"});
}

TEST_F(SaveWindows, AWindowThatShowsNoFileAnyMoreIsNotAskedToSave) {
  const auto a = open("a");
  const auto nameless = open("Editor");
  nameless->path = "/d/b";
  const auto renewed = open("c");
  // "New" in two windows: the title of one never said what it shows, and that of the other says it no more.
  editor.windowsFrontToBack()[1].setDocument(std::nullopt);
  editor.windowsFrontToBack()[0].setDocument(std::nullopt);
  renewed->title = "Untitled";
  saveAll({a, nameless, renewed}, a);
  EXPECT_EQ(saved, std::vector<std::string>{"a"}) << "the others would ask where to";
  EXPECT_EQ(log.messages(), std::vector<std::string>{"save all: 1 of 3 windows"});
}

TEST_F(SaveWindows, AWindowThatShowsAnotherFileThanItDidIsSavedToo) {
  const auto a = open("a");
  const auto b = open("b");
  // Saved under the same name in another folder; and another tab of an editor whose titles name no file.
  editor.windowsFrontToBack()[0].setDocument("file:///copies/b");
  editor.windowsFrontToBack()[1].setDocument("file:///d/other");
  saveAll({a, b}, a);
  EXPECT_EQ(saved, (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(log.messages(), std::vector<std::string>{"save all: 2 of 2 windows"});
  EXPECT_EQ(b->path, "/copies/b") << "what it showed by then is its file from then on";
}

TEST_F(SaveWindows, AWindowThatDoesNotSayAtOnceWhichFileItShowsIsSavedWhereItsTitleDoes) {
  const auto a = open("a");
  const auto b = open("b");
  editor.windowsFrontToBack()[0].setDocument(std::nullopt);
  saveAll({a, b}, a);
  EXPECT_EQ(saved, (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(b->path, "/d/b");
}

TEST_F(SaveWindows, AnApplicationThatAnswersLateHasSavedEachOnce) {
  editor.menu({"File", "Save"}).unansweredPress = true;
  const auto a = open("a");
  const auto b = open("b");
  saveAll({a, b}, a);
  EXPECT_EQ(saved, (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(log.messages(), std::vector<std::string>{"save all: 2 of 2 windows"});
}

TEST_F(SaveWindows, AWindowWithoutChangesIsNotAskedAndOneThatAsksAQuestionDoesNotHoldUpTheNext) {
  const auto unchanged = open("unchanged");
  const auto asking = open("asking");
  const auto slow = open("slow");
  auto& save = editor.menu({"File", "Save"});
  // The menu is the main window's: its item says whether that has changes.
  FaultyAccessibility menus(mac.accessibility());
  menus.beforeRead([&](const Element&, std::string_view attribute) {
    if (attribute == "AXEnabled") save.enabled = editor.mainWindow()->title() != "unchanged";
  });
  std::optional<SimWindow> question;
  save.onPress = [&] {
    const std::string title = editor.mainWindow()->title();
    saved.push_back(title);
    // It answers nobody while its question is open, or while it writes.
    save.unansweredPress = true;
    if (title == "asking") question = editor.open("Keep the format?", {0, 0, 400, 300}, "AXDialog");
  };
  FileMenu::saveAll(menus, {unchanged, asking, slow}, unchanged);
  EXPECT_EQ(saved, (std::vector<std::string>{"asking", "slow"}));
  EXPECT_TRUE(question.has_value());
  EXPECT_EQ(log.messages(), std::vector<std::string>{"save all: 2 of 3 windows"});
}

TEST_F(SaveWindows, AMenuThatWasLookedAtAfterTheLastChangeHoldsNoneBack) {
  editor.quirks().validatesOpenMenusOnly = true;
  editor.menu({"File", "Save"}).enabled = false;
  editor.openMenu("File");
  const auto a = open("a");
  editor.menu({"File", "Save"}).enabled = true;
  saveAll({a}, a);
  EXPECT_TRUE(saved.empty()) << "it says that there is nothing to save";
  EXPECT_EQ(log.messages().back(), "save all: 0 of 1 windows");
  editor.openMenu("File");
  saveAll({a}, a);
  EXPECT_EQ(saved, std::vector<std::string>{"a"});
  EXPECT_EQ(log.messages().back(), "save all: 1 of 1 windows");
}

}  // namespace
}  // namespace pellar
