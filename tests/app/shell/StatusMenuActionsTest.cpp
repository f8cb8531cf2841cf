// The menu in the menu bar: what its items do.

#include "core/Log.h"
#include "tests/support/ShellStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class StatusMenuChoice : public ShellStory {
 protected:
  void choose(std::initializer_list<std::string> titles) { mac.statusBar().choose(titles); }
  [[nodiscard]] bool isChecked(const std::string& title) {
    bool checked = false;
    mac.statusBar().open([&](SimOpenMenu& open) { checked = open.item({title}).checked; });
    return checked;
  }
};

TEST_F(StatusMenuChoice, AllAppsHidesTheStripOfOtherApplicationsAndShowsItAgain) {
  editor.open("Plan");
  start();
  ASSERT_TRUE(stripShown());
  choose({"All apps"});
  EXPECT_FALSE(stripShown());
  EXPECT_FALSE(saved().allApps);
  choose({"All apps"});
  EXPECT_TRUE(stripShown());
  EXPECT_TRUE(saved().allApps);
}

TEST_F(StatusMenuChoice, HidingForTheApplicationInFrontAndShowingItAgain) {
  editor.open("Plan");
  start();
  choose({"Hide for Editor"});
  EXPECT_FALSE(stripShown());
  EXPECT_EQ(saved().hiddenApps, Rows{"org.example.editor"});
  choose({"Hidden apps", "Show org.example.editor"});
  EXPECT_TRUE(stripShown());
  EXPECT_TRUE(saved().hiddenApps.empty());
}

TEST_F(StatusMenuChoice, AHiddenApplicationComesToTheEndOfTheList) {
  change([](Settings& settings) { settings.hiddenApps = {"z.first", "a.second"}; });
  editor.open("Plan");
  start();
  choose({"Hide for Editor"});
  EXPECT_EQ(saved().hiddenApps, (Rows{"z.first", "a.second", "org.example.editor"}));
  EXPECT_EQ(menu("Hidden apps"), (Rows{"Show z.first", "Show a.second", "Show org.example.editor"}));
  choose({"Hidden apps", "Show a.second"});
  EXPECT_EQ(saved().hiddenApps, (Rows{"z.first", "org.example.editor"}));
}

TEST_F(StatusMenuChoice, SwitchingWordOffHidesItsStripAtOnce) {
  auto word = mac.launch({.bundleId = "com.microsoft.Word", .name = "Microsoft Word"});
  word.open("Report.docx");
  start();
  ASSERT_TRUE(stripShown());
  choose({"Word"});
  EXPECT_FALSE(stripShown());
  EXPECT_FALSE(saved().apps.at("word"));
  EXPECT_TRUE(saved().apps.at("excel"));
  choose({"Word"});
  EXPECT_TRUE(stripShown());
  EXPECT_TRUE(saved().apps.at("word"));
}

TEST_F(StatusMenuChoice, AnOfficeApplicationWithoutAnEntryIsSwitchedOff) {
  change([](Settings& settings) { settings.apps.clear(); });
  start();
  choose({"Outlook"});
  EXPECT_EQ(saved().apps, (std::map<std::string, bool>{{"outlook", false}}));
}

TEST_F(StatusMenuChoice, AnAutoSaveIntervalIsShownOnTheStripAtOnce) {
  editor.open("Plan", {100, 200, 1300, 600});
  start();
  choose({"Auto-save changed files", "Every 5 min"});
  EXPECT_EQ(saved().autoSaveMinutes, 5);
  EXPECT_NO_THROW(static_cast<void>(mac.strip().toolPoint(tool::autoSaveOn)));
  choose({"Auto-save changed files", "Off"});
  EXPECT_EQ(saved().autoSaveMinutes, 0);
  EXPECT_NO_THROW(static_cast<void>(mac.strip().toolPoint(tool::autoSaveOff)));
}

TEST_F(StatusMenuChoice, StartAtLoginTurnsTheLoginItemOnAndOff) {
  start();
  choose({"Start at login"});
  EXPECT_TRUE(mac.loginItem().enabled());
  EXPECT_FALSE(saved().launchAtLogin) << "the system alone keeps it";
  choose({"Start at login"});
  EXPECT_FALSE(mac.loginItem().enabled());
  choose({"Start at login"});
  EXPECT_TRUE(mac.loginItem().enabled());
  EXPECT_EQ(mac.loginItem().settingsOpened(), 0);
  EXPECT_EQ(log.messages(), Rows{"tracking started"});
}

TEST_F(StatusMenuChoice, StartAtLoginThatNeedsApprovalOpensTheSettingsUntilItHasIt) {
  start();
  mac.loginItem().needsApproval = true;
  choose({"Start at login"});
  EXPECT_EQ(mac.loginItem().settingsOpened(), 1);
  EXPECT_FALSE(isChecked("Start at login"));
  choose({"Start at login"});
  EXPECT_EQ(mac.loginItem().settingsOpened(), 2);
  EXPECT_FALSE(isChecked("Start at login"));
  mac.loginItem().switchInSettings(true);
  EXPECT_TRUE(isChecked("Start at login"));
  choose({"Start at login"});
  EXPECT_FALSE(mac.loginItem().enabled());
  EXPECT_EQ(mac.loginItem().settingsOpened(), 2);
  EXPECT_EQ(log.messages(), Rows{"tracking started"});
}

TEST_F(StatusMenuChoice, StartAtLoginThatTheUserSwitchedOffInTheSettingsLeadsBackThere) {
  start();
  choose({"Start at login"});
  mac.loginItem().switchInSettings(false);
  EXPECT_FALSE(isChecked("Start at login"));
  choose({"Start at login"});
  EXPECT_EQ(mac.loginItem().settingsOpened(), 1);
}

TEST_F(StatusMenuChoice, AFailingLoginItemIsLoggedAndTheMarkStaysTrue) {
  start();
  mac.loginItem().failure = "Operation not permitted";
  choose({"Start at login"});
  EXPECT_EQ(log.count("launch at login toggle failed: Operation not permitted"), 1);
  EXPECT_FALSE(saved().launchAtLogin);
  EXPECT_FALSE(isChecked("Start at login"));
  EXPECT_EQ(mac.loginItem().settingsOpened(), 0);
}

TEST_F(StatusMenuChoice, TurningUpdateChecksOnLooksAtOnceAndTurningThemOffDoesNot) {
  start();
  choose({"Automatically check for updates"});
  EXPECT_FALSE(saved().autoUpdateCheck);
  EXPECT_TRUE(mac.web().requests().empty());
  mac.web().answer(R"({"latest":"1.5.0"})");
  choose({"Automatically check for updates"});
  EXPECT_TRUE(saved().autoUpdateCheck);
  EXPECT_EQ(mac.web().requests().size(), 1U);
  mac.advance(1s);
  EXPECT_EQ(log.count("update available: 1.5.0 (running 1.4.0), notify=false"), 1);
  EXPECT_EQ(mac.notifications().requests(), 0);
}

TEST_F(StatusMenuChoice, CheckingNowLooksWithoutANotificationEvenWhenTheAutomaticIsOff) {
  change([](Settings& settings) { settings.autoUpdateCheck = false; });
  start();
  mac.web().answer(R"({"latest":"1.5.0"})");
  choose({"Check for updates now"});
  mac.advance(1s);
  EXPECT_EQ(log.count("update available: 1.5.0 (running 1.4.0), notify=false"), 1);
  EXPECT_TRUE(mac.notifications().shown().empty());
}

TEST_F(StatusMenuChoice, TheUpdateOpensItsPage) {
  start();
  mac.web().answer(R"({"latest":"1.5.0","url":"https://pellar.example/get/1.5.0"})");
  choose({"Check for updates now"});
  mac.advance(1s);
  choose({"Update to 1.5.0 — Download"});
  EXPECT_EQ(mac.workspace().openedUrls(), Rows{"https://pellar.example/get/1.5.0"});
}

TEST_F(StatusMenuChoice, AboutShowsItsWindowOnceMadeAndReused) {
  start();
  choose({"About Pellar"});
  EXPECT_EQ(mac.windows().visible(), Rows{aboutTitle});
  window(aboutTitle).clickClose();
  EXPECT_TRUE(mac.windows().visible().empty());
  choose({"About Pellar"});
  EXPECT_EQ(mac.windows().visible(), Rows{aboutTitle});
  EXPECT_EQ(mac.windows().made(), 1);
}

TEST_F(StatusMenuChoice, TheLogIsOpenedWithItsApplication) {
  start();
  choose({"Show log"});
  EXPECT_EQ(mac.workspace().opened(), Rows{mac.platform().folders.logFile.string()});
}

TEST_F(StatusMenuChoice, TheLogThatIsOpenedIsTheOneThatIsWritten) {
  start();
  const std::string elsewhere = mac.home() / "Elsewhere.log";
  Log::setUrl(elsewhere);
  choose({"Show log"});
  EXPECT_EQ(mac.workspace().opened(), Rows{elsewhere});
}

TEST_F(StatusMenuChoice, QuitEndsTheProgramAndWritesNothing) {
  start();
  const auto lines = log.messages();
  choose({"Quit Pellar"});
  EXPECT_TRUE(mac.program().terminated());
  EXPECT_EQ(log.messages(), lines);
}

TEST_F(StatusMenuChoice, WorksWhileThePermissionIsAwaited) {
  mac.accessibility().setTrusted(false);
  start();
  choose({"Excel"});
  choose({"Auto-save changed files", "Every 10 min"});
  EXPECT_FALSE(saved().apps.at("excel"));
  EXPECT_EQ(saved().autoSaveMinutes, 10);
  choose({"Quit Pellar"});
  EXPECT_TRUE(mac.program().terminated());
}

TEST_F(StatusMenuChoice, TheApplicationThatWasInFrontWhenTheMenuOpenedIsHidden) {
  editor.open("Plan");
  auto viewer = mac.launch({.bundleId = "org.example.viewer", .name = "Viewer", .inFront = false});
  viewer.open("Picture");
  mac.activate(editor);
  start();
  mac.statusBar().open([&](SimOpenMenu& open) {
    mac.activate(viewer);
    mac.settle();
    open.choose({"Hide for Editor"});
  });
  EXPECT_EQ(saved().hiddenApps, Rows{"org.example.editor"});
  EXPECT_TRUE(stripShown()) << "the viewer is followed";
}

TEST_F(StatusMenuChoice, AfterTheProgramEndedUnderItsMenuNothingHappens) {
  start();
  mac.statusBar().open([&](SimOpenMenu& open) {
    open.choose({"All apps"});
    pellar.reset();
  });
  EXPECT_TRUE(saved().allApps);
}

}  // namespace
}  // namespace pellar
