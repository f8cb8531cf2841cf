#include <gtest/gtest.h>

#include <optional>

#include "platform/sim/faults/FaultyWorkspace.h"
#include "tests/support/MenuStory.h"

namespace pellar {
namespace {

using MenuFault = MenuStory;
using WordMenuFault = WordStory;

const std::vector<std::vector<std::string>> everyItem{{"Close"},
                                                      {"Close others"},
                                                      {"Close all"},
                                                      {"Save all"},
                                                      {"Rename…"},
                                                      {"Open containing folder"},
                                                      {"Copy path"},
                                                      {"Layout", "Tile left half"},
                                                      {"Colour tag", "Red"},
                                                      {"Colour tag", "None"}};

void chooseOne(SimOpenMenu& menu, const std::vector<std::string>& titles) {
  titles.size() == 1 ? menu.choose({titles[0]}) : menu.choose({titles[0], titles[1]});
}

TEST_F(WordMenuFault, AWindowThatClosesUnderItsMenuIsLeftAlone) {
  const auto report = openInWord("Report.docx");
  start();
  for (const auto& item : everyItem) {
    // What acts on the others, on all documents or on the file alone still does.
    if (item[0] == "Close others" || item[0] == "Close all" || item[0] == "Save all") continue;
    const auto plan = openInWord("Plan.docx");
    mac.settle();
    const auto scripts = mac.scripts().sources().size();
    const auto activations = mac.workspace().requestedActivations().size();
    const AxRect frame = report->window->frame();
    int writes = -1;
    int actions = -1;
    mac.menus().next([&](SimOpenMenu& menu) {
      plan->window->close();
      mac.settle();
      writes = mac.accessibility().roundTrips().writes;
      actions = mac.accessibility().roundTrips().actions;
      chooseOne(menu, item);
    });
    strip().rightClickTab("Plan");
    EXPECT_EQ(strip().tabs(), Labels{"Report"}) << item.back();
    EXPECT_EQ(report->window->frame(), frame) << item.back();
    EXPECT_TRUE(state().tags.empty()) << item.back();
    EXPECT_TRUE(mac.alerts().shown().empty()) << item.back();
    EXPECT_EQ(mac.workspace().requestedActivations().size(), activations) << item.back();
    EXPECT_EQ(mac.scripts().sources().size(), scripts) << item.back();
    EXPECT_EQ(mac.accessibility().roundTrips().writes, writes) << item.back();
    EXPECT_EQ(mac.accessibility().roundTrips().actions, actions) << item.back();
  }
}

TEST_F(WordMenuFault, TheApplicationMayQuitUnderItsMenu) {
  auto text = open("Text");
  start();
  const std::optional<AxRect> frame = text.frame();
  for (const auto& item : everyItem) {
    auto again = launchWord();
    mac.office().openInWindow(again, {.path = pathOf("Plan.docx")});
    mac.settle();
    mac.menus().next([&](SimOpenMenu& menu) {
      mac.terminate(word);
      mac.terminate(again);
      mac.activate(editor);
      EXPECT_EQ(strip().tabs(), Labels{"Text"});
      chooseOne(menu, item);
    });
    strip().rightClickTab("Plan");
    EXPECT_TRUE(text.exists()) << item.back();
    EXPECT_EQ(text.frame(), frame) << item.back();
    EXPECT_TRUE(state().tags.empty()) << item.back();
    EXPECT_EQ(strip().tabs(), Labels{"Text"}) << item.back();
    EXPECT_TRUE(mac.alerts().shown().empty()) << item.back();
  }
}

TEST_F(MenuFault, AnApplicationThatEndedWithoutBeingNamedGetsNoColour) {
  FaultyWorkspace workspace(mac.workspace());
  workspace.withholdsTerminatedPid = true;
  open("Plan");
  AppDelegate program(mac.platformWith(workspace));
  acceptTerms(program);
  program.applicationDidFinishLaunching();
  mac.settle();
  chooseAfter("Plan", [&] { mac.terminate(editor); }, {"Colour tag", "Red"});
  EXPECT_TRUE(saved().tags.empty());
}

TEST_F(MenuFault, ClosingActsOnTheApplicationWhoseMenuItWas) {
  auto plan = open("Plan");
  auto report = open("Report");
  auto viewer = mac.launch({.bundleId = "org.example.viewer", .name = "Viewer", .inFront = false});
  const auto picture = viewer.open("Picture");
  start();
  const auto switchOver = [&] { mac.activate(viewer); };
  chooseAfter("Plan", switchOver, {"Close others"});
  EXPECT_FALSE(report.exists());
  EXPECT_TRUE(plan.exists());
  mac.activate(editor);
  mac.settle();
  chooseAfter("Plan", switchOver, {"Close all"});
  EXPECT_FALSE(plan.exists());
  EXPECT_TRUE(picture.exists());
}

TEST_F(MenuFault, AWindowOpenedUnderTheMenuIsOneOfTheOthers) {
  open("Plan");
  start();
  chooseAfter("Plan", [&] { open("Report"); }, {"Close others"});
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
}

TEST_F(MenuFault, AWindowOfAnApplicationNoLongerInFrontIsStillTiled) {
  auto plan = open("Plan");
  auto viewer = mac.launch({.bundleId = "org.example.viewer", .name = "Viewer", .inFront = false});
  viewer.open("Picture");
  start();
  chooseAfter("Plan",
              [&] {
                mac.activate(viewer);
                mac.settle();
                plan.minimise();
              },
              {"Layout", "Tile left half"});
  EXPECT_FALSE(plan.isMinimised());
  EXPECT_EQ(plan.frame(), (AxRect{0, 57, 720, 843}));
  EXPECT_EQ(mac.frontWindow(), plan);
  expectStripOver(plan);
}

TEST_F(MenuFault, AWindowThatTheApplicationNoLongerNamesIsNotTagged) {
  auto plan = open("Plan");
  const auto report = open("Report");
  start();
  mac.menus().next([&](SimOpenMenu& menu) {
    mac.leaveNobodyInFront();
    mac.settle();
    plan.close();
    menu.choose({"Colour tag", "Red"});
  });
  strip().rightClickTab("Plan");
  EXPECT_TRUE(state().tags.empty());
}

TEST_F(MenuFault, WhileOneMenuIsOpenThereIsNoOther) {
  open("Plan");
  open("Report");
  start();
  chooseAfter("Plan", [&] { strip().rightClickTab("Report"); }, {"Close"});
  EXPECT_EQ(mac.menus().shown().size(), 1U);
  EXPECT_EQ(strip().tabs(), Labels{"Report"});
}

TEST_F(WordMenuFault, NoMenuOpensForAWindowThatClosesWhileWordIsAskedForItsFile) {
  const auto fresh = newInWord("Document1");
  static_cast<void>(openInWord("Plan.docx"));
  start();
  mac.office().beforeEvent = [&](const std::string&) {
    fresh->window->close();
    mac.settle();
  };
  strip().rightClickTab("Document1");
  EXPECT_TRUE(mac.menus().shown().empty());
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
}

TEST_F(WordMenuFault, WindowsMayCloseWhileTheGroupIsGathered) {
  const auto fresh = newInWord("Document1");
  const auto plan = openInWord("Plan.docx");
  static_cast<void>(openInWord("Report.docx"));
  start();
  mac.office().beforeEvent = [&](const std::string&) {
    fresh->window->close();
    plan->window->close();
    mac.settle();
  };
  mac.alerts().nextType("Monday");
  chooseInTool("Groups", {"Save open tabs as group…"});
  EXPECT_EQ(saved().groups.at("Monday"), (Labels{pathOf("Plan.docx"), pathOf("Report.docx")}));
}

TEST_F(MenuFault, ManyTabsWithHugeTitlesHaveTheirMenus) {
  const std::string huge(100'000, 'x');
  open(huge);
  open("bad \xFF\xC3 bytes");
  start();
  mac.menus().nextChoose({"Colour tag", "Red"});
  mac.pointer().rightClick(strip().tabPoint(0));
  EXPECT_EQ(saved().tags.at("title:" + huge), "red");
  mac.menus().nextChoose({"Colour tag", "Blue"});
  mac.pointer().rightClick(strip().tabPoint(1));
  EXPECT_EQ(saved().tags.size(), 2U);
}

TEST(MenuFaultAtTheEnd, TheProgramMayQuitUnderItsMenu) {
  for (const auto* item : {"Close all", "Copy path", "Layout"}) {
    SimMac mac;
    auto editor = mac.launch({.bundleId = "org.example.editor", .name = "Editor"});
    auto plan = editor.open("Plan");
    plan.setDocument("file:///Users/ann/Plan.txt");
    std::optional<AppDelegate> pellar(std::in_place, mac.platform());
    acceptTerms(*pellar);
    pellar->applicationDidFinishLaunching();
    mac.settle();
    mac.menus().next([&](SimOpenMenu& menu) {
      pellar.reset();
      mac.settle();
      item == std::string("Layout") ? menu.choose({"Layout", "Fill screen"}) : menu.choose({item});
    });
    mac.strip().rightClickTab("Plan.txt");
    EXPECT_TRUE(mac.panels().all().empty()) << item;
    EXPECT_EQ(mac.menus().awaited(), 0U);
  }
}

}  // namespace
}  // namespace pellar
