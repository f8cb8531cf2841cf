#include "platform/SearchField.h"
#include "tests/contract/PanelTest.h"

namespace pellar::contract {

class SearchFieldContract : public PanelTest {
 protected:
  void showField() {
    panel->setView(&view);
    field = panel->host().makeSearchField();
    field->setPlaceholder("Search recent files");
    field->setFrame({100, 5, 210, 22});
    field->setOnChange([this] { ++changes; });
    show();
  }
  ScreenPoint inField() { return at(180, 16); }
  void TearDown() override { field.reset(); }

  std::unique_ptr<SearchField> field;
  int changes = 0;
};

TEST_F(SearchFieldContract, StartsEmptyAndSeenWhereItIsPut) {
  showField();
  EXPECT_EQ(field->text(), "");
  EXPECT_FALSE(field->isHidden());
  EXPECT_EQ(field->frame(), (ViewRect{100, 5, 210, 22}));
  field->setHidden(true);
  EXPECT_TRUE(field->isHidden());
}

TEST_F(SearchFieldContract, DoesNotCallSettingTheTextTyping) {
  showField();
  field->setText("plan");
  EXPECT_EQ(field->text(), "plan");
  letPass(std::chrono::milliseconds(50));
  EXPECT_EQ(changes, 0);
}

TEST_F(SearchFieldContract, TellsOfAClickAndTakesWhatIsTypedThen) {
  showField();
  int activations = 0;
  field->setOnActivate([&] {
    ++activations;
    panel->makeKeyAndOrderFront();
    field->focus();
  });
  click(inField());
  ASSERT_TRUE(wait([&] { return activations == 1 && panel->isKey(); }));
  EXPECT_FALSE(view.heard("down")) << "the field's own click";
  letPass(std::chrono::milliseconds(100));
  world().type("plan");
  EXPECT_TRUE(wait([&] { return field->text() == "plan"; }));
  EXPECT_TRUE(wait([&] { return changes == 4; }));
}

TEST_F(SearchFieldContract, OffersKeyCommandsToTheHandlerFirst) {
  showField();
  std::vector<std::string> commands;
  field->setOnActivate([this] {
    panel->makeKeyAndOrderFront();
    field->focus();
  });
  field->setOnCommand([&commands](const std::string& selector) {
    commands.push_back(selector);
    return true;
  });
  click(inField());
  ASSERT_TRUE(wait([this] { return panel->isKey(); }));
  letPass(std::chrono::milliseconds(100));
  world().type("x");
  ASSERT_TRUE(wait([this] { return field->text() == "x"; }));
  world().pressEscape();
  EXPECT_TRUE(wait([&commands] { return !commands.empty(); }));
  EXPECT_EQ(commands, (std::vector<std::string>{"cancelOperation:"}));
  EXPECT_EQ(field->text(), "x") << "a command that was taken does nothing to the field";
}

TEST_F(SearchFieldContract, GivesUpTheKeysWhenThePanelsFirstResponderIsCleared) {
  showField();
  field->setOnActivate([this] { panel->makeKeyAndOrderFront(); });
  click(inField());
  ASSERT_TRUE(wait([this] { return panel->isKey(); }));
  letPass(std::chrono::milliseconds(100));
  panel->clearFirstResponder();
  EXPECT_TRUE(panel->isKey());
  world().type("lost");
  letPass(std::chrono::milliseconds(150));
  EXPECT_EQ(field->text(), "");
}

TEST_F(SearchFieldContract, TheViewHearsThePointerGoOntoTheFieldThatIsBeingTypedInto) {
  showField();
  panel->makeKeyAndOrderFront();
  field->focus();
  letPass(std::chrono::milliseconds(100));
  world().movePointer(at(20, 10));
  ASSERT_TRUE(wait([this] { return view.heard("moved") && near(view.events.back().location.x, 20); }));
  world().movePointer(inField());
  EXPECT_TRUE(wait([this] { return near(view.events.back().location.x, 180); }));
}

TEST_F(SearchFieldContract, TakesNoClickThatArrivesOnceItsPanelIsOffTheScreen) {
  showField();
  int activations = 0;
  field->setOnActivate([&] { ++activations; });
  mainLoop().post([this] { panel->orderOut(); });
  click(inField());
  letPass(std::chrono::milliseconds(200));
  EXPECT_EQ(activations, 0);
  EXPECT_FALSE(panel->isVisible());
  EXPECT_FALSE(panel->isKey());
}

TEST_F(SearchFieldContract, TakesNoKeysWhileItIsHidden) {
  showField();
  panel->makeKeyAndOrderFront();
  field->focus();
  letPass(std::chrono::milliseconds(100));
  field->setHidden(true);
  field->focus();
  world().type("lost");
  letPass(std::chrono::milliseconds(150));
  EXPECT_EQ(field->text(), "");
}

TEST_F(SearchFieldContract, MayBeDeletedInAnswerToItsClick) {
  showField();
  bool deleted = false;
  field->setOnActivate([&] {
    field->setHidden(true);
    mainLoop().post([&] {
      field.reset();
      deleted = true;
    });
  });
  click(inField());
  EXPECT_TRUE(wait([&deleted] { return deleted; }));
  letPass(std::chrono::milliseconds(50));
}

}  // namespace pellar::contract
