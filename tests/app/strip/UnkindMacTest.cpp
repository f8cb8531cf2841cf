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

}  // namespace
}  // namespace pellar
