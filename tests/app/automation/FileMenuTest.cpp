#include <array>
#include <functional>

#include "app/automation/FileMenu.h"
#include "platform/sim/applications/SimElement.h"
#include "platform/sim/faults/FaultyAccessibility.h"
#include "tests/app/automation/AutomationStory.h"

namespace pellar {
namespace {

class PressingAFileMenu : public AutomationStory {
 protected:
  PressingAFileMenu() {
    editor.setMenuBar(
        {{"Apple", {{"About This Mac"}}},
         {"Editor", {{"Quit Editor", pressed("Quit")}}},
         {"File", {{"New", pressed("New")}, {"Save", pressed("Save")}, {"Save As…", pressed("As")}}},
         {"Edit", {{"Undo", pressed("Undo")}}}});
  }
  std::function<void()> pressed(const std::string& what) {
    return [this, what] { done.push_back(what); };
  }
  template <class... Titles>
  bool press(Titles... titles) {
    const std::array<std::string_view, sizeof...(Titles)> all{titles...};
    return FileMenu::pressFileMenu(mac.accessibility(), editor.pid(), all);
  }

  // The element of File > Save.
  std::optional<Element> save() {
    auto& menu = *editor.menu({"File"}).children.front();
    for (const auto& item : menu.children)
      if (item->title == "Save") return SimElement::ofMenu(item);
    return std::nullopt;
  }

  SimApplication editor = mac.launch({.bundleId = "org.example.editor", .name = "Editor"});
  std::vector<std::string> done;
};

TEST_F(PressingAFileMenu, PressesTheItemOfThatTitle) {
  EXPECT_TRUE(press("Save"));
  EXPECT_EQ(done, std::vector<std::string>{"Save"});
}

TEST_F(PressingAFileMenu, TriesTheTitlesInOrder) {
  EXPECT_TRUE(press("Save All", "Save As…", "Save", "New"));
  EXPECT_EQ(done, std::vector<std::string>{"As"});
}

TEST_F(PressingAFileMenu, TitlesAreExact) {
  EXPECT_FALSE(press("save"));
  EXPECT_FALSE(press("Save "));
  EXPECT_FALSE(press("Save As..."));
  EXPECT_FALSE(press(""));
  EXPECT_FALSE(FileMenu::pressFileMenu(mac.accessibility(), editor.pid(), {}));
  EXPECT_TRUE(done.empty());
}

TEST_F(PressingAFileMenu, OtherMenusAreNotSearched) {
  EXPECT_FALSE(press("Undo"));
  EXPECT_FALSE(press("About This Mac"));
}

TEST_F(PressingAFileMenu, ADisabledItemIsNotPressed) {
  editor.menu({"File", "Save"}).enabled = false;
  EXPECT_FALSE(press("Save"));
  EXPECT_EQ(editor.menu({"File", "Save"}).presses, 0);
}

TEST_F(PressingAFileMenu, ADisabledItemIsPassedOverForTheNextOneOfItsTitleOrTheNextTitle) {
  editor.setMenuBar({{"File", {{"Save", pressed("first"), false}, {"Save", pressed("second")}}}});
  EXPECT_TRUE(press("Save"));
  EXPECT_EQ(done, std::vector<std::string>{"second"});
  editor.setMenuBar({{"File", {{"Save", pressed("Save"), false}, {"Export", pressed("Export")}}}});
  EXPECT_TRUE(press("Save", "Export"));
  EXPECT_EQ(done.back(), "Export");
}

TEST_F(PressingAFileMenu, AnItemThatDoesNotSayWhetherItIsEnabledIsPressed) {
  editor.menu({"File", "Save"}).refusedAttributes = {"AXEnabled"};
  EXPECT_TRUE(press("Save"));
  editor.menu({"File", "Save"}).refusedAttributes = {};
  editor.menu({"File", "Save"}).mistypedAttributes = {"AXEnabled"};
  EXPECT_TRUE(press("Save"));
  EXPECT_EQ(done, (std::vector<std::string>{"Save", "Save"}));
}

TEST_F(PressingAFileMenu, AnItemThatOpensAMenuIsPassedOver) {
  editor.setMenuBar({{"File",
                      {{.title = "New", .submenu = {{"Text Document", pressed("Text Document")}}},
                       {"New Window", pressed("New Window")}}}});
  EXPECT_TRUE(press("New", "New Window"));
  EXPECT_EQ(done, std::vector<std::string>{"New Window"});
  EXPECT_FALSE(press("New"));
  EXPECT_EQ(editor.menu({"File", "New"}).presses, 0) << "it would stand open before the user";
}

TEST_F(PressingAFileMenu, APressThatIsAnsweredLateIsDoneOnce) {
  editor.menu({"File", "Save"}).unansweredPress = true;
  EXPECT_TRUE(press("Save", "Save As…"));
  EXPECT_EQ(done, std::vector<std::string>{"Save"});
}

TEST_F(PressingAFileMenu, AnItemOfAnApplicationThatFreezesAtThePressIsDoneWhenItGoesOn) {
  FaultyAccessibility shaky(mac.accessibility());
  shaky.beforeRead([&](const Element& element, std::string_view attribute) {
    // After the last look at the item.
    if (attribute == "AXChildren" && element == *save()) editor.freeze();
  });
  static constexpr std::array<std::string_view, 2> titles{"Save", "New"};
  EXPECT_TRUE(FileMenu::pressFileMenu(shaky, editor.pid(), titles));
  EXPECT_TRUE(done.empty());
  editor.resume();
  mac.settle();
  EXPECT_EQ(done, std::vector<std::string>{"Save"});
}

TEST_F(PressingAFileMenu, AnItemWithoutATitleIsPassedOver) {
  editor.menu({"File", "New"}).title.reset();
  editor.menu({"File", "Save As…"}).mistypedAttributes = {"AXTitle"};
  EXPECT_TRUE(press("Save As…", "New", "Save"));
  EXPECT_EQ(done, std::vector<std::string>{"Save"});
}

TEST_F(PressingAFileMenu, APressThatFailsEndsTheMatter) {
  editor.menu({"File", "Save"}).refusesPress = true;
  EXPECT_FALSE(press("Save", "New"));
  EXPECT_TRUE(done.empty()) << "the other titles are not tried";
}

TEST_F(PressingAFileMenu, IsTheFirstOneTitledFile) {
  editor.setMenuBar({{"Apple", {}},
                     {"Editor", {{"Save", pressed("Editor")}}},
                     {"File", {{"Save", pressed("File")}}},
                     {"File", {{"Save", pressed("other File")}}}});
  EXPECT_TRUE(press("Save"));
  EXPECT_EQ(done, std::vector<std::string>{"File"});
}

TEST_F(PressingAFileMenu, InAnotherLanguageIsTheSecondOne) {
  editor.setMenuBar({{"Apple", {{"Sichern", pressed("wrong")}}},
                     {"Ablage", {{"Neu", pressed("Neu")}, {"Sichern", pressed("Sichern")}}},
                     {"Bearbeiten", {{"Sichern", pressed("wrong")}}}});
  EXPECT_TRUE(press("Sichern"));
  EXPECT_EQ(done, std::vector<std::string>{"Sichern"});
  EXPECT_FALSE(press("Save")) << "it has no item of that title";
}

TEST_F(PressingAFileMenu, InAnotherLanguageItMayAlsoBeTheLast) {
  editor.setMenuBar({{"Apple", {}}, {"Ablage", {{"Sichern", pressed("Sichern")}}}});
  EXPECT_TRUE(press("Sichern"));
  EXPECT_EQ(done, std::vector<std::string>{"Sichern"});
}

TEST_F(PressingAFileMenu, ASecondMenuThatIsNoFileMenuIsSearchedAllTheSame) {
  editor.setMenuBar({{"Apple", {}}, {"Edit", {{"Undo", pressed("Undo")}}}, {"Window", {}}});
  EXPECT_FALSE(press("Save"));
  EXPECT_TRUE(done.empty());
  EXPECT_TRUE(press("Undo"));
}

TEST_F(PressingAFileMenu, WithASingleForeignTitleThereIsNone) {
  editor.setMenuBar({{"Ablage", {{"Save", pressed("Save")}}}});
  EXPECT_FALSE(press("Save"));
  editor.setMenuBar({{"File", {{"Save", pressed("Save")}}}});
  EXPECT_TRUE(press("Save")) << "titled File it is found at once";
}

TEST_F(PressingAFileMenu, MissingPartsAreAFailure) {
  editor.menu({"File"}).children.clear();
  EXPECT_FALSE(press("Save")) << "a title without a menu";
  editor.setMenuBar({{"Apple", {}}, {"File", {}}});
  EXPECT_FALSE(press("Save")) << "an empty menu";
  editor.setMenuBar({});
  EXPECT_FALSE(press("Save")) << "no menu bar";
  EXPECT_EQ(mac.accessibility().roundTrips().actions, 0);
}

TEST_F(PressingAFileMenu, PartsThatCannotBeReadAreAFailure) {
  editor.menu().refusedAttributes = {"AXChildren"};
  EXPECT_FALSE(press("Save"));
  editor.menu().refusedAttributes = {};
  editor.menu({"File"}).refusedAttributes = {"AXChildren"};
  EXPECT_FALSE(press("Save"));
  editor.menu({"File"}).refusedAttributes = {};
  auto& menu = *editor.menu({"File"}).children.front();
  menu.mistypedAttributes = {"AXChildren"};
  EXPECT_FALSE(press("Save"));
  menu.mistypedAttributes = {};
  EXPECT_TRUE(press("Save"));
}

TEST_F(PressingAFileMenu, ATitleThatCannotBeReadIsNotFile) {
  editor.menu({"File"}).refusedAttributes = {"AXTitle"};
  EXPECT_FALSE(press("Save"));
  EXPECT_TRUE(press("Quit Editor")) << "so the second menu is taken";
}

TEST_F(PressingAFileMenu, AMenuBarOfAnotherTypeIsAFailure) {
  FaultyAccessibility faulty(mac.accessibility());
  faulty.answer("AXMenuBar", AttributeValue{true});
  static constexpr std::array<std::string_view, 1> save{"Save"};
  EXPECT_FALSE(FileMenu::pressFileMenu(faulty, editor.pid(), save));
}

TEST_F(PressingAFileMenu, AFrozenApplicationIsAskedOnce) {
  editor.freeze();
  const auto start = mac.mainLoop().uptime();
  EXPECT_FALSE(press("Save"));
  EXPECT_EQ(mac.mainLoop().uptime() - start, SimAccessibility::messagingTimeout);
}

TEST_F(PressingAFileMenu, AnApplicationThatIsGoneHasNone) {
  mac.terminate(editor);
  EXPECT_FALSE(press("Save"));
  EXPECT_FALSE(FileMenu::pressFileMenu(mac.accessibility(), 99999, std::array<std::string_view, 1>{"Save"}));
}

TEST_F(PressingAFileMenu, WithoutPermissionNothingIsPressed) {
  mac.accessibility().setTrusted(false);
  EXPECT_FALSE(press("Save"));
}

TEST_F(PressingAFileMenu, AMenuTakenDownInTheMiddleIsAFailure) {
  FaultyAccessibility shaky(mac.accessibility());
  shaky.beforeRead([&](const Element&, std::string_view attribute) {
    if (attribute == "AXEnabled") mac.terminate(editor);
  });
  static constexpr std::array<std::string_view, 1> save{"Save"};
  EXPECT_FALSE(FileMenu::pressFileMenu(shaky, editor.pid(), save));
  EXPECT_TRUE(done.empty());
}

TEST_F(PressingAFileMenu, AnItemMayTakeItsWholeMenuAway) {
  editor.menu({"File", "Save"}).onPress = [&] { editor.setMenuBar({}); };
  EXPECT_TRUE(press("Save"));
  EXPECT_FALSE(press("Save"));
}

TEST_F(PressingAFileMenu, ReadsNoMoreThanItNeeds) {
  mac.accessibility().forgetRoundTrips();
  EXPECT_TRUE(press("Save"));
  // The bar, its titles up to File, the menu, its items up to Save, whether that is enabled, and opens a
  // menu.
  EXPECT_EQ(mac.accessibility().roundTrips(), (RoundTrips{.reads = 2 + 3 + 2 + 2 + 2, .actions = 1}));
}

}  // namespace
}  // namespace pellar
