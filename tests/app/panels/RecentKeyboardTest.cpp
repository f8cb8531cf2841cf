// The arrow keys, Return, Escape and typing while the drop-down is open.

#include <gtest/gtest.h>

#include "app/panels/RecentView.h"
#include "platform/VirtualKey.h"
#include "tests/support/RecentStory.h"

namespace pellar {
namespace {

class RecentKeyboard : public RecentStory {
 protected:
  void openWithThree() {
    used("Report.txt", 300);
    used("Budget.txt", 200);
    used("Plan.txt", 100);
    openDropdown();
  }
  void expectClosedAndKeysWithTheEditor() {
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(strip().panel().isKey());
    EXPECT_FALSE(mac.eventMonitors().watched());
    mac.type("x");
    EXPECT_EQ(editor.typed(), "x");
    EXPECT_EQ(mac.frontWindow()->title(), "Plan");
  }
};

TEST_F(RecentKeyboard, ReturnWithNothingSelectedOpensTheFirst) {
  openWithThree();
  mac.pressKey("insertNewline:");
  EXPECT_EQ(opened(), Names{(mac.home() / "Report.txt").string()});
  expectClosedAndKeysWithTheEditor();
}

TEST_F(RecentKeyboard, ReturnOpensTheFirstThatFitsWhatWasTyped) {
  openWithThree();
  mac.type("bud");
  mac.pressKey("insertNewline:");
  EXPECT_EQ(opened(), Names{(mac.home() / "Budget.txt").string()});
  EXPECT_EQ(strip().searchField()->text(), "");
}

TEST_F(RecentKeyboard, ReturnOnAnEmptyListDoesNothing) {
  openDropdown();
  mac.pressKey("insertNewline:");
  EXPECT_TRUE(opened().empty());
  EXPECT_TRUE(isOpen());
  EXPECT_TRUE(strip().panel().isKey());
}

TEST_F(RecentKeyboard, DownGoesIntoTheListAndFurtherArrowsMoveOn) {
  openWithThree();
  mac.pressKey("moveDown:");
  EXPECT_EQ(selected(), "Report.txt");
  EXPECT_TRUE(isOpen());
  EXPECT_TRUE(strip().panel().isKey()) << "nothing closes";
  mac.pressKey("moveDown:");
  EXPECT_EQ(selected(), "Budget.txt");
  mac.pressKey("moveDown:");
  EXPECT_EQ(selected(), "Plan.txt");
  mac.pressKey("moveDown:");
  EXPECT_EQ(selected(), "Plan.txt");
  mac.pressKey("moveUp:");
  EXPECT_EQ(selected(), "Budget.txt");
  mac.pressKey("insertNewline:");
  EXPECT_EQ(opened(), Names{(mac.home() / "Budget.txt").string()});
  expectClosedAndKeysWithTheEditor();
}

TEST_F(RecentKeyboard, DownInTheFieldBeginsAtTheTopWhateverWasSelected) {
  openWithThree();
  mac.pressKey("moveDown:");
  mac.pressKey("moveDown:");
  ASSERT_EQ(selected(), "Budget.txt");
  strip().clickSearchField();
  mac.pressKey("moveDown:");
  EXPECT_EQ(selected(), "Report.txt");
}

TEST_F(RecentKeyboard, ReturnInTheFieldOpensWhatIsSelectedInTheList) {
  openWithThree();
  mac.pressKey("moveDown:");
  mac.pressKey("moveDown:");
  mac.pressKey("moveLeft:");
  mac.pressKey("insertNewline:");
  EXPECT_EQ(opened(), Names{(mac.home() / "Budget.txt").string()});
}

// The list has the keys, and in it the user chose none.
TEST_F(RecentKeyboard, ReturnInTheListWithNothingSelectedOpensNothing) {
  openWithThree();
  mac.pointer().click({dropdown().frame().midX(), dropdown().frame().minY() + 20});
  mac.pressKey("insertNewline:");
  EXPECT_TRUE(opened().empty());
  EXPECT_TRUE(isOpen());
}

TEST_F(RecentKeyboard, TheListTakesReturnAndEscapeAndNoOtherKey) {
  const auto panel = mac.platform().panels.makePanel({.contentSize = {480, 300}});
  RecentView view(panel->host(), std::make_shared<StateStore>(pellar.store().url()), mac.platform());
  int escapes = 0;
  view.onEscape = [&escapes] { ++escapes; };
  EXPECT_TRUE(view.keyDown(VirtualKey::escape));
  EXPECT_EQ(escapes, 1);
  EXPECT_TRUE(view.keyDown(VirtualKey::returnKey));
  EXPECT_FALSE(view.keyDown(VirtualKey::tab));
  EXPECT_EQ(escapes, 1);
}

TEST_F(RecentKeyboard, UpInTheFieldMeansNothing) {
  openWithThree();
  mac.pressKey("moveUp:");
  EXPECT_EQ(selected(), std::nullopt);
  EXPECT_TRUE(isOpen());
}

TEST_F(RecentKeyboard, OfReturnDownAndEscapeTheFieldItselfHearsNothing) {
  openWithThree();
  const auto* const field = strip().searchField();
  mac.type("nothing like it");
  mac.pressKey("insertNewline:");
  mac.pressKey("moveDown:");
  strip().clickSearchField();
  mac.pressKey("cancelOperation:");
  strip().clickSearchField();
  mac.pressKey("insertNewline:");
  EXPECT_EQ(opened().size(), 1U);
  EXPECT_EQ(field->commandsLeftToIt(), Names());
  strip().clickSearchField();
  mac.pressKey("moveUp:");
  EXPECT_EQ(field->commandsLeftToIt(), Names{"moveUp:"});
}

TEST_F(RecentKeyboard, EscapeClosesFromTheField) {
  openWithThree();
  mac.type("rep");
  mac.pressKey("cancelOperation:");
  EXPECT_TRUE(opened().empty());
  expectClosedAndKeysWithTheEditor();
}

TEST_F(RecentKeyboard, EscapeClosesFromTheList) {
  openWithThree();
  mac.pressKey("moveDown:");
  mac.pressKey("cancelOperation:");
  EXPECT_TRUE(opened().empty());
  expectClosedAndKeysWithTheEditor();
}

TEST_F(RecentKeyboard, TypingGoesOnInTheFieldAfterTheArrows) {
  openWithThree();
  mac.type("t");
  mac.pressKey("moveDown:");
  mac.pressKey("moveDown:");
  mac.type("xt");
  EXPECT_EQ(strip().searchField()->text(), "txt");
  EXPECT_EQ(titles().size(), 3);
  EXPECT_EQ(selected(), std::nullopt) << "another list: what was selected may be another file now";
  mac.pressKey("deleteBackward:");
  EXPECT_EQ(strip().searchField()->text(), "tx");
  mac.pressKey("moveDown:");
  EXPECT_EQ(selected(), "Report.txt");
}

TEST_F(RecentKeyboard, DownOnAnEmptyListLeavesEverythingUsable) {
  used("Report.txt", 300);
  openDropdown();
  mac.type("nothing like it");
  mac.pressKey("moveDown:");
  mac.pressKey("moveDown:");
  mac.pressKey("insertNewline:");
  EXPECT_TRUE(opened().empty());
  EXPECT_TRUE(isOpen());
  mac.pressKey("cancelOperation:");
  EXPECT_FALSE(isOpen());
}

TEST_F(RecentKeyboard, ArrowsScrollTheListAlong) {
  for (int i = 0; i < 40; ++i) used("File " + std::to_string(100 + i) + ".txt", 1000 - i);
  openDropdown();
  for (int i = 0; i < 20; ++i) mac.pressKey("moveDown:");
  EXPECT_EQ(selected(), "File 119.txt");
  EXPECT_EQ(titles().back(), "File 119.txt");
  mac.pressKey("pageDown:");
  EXPECT_EQ(selected(), "File 127.txt");
  mac.pressKey("pageUp:");
  mac.pressKey("pageUp:");
  mac.pressKey("pageUp:");
  mac.pressKey("pageUp:");
  EXPECT_EQ(selected(), "File 100.txt");
  EXPECT_EQ(titles().front(), "File 100.txt");
}

TEST_F(RecentKeyboard, AClickInTheListIsWhereTheArrowsGoOn) {
  openWithThree();
  mac.pointer().click(pointOf("Budget.txt"));
  EXPECT_EQ(selected(), "Budget.txt");
  EXPECT_TRUE(opened().empty()) << "one click does not open";
  mac.pressKey("moveDown:");
  EXPECT_EQ(selected(), "Plan.txt");
  mac.pressKey("insertNewline:");
  EXPECT_EQ(opened(), Names{(mac.home() / "Plan.txt").string()});
}

TEST_F(RecentKeyboard, TheFieldTakesTheKeysBackWithAClick) {
  openWithThree();
  mac.pressKey("moveDown:");
  mac.pressKey("moveDown:");
  strip().clickSearchField();
  EXPECT_TRUE(isOpen());
  mac.pressKey("moveDown:");
  EXPECT_EQ(selected(), "Report.txt");
}

TEST_F(RecentKeyboard, OpenedAgainTheKeysAreTheFields) {
  openWithThree();
  mac.pressKey("moveDown:");
  mac.pressKey("moveDown:");
  mac.pressKey("cancelOperation:");
  strip().clickSearchField();
  mac.type("pl");
  EXPECT_EQ(strip().searchField()->text(), "pl");
  mac.pressKey("insertNewline:");
  EXPECT_EQ(opened(), Names{(mac.home() / "Plan.txt").string()});
}

}  // namespace
}  // namespace pellar
