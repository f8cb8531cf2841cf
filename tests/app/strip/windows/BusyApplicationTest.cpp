#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/MenuStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

using BusyApplication = MenuStory;
using BusyWord = WordStory;

TEST_F(BusyApplication, ItsTabMenuOpensAtOnce) {
  open("Plan");
  start();
  editor.freeze();
  const auto before = mac.mainLoop().uptime();
  mac.menus().next([&](SimOpenMenu&) { EXPECT_EQ(mac.mainLoop().uptime(), before); });
  mac.accessibility().forgetRoundTrips();
  strip().rightClickTab("Plan");
  EXPECT_EQ(mac.accessibility().roundTrips().total(), 0);
}

TEST_F(BusyWord, TheTabMenuOpensWhenWordDoesNotTellTheFile) {
  static_cast<void>(newInWord("Document1"));
  start();
  word.freeze();
  Rows rows;
  mac.menus().next([&](SimOpenMenu& menu) { rows = menu.rows(); });
  strip().rightClickTab("Document1");
  ASSERT_FALSE(rows.empty());
  EXPECT_EQ(rows.front(), "Close");
}

TEST_F(BusyApplication, AColourChosenForItsTabIsKept) {
  open("Plan");
  start();
  chooseAfter("Plan", [&] { editor.freeze(); }, {"Colour tag", "Red"});
  EXPECT_EQ(saved().tags, (NameMap<std::string>{{"title:Plan", "red"}}));
  editor.resume();
  pellar.tracker().refresh();
  mac.settle();
  EXPECT_EQ(strip().tagOf("Plan"), Color::of(SystemColor::red));
}

TEST_F(BusyApplication, AColourIsKeptAlsoWhenItsStripWentMeanwhile) {
  open("Plan");
  start();
  chooseAfter("Plan",
              [&] {
                editor.freeze();
                pellar.tracker().refresh();
                EXPECT_FALSE(stripShown());
              },
              {"Colour tag", "Red"});
  EXPECT_EQ(saved().tags, (NameMap<std::string>{{"title:Plan", "red"}}));
}

TEST_F(BusyApplication, TheOthersAreClosedOnceItAnswersAgain) {
  const auto plan = open("Plan");
  const auto report = open("Report");
  start();
  chooseAfter("Plan",
              [&] {
                editor.freeze();
                pellar.tracker().refresh();
                editor.resume();
              },
              {"Close others"});
  EXPECT_TRUE(plan.exists());
  EXPECT_FALSE(report.exists());
}

TEST_F(BusyApplication, AColourChosenForItsTabWaitsForItOnceAndForItsPictureOnce) {
  open("Plan");
  start();
  auto frozen = mac.mainLoop().uptime();
  chooseAfter("Plan",
              [&] {
                editor.freeze();
                frozen = mac.mainLoop().uptime();
              },
              {"Colour tag", "Red"});
  EXPECT_EQ(mac.mainLoop().uptime() - frozen, 2 * SimAccessibility::messagingTimeout);
}

TEST_F(BusyApplication, AWindowThatIsNamedIsThereThoughItDoesNotSayOfWhatKindItIs) {
  auto plan = open("Plan");
  start();
  chooseAfter("Plan", [&] { plan.quirks().refusedAttributes = {"AXSubrole"}; }, {"Close"});
  EXPECT_FALSE(plan.exists());
}

TEST_F(BusyApplication, NothingIsClosedOnceAllItsWindowsAreGone) {
  auto plan = open("Plan");
  auto report = open("Report");
  start();
  for (const auto* item : {"Close others", "Close all"}) {
    chooseAfter("Plan",
                [&] {
                  plan.close();
                  report.close();
                },
                {item});
    EXPECT_FALSE(stripShown());
    plan = open("Plan");
    report = open("Report");
    mac.settle();
  }
  EXPECT_EQ(strip().tabs(), (Labels{"Plan", "Report"}));
}

TEST_F(BusyWord, ARenameIsNotRefusedForABusyMoment) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  Subscription busy;
  mac.alerts().next([&](const TextAlert&) {
    word.freeze();
    busy = mac.mainLoop().after(8s, [&] { word.resume(); });
    return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, "Budget"};
  });
  choose("Plan", {"Rename…"});
  EXPECT_TRUE(exists(pathOf("Budget.docx")));
  EXPECT_FALSE(exists(pathOf("Plan.docx")));
  for (const auto& message : log.messages()) EXPECT_FALSE(message.starts_with("rename failed")) << message;
}

TEST_F(BusyWord, RenameAsksNothingAboutAWindowThatIsGone) {
  const auto plan = openInWord("Plan.docx");
  static_cast<void>(openInWord("Report.docx"));
  start();
  chooseAfter("Plan", [&] { plan->window->close(); }, {"Rename…"});
  EXPECT_TRUE(mac.alerts().shown().empty());

  const auto notes = openInWord("Notes.docx");
  notes->window->setFrame({100, 200, 250, 600});  // too narrow for the tools, which "more" has then
  mac.settle();
  mac.menus().next([&](SimOpenMenu& menu) {
    notes->window->close();
    mac.settle();
    menu.choose({"Rename…"});
  });
  strip().clickTool(tool::overflow);
  EXPECT_TRUE(mac.alerts().shown().empty());
}

TEST_F(BusyWord, TheRenameToolAsksNothingAboutAWindowThatWentUnannounced) {
  const auto plan = openInWord("Plan.docx");
  word.quirks().refusedNotifications = {"AXUIElementDestroyed", "AXFocusedWindowChanged"};
  start();
  plan->window->close();
  strip().clickTool("Rename");
  EXPECT_TRUE(mac.alerts().shown().empty());
}

TEST_F(BusyWord, NorAboutOneThatWasNeverSaved) {
  const auto fresh = newInWord("Document1");
  word.quirks().refusedNotifications = {"AXUIElementDestroyed", "AXFocusedWindowChanged"};
  start();
  fresh->window->close();
  strip().clickTool("Rename");
  EXPECT_TRUE(mac.alerts().shown().empty());
}

TEST_F(BusyWord, AWindowOfAProcessThatEndedIsGoneAlsoWhenWordIsStartedAgain) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  chooseAfter("Plan",
              [&] {
                mac.terminate(word);
                mac.settle();
                auto again = launchWord();
                mac.office().openInWindow(again, {.path = pathOf("Plan.docx")});
              },
              {"Colour tag", "Red"});
  EXPECT_TRUE(state().tags.empty());
}

}  // namespace
}  // namespace pellar
