// The strip as a screen reader meets it, over the accessibility bus.

#include "tests/e2e/AssistiveTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/e2e/Keys.h"
#include "tests/e2e/PopUpMenu.h"

namespace pellar::e2e {
namespace {

using namespace std::chrono_literals;

PELLAR_FOR_EVERY_WINDOW_MANAGER(Assistive);

TEST_P(Assistive, AReaderWalksTheStripAndPressesATabAndATool) {
  openTwo();
  switchOn();
  EXPECT_EQ(lines(), (std::vector<std::string>{
                         "frame Tab strip", "page tab list Tabs", "page tab Report", "push button Close",
                         "page tab Plan", "push button Close", "text Search recent files",
                         "check box Auto-save", "push button Save all", "push button Close all",
                         "push button Groups", "push button New document", "push button Minimise",
                         "push button Zoom", "push button Close"}));
  EXPECT_EQ(element("Tab strip").box, strip.box());
  EXPECT_EQ(element("Plan").states, "selected");
  EXPECT_FALSE(element("Zoom").help.empty());
  // Where the tab is told to be, it is seen, and a click meets it.
  const Box tab = element("Report").box;
  const int marker = strip.box()->x + strip.tabs().at(0).marker;
  EXPECT_TRUE(tab.x < marker && marker < tab.x + tab.width);
  desktop.observer().click(tab.x + tab.width / 2, tab.y + tab.height / 2);
  strip.waitUntilOver(report);
  waitUntilSelected("Report");

  tell("press Plan");
  strip.waitUntilOver(plan);
  waitUntilSelected("Plan");
  tell("press Auto-save");
  desktop.observer().waitUntil("auto-save is told to be on",
                               [this] { return element("Auto-save").states == "checked"; });
  tell("press Minimise");
  desktop.observer().waitUntil("the window is minimised",
                               [this] { return desktop.observer().managedState(plan.id) == 3; });
}

TEST_P(Assistive, AReaderOpensTheMenuOfATab) {
  openTwo();
  switchOn();
  PopUpMenu menu(desktop, *pellar);
  tell("menu Report");
  menu.waitUntilOpen();
  desktop.observer().key(escapeKey, true);
  desktop.observer().key(escapeKey, false);
  menu.waitUntilClosed();
  strip.waitUntilOver(plan);
}

class AssistiveOnOneDesktop : public Assistive {};

INSTANTIATE_TEST_SUITE_P(WindowManagers, AssistiveOnOneDesktop, ::testing::Values(WindowManager::openbox),
                         [](const auto&) { return nameOf(WindowManager::openbox); });

TEST_P(AssistiveOnOneDesktop, NobodyWhoDoesNotListenFindsAnythingOfPellar) {
  openTwo();
  strip.clickTab(0);
  strip.waitUntilOver(report);
  waitUntilIdle();
  EXPECT_FALSE(isRegistered());
}

TEST_P(AssistiveOnOneDesktop, AReaderIsSwitchedOnAndOffAndOnAgainWhilePellarRuns) {
  openTwo();
  EXPECT_FALSE(isRegistered());
  switchOn();
  EXPECT_TRUE(isRegistered());
  tell("off");
  desktop.observer().waitUntil("Pellar tells nothing", [this] { return ask("read") == "-"; });
  strip.clickTab(0);
  strip.waitUntilOver(report);
  EXPECT_EQ(ask("read"), "-");
  switchOn();
  EXPECT_EQ(element("Report").states, "selected");
}

TEST_P(AssistiveOnOneDesktop, PellarStartsForAReaderThatRunsAlready) {
  report = editor().open("Report", {60, 160, 1000, 400});
  reader = desktop.start({builtProgram("e2e_reader")}, "reader");
  tell("on");
  startPellar();
  strip.waitUntilOver(report);
  desktop.observer().waitUntil("Pellar can be read", [this] { return ask("read") != "-"; });
  EXPECT_EQ(element("Report").states, "selected");
}

// Whatever else of Pellar comes up is told, too, and no more once it has gone.
TEST_P(AssistiveOnOneDesktop, TheListOfRecentFilesIsTold) {
  openTwo();
  switchOn();
  tell("press Search recent files");
  desktop.observer().waitUntil("the list is told", [this] {
    const auto all = lines();
    return std::ranges::count(all, "list Recent files") == 1;
  });
  desktop.observer().key(escapeKey, true);
  desktop.observer().key(escapeKey, false);
  desktop.observer().waitUntil("the list is told no more", [this] {
    const auto all = lines();
    return std::ranges::count(all, "list Recent files") == 0;
  });
}

TEST_P(AssistiveOnOneDesktop, WhoListensHearsWhichTabComesToTheFrontAndWhichGoes) {
  openTwo();
  switchOn();
  const auto events = desktop.start(
      {"dbus-monitor", "--address", ask("address"), "type='signal',interface='org.a11y.atspi.Event.Object'"},
      "dbus-monitor");
  // Its own arrival is the first that it tells.
  static_cast<void>(events->readLine());
  const auto hear = [&](const std::string& wanted) {
    while (events->readLine().find(wanted) == std::string::npos) {
    }
  };
  strip.clickTab(0);
  hear("string \"selected\"");
  hear("int32 1");
  editor().quit();
  hear("member=ChildrenChanged");
  hear("string \"remove\"");
}

TEST_P(AssistiveOnOneDesktop, ACallerWhoMakesNoSenseDoesNoHarm) {
  openTwo();
  switchOn();
  const auto before = lines();
  tell("abuse");
  EXPECT_EQ(lines(), before);
  EXPECT_FALSE(pellar->waitForEnd(0ms).has_value());
  strip.waitUntilOver(plan);
}

TEST_P(AssistiveOnOneDesktop, AThemeOfHighContrastPutsALineAroundTheTabInFrontAndChangesNoWord) {
  openTwo();
  switchOn();
  const auto told = ask("read");
  // At the top of a tab, over its marker.
  const auto hasLine = [this] {
    const auto window = strip.window();
    const auto picture = window ? desktop.observer().picture(*window) : std::nullopt;
    constexpr int tabTop = 3;
    return picture && std::ranges::any_of(strip.tabs(), [&](const SeenTab& tab) {
             return (picture->at(tab.marker, tabTop) & 0xffffffU) == 0xffffffU;
           });
  };
  EXPECT_FALSE(hasLine());
  editor().tell(report, "theme HighContrast");
  desktop.observer().waitUntil("the tab has a line around it", hasLine);
  EXPECT_EQ(ask("read"), told);
  editor().tell(report, "theme Adwaita");
  desktop.observer().waitUntil("the line is gone", [&] { return !hasLine(); });
  editor().tell(report, "theme HighContrast");
  desktop.observer().waitUntil("the tab has a line around it", hasLine);
  editor().tell(report, "destroy");
  strip.waitUntilTabs(1);
  desktop.observer().waitUntil("the line went with the service", [&] { return !hasLine(); });
}

TEST_P(AssistiveOnOneDesktop, LargerTextIsToldWhereItIsSeen) {
  openTwo();
  switchOn();
  desktop.setFontDots("192");
  strip.setScale(2);
  strip.waitUntilOver(plan);
  desktop.observer().waitUntil("the larger strip is told",
                               [this] { return element("Tab strip").box == strip.box(); });
  const Box seen = *strip.box();
  for (const auto& each : read()) {
    EXPECT_TRUE(each.box.x >= seen.x && each.box.x + each.box.width <= seen.x + seen.width) << each.name;
    EXPECT_TRUE(each.box.y >= seen.y && each.box.y + each.box.height <= seen.y + seen.height) << each.name;
  }
  const Box tab = element("Report").box;
  desktop.observer().click(tab.x + tab.width / 2, tab.y + tab.height / 2);
  strip.waitUntilOver(report);
  waitUntilSelected("Report");
}

// Programs of some toolkits come to the bus only when they are asked to, for which Pellar asks them.
TEST_P(AssistiveOnOneDesktop, PellarDoesNotFollowItsOwnInvitation) {
  const auto file = desktop.folders().home() / "letter.txt";
  desktop.folders().write(file, "Some text.\n");
  const auto program = desktop.start({builtProgram("qt_program"), file.string()}, "qt_program");
  const auto letter = desktop.waitForWindow("letter.txt");
  desktop.resize(letter, 1000, 400);
  startPellar();
  strip.waitUntilOver(letter);
  startReader();
  ASSERT_EQ(ask("invites"), "no");
  strip.clickTool(StripTool::saveAll);
  desktop.observer().waitUntil("programs are invited", [this] { return ask("invites") == "yes"; });
  waitUntilIdle();
  EXPECT_FALSE(isRegistered());
  // A reader is somebody else.
  switchOn();
  EXPECT_EQ(element("letter.txt").states, "selected");
}

}  // namespace
}  // namespace pellar::e2e
