#include <gtest/gtest.h>

#include "tests/app/strip/search/SearchStory.h"
#include "tests/support/MenuStory.h"
#include "tests/support/PanelReader.h"

namespace pellar {
namespace {

using RecentDropdownStory = SearchStory;

TEST_F(RecentDropdownStory, ClickingTheFieldOpensItUnderTheField) {
  startWithField();
  EXPECT_FALSE(isOpen());
  strip().clickSearchField();
  EXPECT_TRUE(isOpen());
  EXPECT_TRUE(strip().panel().isKey());
  EXPECT_TRUE(strip().searchField()->isFocused());
  EXPECT_EQ(dropdown().frame().maxX(), field().maxX());
  EXPECT_EQ(dropdown().frame().maxY(), field().minY() - 4);
  EXPECT_EQ(dropdown().frame().size(), (Size{480, 300}));
  EXPECT_EQ(mac.frontWindow()->title(), "Plan");
}

TEST_F(RecentDropdownStory, ItComesUpInItsPlace) {
  startWithField();
  strip().clickSearchField();
  EXPECT_EQ(dropdown().cameUpAt(), dropdown().frame());
}

TEST_F(RecentDropdownStory, ItIsAsLargeOverAnyStrip) {
  auto plan = open("Plan");
  start();
  for (const double width : {1200.0, 1000.0}) {
    plan.resizeTo({width, 600});
    strip().clickSearchField();
    EXPECT_EQ(dropdown().frame().size(), (Size{480, 300}));
    mac.pressKey("cancelOperation:");
  }
}

TEST_F(RecentDropdownStory, TypingOpensItAgain) {
  startWithField();
  strip().clickSearchField();
  auto* const search = strip().searchField();
  mac.pressKey("cancelOperation:");
  mac.settle();
  expectClosed();
  search->type("p");
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(search->text(), "p");
}

TEST_F(RecentDropdownStory, OpenedWhileItIsOpenTheFieldHasTheKeysBackFromTheList) {
  startWithField();
  strip().clickSearchField();
  mac.pressKey("moveDown:");
  EXPECT_TRUE(mac.panels().keys().aListHasFocus());
  pellar.strip()->openRecent();
  EXPECT_FALSE(mac.panels().keys().aListHasFocus());
  EXPECT_TRUE(strip().searchField()->isFocused());
  EXPECT_TRUE(strip().panel().isKey());
}

TEST_F(RecentDropdownStory, ClosingItEmptiesTheFieldAndGivesTheKeyboardBack) {
  startWithField();
  strip().clickSearchField();
  mac.type("bud");
  EXPECT_EQ(strip().searchField()->text(), "bud");
  mac.pressKey("cancelOperation:");
  mac.settle();
  expectClosed();
  EXPECT_EQ(strip().searchField()->text(), "");
  EXPECT_FALSE(strip().searchField()->isFocused());
  EXPECT_EQ(mac.workspace().requestedActivations().back(), editor.pid());
  mac.type("x");
  EXPECT_EQ(editor.typed(), "x");
}

TEST_F(RecentDropdownStory, EscapeClosesItAndOtherKeysAreTheFields) {
  startWithField();
  strip().clickSearchField();
  mac.type("bud");
  mac.pressKey("deleteBackward:");
  EXPECT_TRUE(isOpen());
  mac.pressKey("cancelOperation:");
  mac.settle();
  expectClosed();
  EXPECT_EQ(strip().searchField()->text(), "");
  EXPECT_EQ(mac.frontWindow()->title(), "Plan");
}

TEST_F(RecentDropdownStory, AClickElsewhereClosesIt) {
  const auto plan = startWithField();
  strip().clickSearchField();
  mac.click(plan);
  expectClosed();

  strip().clickSearchField();
  mac.pointer().click({5, 5});
  expectClosed();

  strip().clickSearchField();
  mac.pointer().rightClick(strip().emptyPoint());
  expectClosed();
}

TEST_F(RecentDropdownStory, AClickThatTakesNoKeyboardClosesItToo) {
  startWithField();
  strip().clickSearchField();
  // As on the menu bar of another application.
  mac.eventMonitors().pressedElsewhere();
  mac.settle();
  expectClosed();
}

TEST_F(RecentDropdownStory, AClickIntoTheSnapPickerClosesIt) {
  startWithField();
  strip().clickSearchField();
  strip().hoverTool(tool::zoom);
  ASSERT_TRUE(PanelReader(mac).pickerShown());
  mac.pointer().click(PanelReader::onScreen(*PanelReader(mac).picker(), {120, 40}));
  expectClosed();
}

TEST_F(RecentDropdownStory, AClickWithTheMiddleButtonLeavesItOpen) {
  startWithField();
  strip().clickSearchField();
  mac.pointer().middleClick(strip().emptyPoint());
  EXPECT_TRUE(isOpen());
}

TEST_F(RecentDropdownStory, AClickIntoAnotherProgramClosesItAndGoesThere) {
  startWithField({100, 200, 1200, 300});
  auto viewer = mac.launch({.bundleId = "org.example.viewer", .name = "Viewer", .inFront = false});
  const auto picture = viewer.open("Picture", {100, 600, 600, 250});
  strip().clickSearchField();
  ASSERT_TRUE(isOpen());
  mac.click(picture);
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(mac.frontWindow(), picture);
  expectStripOver(picture);
  mac.type("x");
  EXPECT_EQ(viewer.typed(), "x");
}

TEST_F(RecentDropdownStory, AnotherProgramThatComesToTheFrontStaysThere) {
  startWithField();
  auto viewer = mac.launch({.bundleId = "org.example.viewer", .name = "Viewer", .inFront = false});
  const auto picture = viewer.open("Picture", {100, 300, 600, 250});
  strip().clickSearchField();
  mac.activate(viewer);
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(mac.frontWindow(), picture);
  expectStripOver(picture);
}

TEST_F(RecentDropdownStory, TermsThatAreNoLongerAcceptedCloseIt) {
  startWithField();
  strip().clickSearchField();
  pellar.strip()->locked = true;
  pellar.tracker().refresh();
  EXPECT_FALSE(stripShown());
  expectClosed();
}

TEST_F(RecentDropdownStory, ClicksIntoItAndIntoTheFieldLeaveItOpen) {
  startWithField();
  strip().clickSearchField();
  mac.type("bud");
  strip().clickSearchField();
  EXPECT_TRUE(isOpen());
  mac.pointer().click({dropdown().frame().midX(), dropdown().frame().midY()});
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(strip().searchField()->text(), "bud");
}

TEST_F(RecentDropdownStory, ATabClosesIt) {
  open("Report");
  startWithField();
  strip().clickSearchField();
  strip().clickTab("Report");
  expectClosed();
  EXPECT_EQ(mac.frontWindow()->title(), "Report");
}

TEST_F(RecentDropdownStory, LosingTheKeyboardClosesIt) {
  startWithField();
  strip().clickSearchField();
  mac.panels().keys().loseKey();
  mac.settle();
  expectClosed();
}

TEST_F(RecentDropdownStory, AnotherFocusedWindowClosesIt) {
  const auto report = open("Report");
  startWithField();
  strip().clickSearchField();
  editor.focus(report);
  mac.settle();
  expectClosed();
}

TEST_F(RecentDropdownStory, HidingTheStripClosesIt) {
  auto plan = startWithField();
  strip().clickSearchField();
  plan.minimise();
  pellar.tracker().refresh();
  EXPECT_FALSE(stripShown());
  expectClosed();
}

TEST_F(RecentDropdownStory, ItStaysWhenTheClickBringsPellarToTheFront) {
  const auto plan = startWithField();
  mac.pointer().keyPanelMakesPellarFrontmost = true;
  strip().clickSearchField();
  expectStripOver(plan);
  EXPECT_TRUE(isOpen());
  mac.type("bud");
  EXPECT_EQ(strip().searchField()->text(), "bud");
  // The same window again, though with a new record.
  mac.activate(editor);
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(strip().searchField()->text(), "bud");
}

TEST_F(RecentDropdownStory, ClosedWhilePellarIsInFrontTheApplicationIsInFrontAgain) {
  startWithField();
  mac.pointer().keyPanelMakesPellarFrontmost = true;
  strip().clickSearchField();
  ASSERT_EQ(mac.workspace().frontmostApplication()->bundleId, mac.workspace().ownBundleId());
  mac.pressKey("cancelOperation:");
  mac.settle();
  expectClosed();
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, editor.pid());
}

TEST_F(RecentDropdownStory, ClosedWhileNobodyIsInFrontTheApplicationIsInFrontAgain) {
  mac.setPellarBundleId(std::nullopt);
  startWithField();
  strip().clickSearchField();
  mac.leaveNobodyInFront();
  mac.settle();
  ASSERT_TRUE(isOpen());
  mac.pressKey("cancelOperation:");
  mac.settle();
  expectClosed();
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, editor.pid());
}

TEST_F(RecentDropdownStory, ClosedItStaysWhereItIs) {
  auto plan = startWithField();
  strip().clickSearchField();
  mac.pressKey("cancelOperation:");
  const int moves = dropdown().frameChanges();
  plan.moveTo({50, 300});
  expectStripOver(plan);
  EXPECT_EQ(dropdown().frameChanges(), moves);
}

TEST_F(RecentDropdownStory, ItFollowsADragOfTheStripAtOnce) {
  startWithField();
  const ScreenPoint from = strip().emptyPoint();
  mac.pointer().press(from);
  mac.pointer().moveTo({from.x + 10, from.y});
  pellar.strip()->openRecent();
  const ScreenRect before = dropdown().frame();
  mac.pointer().moveTo({from.x + 60, from.y - 20}, [&] {
    EXPECT_TRUE(isOpen());
    EXPECT_NE(dropdown().frame(), before);
    EXPECT_EQ(dropdown().frame().maxX(), field().maxX());
    EXPECT_EQ(dropdown().frame().maxY(), field().minY() - 4);
  });
  mac.pointer().release();
}

TEST_F(RecentDropdownStory, ItFollowsTheStrip) {
  auto plan = startWithField();
  strip().clickSearchField();
  plan.setFrame({50, 300, 1300, 400});
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(dropdown().frame().maxX(), field().maxX());
  EXPECT_EQ(dropdown().frame().maxY(), field().minY() - 4);
}

TEST_F(RecentDropdownStory, ItStaysEightPointsInsideTheScreen) {
  auto plan = startWithField({-700, 200, 1200, 600});
  pellar.strip()->openRecent();
  EXPECT_EQ(dropdown().frame().minX(), 8);
  plan.moveTo({900, 200});
  EXPECT_EQ(dropdown().frame().maxX(), 1432);
}

TEST_F(RecentDropdownStory, ItStaysEightPointsInsideTheScreenItsStripIsOn) {
  mac.screens().add({-1200, -300, 1200, 1000}, 0, 0);
  auto plan = startWithField({-1500, 300, 1200, 600});
  pellar.strip()->openRecent();
  EXPECT_EQ(dropdown().frame().minX(), -1200 + 8);
  plan.moveTo({-800, 300});
  EXPECT_EQ(dropdown().frame().maxX(), field().maxX());
  plan.moveTo({-500, 300});
  EXPECT_EQ(dropdown().frame().minX(), 8) << "the screen that holds most of the strip decides";
}

TEST_F(RecentDropdownStory, OnAScreenTooNarrowForItItsLeftEdgeIsInside) {
  mac.screens().set({SimScreens::screen({0, 0, 480, 900}, 25, 0)});
  startWithField({0, 200, 1200, 600});
  pellar.strip()->openRecent();
  EXPECT_EQ(dropdown().frame().minX(), 8);
}

TEST_F(RecentDropdownStory, AStripOnNoScreenHasItOnTheFirst) {
  startWithField({5000, 200, 1200, 600});
  pellar.strip()->openRecent();
  EXPECT_EQ(dropdown().frame().maxX(), 1432);
}

using RecentDropdownInWord = WordStory;

TEST_F(RecentDropdownInWord, AQuestionAskedFromBesideItStaysInFront) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  strip().clickSearchField();
  mac.alerts().next([&](const TextAlert&) {
    EXPECT_FALSE(dropdown().isVisible());
    EXPECT_EQ(mac.workspace().frontmostApplication()->bundleId, mac.workspace().ownBundleId());
    return TextAlertAnswer{};
  });
  strip().clickTool("Rename");
}

TEST_F(RecentDropdownStory, TabsThatComeMeanwhileLeaveTheFieldToWhatIsTyped) {
  const auto plan = startWithField();
  strip().clickSearchField();
  mac.type("bu");
  for (const auto* title : {"A", "B", "C", "D", "E"}) open(title);
  editor.focus(plan);
  ASSERT_TRUE(isOpen());
  ASSERT_NE(strip().searchField(), nullptr);
  mac.type("d");
  EXPECT_EQ(strip().searchField()->text(), "bud");
  EXPECT_EQ(dropdown().frame().maxX(), field().maxX());
  mac.pressKey("cancelOperation:");
  EXPECT_EQ(strip().searchField(), nullptr) << "only now there is no room for it any more";
  EXPECT_TRUE(strip().searchToolShown());
}

TEST_F(RecentDropdownStory, AReportOfTheSameWindowLeavesWhatIsTyped) {
  auto plan = startWithField();
  strip().clickSearchField();
  mac.type("bud");
  plan.retitle("Plan, edited");
  EXPECT_TRUE(isOpen());
  EXPECT_TRUE(strip().searchField()->isFocused());
  EXPECT_EQ(strip().searchField()->text(), "bud");
}

TEST_F(RecentDropdownStory, AStripHiddenWithoutItGivesNoKeyboardBack) {
  auto plan = startWithField();
  const auto before = mac.workspace().requestedActivations().size();
  plan.minimise();
  mac.settle();
  EXPECT_FALSE(stripShown());
  EXPECT_EQ(mac.workspace().requestedActivations().size(), before);
}

TEST_F(RecentDropdownStory, AClickThatArrivesAfterTheStripIsHiddenOpensNothing) {
  auto plan = startWithField();
  auto* const search = strip().searchField();
  plan.minimise();
  mac.settle();
  ASSERT_FALSE(stripShown());
  search->click();
  mac.settle();
  EXPECT_FALSE(stripShown());
  expectClosed();
  mac.type("x");
  EXPECT_EQ(editor.typed(), "x") << "the keyboard stays where it is";
}

TEST_F(RecentDropdownStory, TypingThatArrivesAfterTheStripIsHiddenOpensNothing) {
  auto plan = startWithField();
  auto* const search = strip().searchField();
  plan.minimise();
  mac.settle();
  search->type("p");
  mac.settle();
  EXPECT_FALSE(stripShown());
  expectClosed();
  EXPECT_EQ(search->text(), "");
}

}  // namespace
}  // namespace pellar
