#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "tests/support/MenuStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// What a real desktop does to the strip in its first hour.
using UnkindMac = MenuStory;

TEST_F(UnkindMac, TheStripComesByItselfOverAnApplicationStartedCold) {
  start();
  for (const auto refuses : {SimRefusal::observers, SimRefusal::registrations, SimRefusal::everything}) {
    auto cold = mac.launch({.bundleId = "org.example.cold" + std::to_string(static_cast<int>(refuses)),
                            .name = "Cold",
                            .refusesAtFirst = refuses,
                            .readyAfter = 3s,
                            .launchedAfter = 100ms});
    mac.advance(1s);
    const auto window = cold.open("Untitled", {100, 200, 900, 600});
    mac.advance(7s);
    EXPECT_EQ(strip().tabs(), Labels{"Untitled"});
    expectStripOver(window);
    cold.open("Second", {100, 200, 900, 600});
    EXPECT_EQ(strip().tabs().size(), 2U) << "and what happens there is heard";
  }
}

TEST_F(UnkindMac, AnApplicationThatIsReadyOnlyAfterAllTriesHasItsStripWhenItSaysItLaunched) {
  start();
  auto cold = mac.launch({.bundleId = "org.example.cold",
                          .name = "Cold",
                          .refusesAtFirst = SimRefusal::registrations,
                          .readyAfter = 30s,
                          .launchedAfter = 31s});
  mac.advance(29s);
  cold.open("Untitled", {100, 200, 900, 600});
  EXPECT_FALSE(stripShown());
  mac.advance(3s);
  EXPECT_EQ(strip().tabs(), Labels{"Untitled"});
}

TEST_F(UnkindMac, OverAnEmptySpaceThereIsNoStripAndItComesBackInTheUsersOrder) {
  open("Plan");
  open("Notes");
  start();
  pellar.tracker().move(pellar.tracker().windows().back()->id(), 0);
  ASSERT_EQ(strip().tabs(), (Labels{"Notes", "Plan"}));
  mac.showSpace(1);
  EXPECT_FALSE(stripShown());
  mac.showSpace(0);
  EXPECT_EQ(strip().tabs(), (Labels{"Notes", "Plan"}));
}

TEST_F(UnkindMac, AColourChosenWhileTheUserLooksAtAnotherSpaceIsKept) {
  open("Plan");
  start();
  chooseAfter("Plan", [&] { mac.showSpace(1); }, {"Colour tag", "Red"});
  mac.showSpace(0);
  EXPECT_EQ(strip().tagOf("Plan"), Color::of(SystemColor::red));
}

TEST_F(UnkindMac, AMenuBarThatComesTakesItsRoom) {
  mac.screens().set({SimScreens::screen({0, 0, 1440, 900}, 0, 0)});
  const auto window = open("Plan", {100, 40, 900, 600});
  start();
  EXPECT_EQ(window.frame().y, 40);
  mac.screens().set({SimScreens::screen({0, 0, 1440, 900}, 25, 0)});
  expectStripOver(window);
  EXPECT_EQ(window.frame().y, 25 + 32);
}

TEST_F(UnkindMac, TheStripIsBackWhenABusyApplicationAnswersAgain) {
  open("Plan");
  start();
  editor.freeze();
  pellar.tracker().refresh();
  EXPECT_FALSE(stripShown());
  mac.advance(3s);
  editor.resume();
  mac.advance(20s);
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
}

TEST_F(UnkindMac, ATabOfAWindowThatIsOneOfAGroupIsTheSelectedOne) {
  const auto one = open("One");
  auto two = open("Two");
  start();
  editor.joinAsTabs({one, two});
  EXPECT_EQ(strip().tabs(), Labels{"Two"});
  strip().clickTab("Two");
  expectStripOver(two);
}

TEST_F(UnkindMac, AWindowAnnouncedBeforeItIsFinishedHasItsTabOnceItIs) {
  start();
  auto window = editor.openUnfinished();
  EXPECT_FALSE(stripShown());
  window.setFrame({100, 200, 900, 600});
  window.retitle("Plan");
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
  expectStripOver(window);
}

TEST_F(UnkindMac, AWindowDraggedByTheStripStopsUnderTheMenuBarAndTheStripWithIt) {
  const auto window = open("Plan", {100, 200, 900, 600});
  start();
  strip().dragEmptyStrip(0, 400);
  EXPECT_GE(window.frame().y, 25);
  expectStripOver(window);
}

// What the user did with the strip before it went, and what arrives only afterwards.
class LateMouse : public WordStory {
 protected:
  [[nodiscard]] MouseEvent at(ScreenPoint point) {
    return {strip().panel().host().fromScreen(point), point, false, 1};
  }
  [[nodiscard]] MouseEvent onTool(const std::string& text) { return at(strip().toolPoint(text)); }
  // A press on the tool that a narrow strip has for the others, made before its only window goes.
  [[nodiscard]] MouseEvent onMoreOverAWindowThatIsGone() {
    const auto plan = openInWord("Plan.docx");
    plan->window->setFrame({100, 200, 250, 600});
    start();
    const MouseEvent press = onTool(tool::overflow);
    plan->window->close();
    return press;
  }
  // To the strip, whether it is shown or not.
  [[nodiscard]] View& view() { return *strip().panel().simHost().view(); }
  // The empty strip is pressed and dragged by 40 to the right.
  void dragEmptyStripLate(ScreenPoint from) {
    const MouseEvent press = at(from);
    const MouseEvent drag = at({from.x + 40, from.y});
    view().mouseDown(press);
    view().mouseDragged(drag);
    view().mouseUp(drag);
    mac.settle();
    for (const auto& message : log.messages()) EXPECT_FALSE(message.starts_with("banner drag")) << message;
  }
};

TEST_F(LateMouse, APressOnAToolDoesNothingOnceTheLastWindowIsGone) {
  const auto plan = openInWord("Plan.docx");
  start();
  const std::vector<MouseEvent> presses{onTool("Rename"), onTool(tool::minimize), onTool(tool::zoom),
                                        onTool(tool::closeWindow)};
  plan->window->close();
  ASSERT_FALSE(stripShown());
  for (const auto& press : presses) view().mouseDown(press);
  mac.settle();
  EXPECT_FALSE(stripShown());
  EXPECT_TRUE(mac.alerts().shown().empty());
}

TEST_F(LateMouse, APressOnNewPressesNoMenuOnceTheLastWindowIsGone) {
  auto text = open("Text", {100, 200, 1300, 600});
  int pressed = 0;
  editor.setMenuBar({{"Apple", {}}, {"File", {{"New", [&] { ++pressed; }}}}});
  mac.activate(editor);
  start();
  const MouseEvent press = onTool(tool::newDocument);
  text.close();
  ASSERT_FALSE(stripShown());
  view().mouseDown(press);
  mac.settle();
  EXPECT_EQ(pressed, 0);
}

TEST_F(LateMouse, TheMoreToolRenamesNothingOnceTheLastWindowIsGone) {
  const MouseEvent press = onMoreOverAWindowThatIsGone();
  ASSERT_FALSE(stripShown());
  mac.menus().nextChoose({"Rename…"});
  view().mouseDown(press);
  mac.settle();
  EXPECT_TRUE(mac.alerts().shown().empty());
}

TEST_F(LateMouse, AMenuOpenedOverNoWindowClosesNoneThatOpensMeanwhile) {
  const MouseEvent press = onMoreOverAWindowThatIsGone();
  ASSERT_FALSE(stripShown());
  SimDocumentPointer notes;
  mac.menus().next([&](SimOpenMenu& menu) {
    notes = openInWord("Notes.docx");
    menu.choose({"Close all"});
  });
  view().mouseDown(press);
  mac.settle();
  ASSERT_TRUE(notes);
  EXPECT_TRUE(notes->window->exists());
}

TEST_F(LateMouse, ADragOfTheStripMovesNothingOnceItsWindowIsGoneOrFillsTheScreen) {
  auto text = open("Text");
  mac.activate(editor);
  start();
  const ScreenPoint from = strip().emptyPoint();
  text.enterFullScreen();
  ASSERT_FALSE(stripShown());
  const AxRect full = text.frame();
  dragEmptyStripLate(from);
  EXPECT_EQ(text.frame(), full);
  EXPECT_FALSE(stripShown());
  text.leaveFullScreen();
  ASSERT_TRUE(stripShown());
  text.close();
  ASSERT_FALSE(stripShown());
  dragEmptyStripLate(from);
  EXPECT_FALSE(stripShown());
}

TEST_F(LateMouse, ADragOfTheStripMovesNothingOnceItsWindowIsMinimised) {
  auto text = open("Text");
  const auto behind = open("Behind");
  mac.activate(editor);
  start();
  const ScreenPoint from = strip().emptyPoint();
  text.minimise();
  mac.settle();
  // The application goes on naming it, as some do.
  const auto& windows = pellar.tracker().windows();
  pellar.strip()->tracker(pellar.tracker(), pellar.tracker().app(), WindowList(windows), windows.front());
  ASSERT_FALSE(mac.strip().visible());
  dragEmptyStripLate(from);
  EXPECT_EQ(behind.frame(), (AxRect{100, 200, 1200, 600}));
}

TEST_F(LateMouse, AWindowDraggedUnderTheMenuBarKeepsItsHeightUntilTheReleaseIsHeard) {
  const auto text = open("Text", {100, 200, 900, 600});
  mac.activate(editor);
  start();
  const ScreenPoint from = strip().emptyPoint();
  // No button is held any more.
  view().mouseDown(at(from));
  view().mouseDragged(at({from.x, from.y + 170}));
  mac.settle();
  EXPECT_EQ(text.frame(), (AxRect{100, 30, 900, 600}));
  view().mouseDragged(at({from.x, from.y + 20}));
  view().mouseUp(at({from.x, from.y + 20}));
  mac.settle();
  EXPECT_EQ(text.frame(), (AxRect{100, 180, 900, 600}));
  expectStripOver(text);
}

}  // namespace
}  // namespace pellar
