#include <string>
#include <vector>

#include "platform/MenuPresenter.h"
#include "tests/contract/ContractTest.h"

namespace pellar::contract {

class MenuContract : public ContractTest {
 protected:
  MenuContract() : editor(world().launch("editor")) {
    world().open(editor, "Report.txt", {60, 160, 400, 300});
    elementOf(editor, "Report.txt");
    if (!wait([this] { return isInFront(editor); })) throw std::runtime_error("nothing comes to the front");
  }

  ClosureItem item(const std::string& title) {
    return {title, [this, title] { chosen.push_back(title); }};
  }
  void popUp(const Menu& menu) {
    world().platform().menus.popUpContextMenu(menu, {{10, 10}, {300, 300}, false, 1});
  }

  ProcessId editor;
  std::vector<std::string> chosen;
};

using Titles = std::vector<std::string>;

TEST_F(MenuContract, RunsWhatWasChosenBeforeItReturns) {
  world().workNextMenu(1);
  popUp({item("Close"), item("Copy"), item("Save")});
  EXPECT_EQ(chosen, Titles{"Copy"});
}

TEST_F(MenuContract, OffersNeitherLinesNorDisabledItems) {
  ClosureItem disabled = item("Rename");
  disabled.enabled = false;
  world().workNextMenu(1);
  popUp({item("Close"), MenuSeparator{}, disabled, item("Copy")});
  EXPECT_EQ(chosen, Titles{"Copy"});
}

TEST_F(MenuContract, RunsNothingWhenItIsDismissed) {
  world().workNextMenu(std::nullopt);
  popUp({item("Close"), item("Copy")});
  EXPECT_EQ(chosen, Titles{});
  // The next one is shown as if there had been none.
  world().workNextMenu(0);
  popUp({item("Close"), item("Copy")});
  EXPECT_EQ(chosen, Titles{"Close"});
}

TEST_F(MenuContract, AnItemNeedDoNothing) {
  world().workNextMenu(0);
  popUp({ClosureItem{"Nothing", {}}, item("Copy")});
  EXPECT_EQ(chosen, Titles{});
}

TEST_F(MenuContract, TakesAnyTitle) {
  ClosureItem swatch = item("Red");
  swatch.swatch = Color{1, 0, 0, 1, std::nullopt};
  swatch.checked = true;
  const std::string name = "R&D\n_x_\t\xd7\xa9\xd7\x9c \xe2\x80\xae";
  world().workNextMenu(2);
  popUp({item(std::string(10000, 'x')), swatch, item(name), item("")});
  EXPECT_EQ(chosen, Titles{name});
}

TEST_F(MenuContract, TheLoopRunsWhileOneIsOpenAndShowsNoOther) {
  bool posted = false;
  bool second = false;
  mainLoop().post([&] {
    posted = true;
    popUp({item("Another")});
    second = true;
  });
  world().workNextMenu(0);
  popUp({item("Close")});
  EXPECT_TRUE(posted);
  EXPECT_TRUE(second);
  EXPECT_EQ(chosen, Titles{"Close"});
}

TEST_F(MenuContract, AHandlerMayOpenTheNext) {
  ClosureItem groups = item("Groups");
  groups.handler = [this] {
    world().workNextMenu(0);
    popUp({item("Monday")});
  };
  world().workNextMenu(0);
  popUp({groups});
  EXPECT_EQ(chosen, Titles{"Monday"});
}

TEST_F(MenuContract, TheApplicationBelowStaysInFront) {
  bool front = false;
  mainLoop().post([&] { front = isInFront(editor); });
  world().workNextMenu(std::nullopt);
  popUp({item("Close")});
  EXPECT_TRUE(front);
  EXPECT_TRUE(isInFront(editor));
}

}  // namespace pellar::contract
