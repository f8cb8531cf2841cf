#include <set>

#include "platform/ListView.h"
#include "platform/SearchField.h"
#include "tests/contract/PanelTest.h"

namespace pellar::contract {

// A list in a panel of its own, under the key panel with a search field in it.
class ListViewContract : public PanelTest {
 protected:
  static constexpr ScreenRect listPlace{200, 100, 400, 190};
  static constexpr ViewRect frame{10, 8, 380, 174};
  static constexpr double rowHeight = 34;
  static constexpr ListStyle style{
      .rowHeight = rowHeight,
      .title = {.inset = 4, .top = 1, .height = 16, .font = {12.5}, .color = Color::white()},
      .subtitle = {.inset = 4, .top = 19, .height = 13, .font = {10.5}, .color = Color::white(0.55)}};

  void showList(std::size_t rows) {
    field = panel->host().makeSearchField();
    field->setFrame({100, 5, 210, 22});
    field->setOnCommand([this](const std::string& selector) {
      commands.push_back(selector);
      return true;
    });
    show();
    PanelStyle popUp;
    popUp.contentSize = listPlace.size();
    popUp.level = PanelLevel::popUpMenu;
    listPanel = world().platform().panels.makePanel(popUp);
    listPanel->setView(&listView);
    list = listPanel->host().makeListView(style);
    list->setFrame(frame);
    reload(rows);
    listPanel->setFrame(listPlace, true);
    listPanel->orderFrontRegardless();
    ASSERT_TRUE(wait([&] { return rows == 0 || !asked.empty(); }));
  }
  void reload(std::size_t rows) {
    asked.clear();
    list->reload(rows, [this](std::size_t row) {
      asked.insert(row);
      return ListRow{"Title " + std::to_string(row), "Subtitle"};
    });
  }
  // The field has the keyboard.
  void giveKeysToField() {
    panel->makeKeyAndOrderFront();
    field->focus();
    letPass(std::chrono::milliseconds(100));
  }
  void TearDown() override {
    field.reset();
    list.reset();
    if (listPanel) listPanel->setView(nullptr);
  }

  // In a row near its right end, where no text is, counted from the first row in sight.
  static ScreenPoint inRow(int row) {
    return {listPlace.x + frame.maxX() - 40,
            listPlace.maxY() - frame.minY() - rowHeight * row - rowHeight / 2};
  }
  void doubleClick(ScreenPoint point) {
    click(point);
    click(point);
  }
  bool isHighlighted(int row) { return world().colorAt(inRow(row)) != ground(); }
  // What a row looks like that is not selected.
  Color ground() { return world().colorAt({listPlace.midX(), listPlace.y + 4}); }

  RecordingView listView;  // outlives the panel that it fills
  std::unique_ptr<Panel> listPanel;
  std::unique_ptr<ListView> list;
  std::unique_ptr<SearchField> field;
  std::set<std::size_t> asked;
  std::vector<std::string> commands;
};

TEST_F(ListViewContract, SaysWhereARowIsAlsoWhereItIsOutOfSight) {
  showList(20);
  EXPECT_EQ(list->rowFrame(2).minY(), frame.minY() + 2 * rowHeight);
  EXPECT_EQ(list->rowFrame(2).height, rowHeight);
  EXPECT_EQ(list->rowFrame(20), ViewRect{});
  list->selectRow(19);
  EXPECT_EQ(list->rowFrame(19).maxY(), frame.maxY());
  EXPECT_EQ(list->rowFrame(0).minY(), frame.maxY() - 20 * rowHeight);
}

TEST_F(ListViewContract, AsksOnlyForRowsInSight) {
  showList(100'000);
  EXPECT_LE(*asked.rbegin(), 6U);
  EXPECT_EQ(list->frame(), frame);
}

TEST_F(ListViewContract, StartsWithNothingSelected) {
  showList(3);
  EXPECT_EQ(list->selectedRow(), std::nullopt);
  EXPECT_FALSE(list->hasFocus());
}

TEST_F(ListViewContract, SelectsOneRowHighlightsItAndScrollsItIntoSight) {
  showList(100'000);
  list->selectRow(1);
  EXPECT_EQ(list->selectedRow(), 1U);
  EXPECT_TRUE(wait([this] { return isHighlighted(1); }));
  EXPECT_FALSE(isHighlighted(0));
  list->selectRow(50'000);
  EXPECT_EQ(list->selectedRow(), 50'000U);
  EXPECT_TRUE(wait([this] { return asked.contains(50'000); }));
  EXPECT_TRUE(wait([this] { return !isHighlighted(1); }));
}

TEST_F(ListViewContract, ARowThatDoesNotExistChangesNothing) {
  showList(3);
  list->selectRow(2);
  list->selectRow(3);
  EXPECT_EQ(list->selectedRow(), 2U);
}

TEST_F(ListViewContract, OtherRowsBeginAtTheTopWithNoneSelected) {
  showList(1000);
  list->selectRow(500);
  ASSERT_TRUE(wait([this] { return asked.contains(500); }));
  reload(1000);
  EXPECT_EQ(list->selectedRow(), std::nullopt);
  EXPECT_TRUE(wait([this] { return asked.contains(0); }));
  EXPECT_FALSE(asked.contains(500));
}

TEST_F(ListViewContract, APressSelectsTheRowUnderIt) {
  showList(3);
  click(inRow(1));
  EXPECT_TRUE(wait([this] { return list->selectedRow() == 1U; }));
  EXPECT_TRUE(list->hasFocus());
  click(inRow(4));
  EXPECT_TRUE(wait([this] { return !list->selectedRow(); })) << "below the last row";
  EXPECT_FALSE(listView.heard("down")) << "the list's own clicks";
}

TEST_F(ListViewContract, TellsADoubleClickOnARow) {
  showList(3);
  std::vector<std::optional<std::size_t>> told;
  list->setOnDoubleClick([&] { told.push_back(list->selectedRow()); });
  click(inRow(0));
  letPass(std::chrono::milliseconds(600));
  EXPECT_TRUE(told.empty());
  doubleClick(inRow(1));
  EXPECT_TRUE(wait([&] { return !told.empty(); }));
  EXPECT_EQ(told, (std::vector<std::optional<std::size_t>>{1U}));
  letPass(std::chrono::milliseconds(600));
  doubleClick(inRow(4));
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(told.size(), 1U) << "below the last row";
}

TEST_F(ListViewContract, TheWheelScrolls) {
  showList(1000);
  world().turnWheel(inRow(1), 10);
  EXPECT_TRUE(wait([this] { return *asked.rbegin() > 6; }));
  const auto furthest = *asked.rbegin();
  asked.clear();
  world().turnWheel(inRow(1), -1000);
  EXPECT_TRUE(wait([this] { return asked.contains(0); }));
  EXPECT_LT(furthest, 100U);
  EXPECT_EQ(list->selectedRow(), std::nullopt);
}

TEST_F(ListViewContract, TakesTheKeysOfTheKeyPanelWhichStaysKey) {
  showList(100);
  giveKeysToField();
  list->focus();
  EXPECT_TRUE(list->hasFocus());
  EXPECT_TRUE(panel->isKey());
  list->selectRow(0);
  world().press(World::Key::down);
  world().press(World::Key::down);
  EXPECT_TRUE(wait([this] { return list->selectedRow() == 2U; }));
  world().press(World::Key::up);
  EXPECT_TRUE(wait([this] { return list->selectedRow() == 1U; }));
  EXPECT_TRUE(commands.empty());
  EXPECT_TRUE(panel->isKey());
  EXPECT_FALSE(listPanel->isKey());
}

TEST_F(ListViewContract, OffersKeysToItsHandlerFirst) {
  showList(3);
  std::vector<int> codes;
  list->setOnKeyDown([&](std::uint16_t code) {
    codes.push_back(code);
    return true;
  });
  giveKeysToField();
  list->focus();
  world().press(World::Key::enter);
  world().pressEscape();
  world().press(World::Key::down);
  EXPECT_TRUE(wait([&] { return codes.size() == 3; }));
  EXPECT_EQ(codes, (std::vector<int>{36, 53, 125}));
  EXPECT_EQ(list->selectedRow(), std::nullopt);
  EXPECT_TRUE(commands.empty());
  EXPECT_TRUE(list->hasFocus());
}

TEST_F(ListViewContract, AKeyThatNobodyTakesIsTheFields) {
  showList(3);
  list->setOnKeyDown([](std::uint16_t) { return false; });
  giveKeysToField();
  list->focus();
  world().pressEscape();
  EXPECT_TRUE(wait([this] { return commands == std::vector<std::string>{"cancelOperation:"}; }));
  EXPECT_FALSE(list->hasFocus());
}

TEST_F(ListViewContract, TypingGoesOnInTheField) {
  showList(3);
  giveKeysToField();
  world().type("a");
  ASSERT_TRUE(wait([this] { return field->text() == "a"; }));
  list->focus();
  world().type("b");
  EXPECT_TRUE(wait([this] { return field->text() == "ab"; }));
  EXPECT_FALSE(list->hasFocus());
  world().press(World::Key::down);
  EXPECT_TRUE(wait([this] { return commands == std::vector<std::string>{"moveDown:"}; }));
}

TEST_F(ListViewContract, LosesTheKeysToAFieldThatTakesTheFocus) {
  showList(3);
  giveKeysToField();
  list->focus();
  field->focus();
  EXPECT_FALSE(list->hasFocus());
}

TEST_F(ListViewContract, LosesTheKeysWithThePanelsFirstResponder) {
  showList(3);
  giveKeysToField();
  list->focus();
  panel->clearFirstResponder();
  EXPECT_FALSE(list->hasFocus());
}

TEST_F(ListViewContract, LosesTheKeysWhenThePanelIsKeyNoMore) {
  showList(3);
  giveKeysToField();
  list->focus();
  panel->resignKey();
  EXPECT_TRUE(wait([this] { return !panel->isKey(); }));
  EXPECT_FALSE(list->hasFocus());
}

TEST_F(ListViewContract, LosesTheKeysWhenItIsPutAway) {
  showList(3);
  giveKeysToField();
  list->focus();
  listPanel->orderOut();
  EXPECT_FALSE(list->hasFocus());
  world().press(World::Key::down);
  EXPECT_TRUE(wait([this] { return commands == std::vector<std::string>{"moveDown:"}; }));
}

TEST_F(ListViewContract, MayBeDeletedInAnswerToAKeyOrAClick) {
  showList(3);
  bool deleted = false;
  const auto drop = [&] {
    mainLoop().post([&] {
      list.reset();
      deleted = true;
    });
  };
  list->setOnDoubleClick(drop);
  giveKeysToField();
  doubleClick(inRow(0));
  EXPECT_TRUE(wait([&] { return deleted; }));
  world().press(World::Key::down);
  EXPECT_TRUE(wait([this] { return commands == std::vector<std::string>{"moveDown:"}; }));
}

}  // namespace pellar::contract
