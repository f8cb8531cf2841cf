// The menu in the menu bar: what it shows in which situation.

#include "tests/support/ShellStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class StatusMenuRows : public ShellStory {
 protected:
  // The menu with these rows at its top and the rest as after a fresh start.
  static Rows above(Rows top) {
    const Rows rest{"---",
                    "✓ Word",
                    "✓ Excel",
                    "✓ PowerPoint",
                    "✓ Outlook",
                    "---",
                    "Auto-save changed files ▸",
                    "---",
                    "Start at login",
                    "✓ Automatically check for updates",
                    "Check for updates now",
                    "About Pellar",
                    "---",
                    "Show log",
                    "---",
                    "Quit Pellar"};
    top.insert(top.end(), rest.begin(), rest.end());
    return top;
  }
};

TEST_F(StatusMenuRows, WithNobodyTracked) {
  start();
  mac.leaveNobodyInFront();
  mac.settle();
  EXPECT_EQ(menu(), above({"✓ All apps"}));
}

TEST_F(StatusMenuRows, WithAnEditorInFrontItOffersToHideForIt) {
  editor.open("Plan");
  start();
  EXPECT_EQ(menu(), above({"✓ All apps", "Hide for Editor"}));
}

TEST_F(StatusMenuRows, WithAnOfficeApplicationInFrontItDoesNot) {
  start();
  for (const OfficeApp app : allOfficeApps) {
    mac.launch({.bundleId = std::string(bundleID(app)), .name = std::string(scriptName(app))}).open("Report");
    mac.settle();
    ASSERT_EQ(pellar->tracker().app(), TrackedApp::of(app));
    EXPECT_EQ(menu(), above({"✓ All apps"}));
  }
}

TEST_F(StatusMenuRows, WithHiddenApplications) {
  mac.workspace().installed["com.example.viewer"] = "Viewer";
  change([](Settings& settings) { settings.hiddenApps = {"org.gone.tool", "com.example.viewer"}; });
  editor.open("Plan");
  start();
  EXPECT_EQ(menu(), above({"✓ All apps", "Hide for Editor", "Hidden apps ▸"}));
  EXPECT_EQ(menu("Hidden apps"), (Rows{"Show org.gone.tool", "Show Viewer"}));
}

TEST_F(StatusMenuRows, WithOnlyTheOfficeApplicationsFollowed) {
  change([](Settings& settings) { settings.allApps = false; });
  editor.open("Plan");
  start();
  EXPECT_EQ(menu(), above({"All apps"}));
}

TEST_F(StatusMenuRows, WithOfficeApplicationsSwitchedOff) {
  change([](Settings& settings) { settings.apps = {{"excel", false}, {"outlook", false}, {"word", true}}; });
  start();
  EXPECT_EQ(menu(),
            (Rows{"✓ All apps", "Hide for Editor", "---", "✓ Word", "Excel", "✓ PowerPoint", "Outlook", "---",
                  "Auto-save changed files ▸", "---", "Start at login", "✓ Automatically check for updates",
                  "Check for updates now", "About Pellar", "---", "Show log", "---", "Quit Pellar"}));
}

TEST_F(StatusMenuRows, WithAnUpdateItStandsOutAtTheTop) {
  start();
  mac.web().answer(R"({"latest":"1.5.0"})");
  mac.advance(9s);
  EXPECT_EQ(menu(), above({"Update to 1.5.0 — Download", "---", "✓ All apps", "Hide for Editor"}));
  mac.statusBar().open([](SimOpenMenu& open) {
    EXPECT_TRUE(open.item({"Update to 1.5.0 — Download"}).prominent);
    EXPECT_FALSE(open.item({"All apps"}).prominent);
  });
}

TEST_F(StatusMenuRows, WithStartAtLoginOnAndUpdatesOff) {
  change([](Settings& settings) { settings.autoUpdateCheck = false; });
  mac.loginItem().switchInSettings(true);
  start();
  EXPECT_EQ(menu(), (Rows{"✓ All apps", "Hide for Editor", "---", "✓ Word", "✓ Excel", "✓ PowerPoint",
                          "✓ Outlook", "---", "Auto-save changed files ▸", "---", "✓ Start at login",
                          "Automatically check for updates", "Check for updates now", "About Pellar", "---",
                          "Show log", "---", "Quit Pellar"}));
}

TEST_F(StatusMenuRows, WhileThePermissionIsAwaited) {
  mac.accessibility().setTrusted(false);
  editor.open("Plan");
  start();
  EXPECT_EQ(menu(), above({"✓ All apps"}));
}

TEST_F(StatusMenuRows, WithAnUpdateAHiddenApplicationAndAnEditor) {
  change([](Settings& settings) { settings.hiddenApps = {"org.gone.tool"}; });
  editor.open("Plan");
  start();
  mac.web().answer(R"({"latest":"2"})");
  mac.advance(9s);
  EXPECT_EQ(menu(),
            above({"Update to 2 — Download", "---", "✓ All apps", "Hide for Editor", "Hidden apps ▸"}));
}

TEST_F(StatusMenuRows, WhenOnlyTheLastHiddenApplicationIsShownAgainTheSubmenuGoes) {
  change([](Settings& settings) { settings.hiddenApps = {"a.one", "a.two"}; });
  start();
  mac.statusBar().choose({"Hidden apps", "Show a.one"});
  EXPECT_EQ(menu("Hidden apps"), Rows{"Show a.two"});
  mac.statusBar().choose({"Hidden apps", "Show a.two"});
  EXPECT_EQ(menu(), above({"✓ All apps", "Hide for Editor"}));
}

TEST_F(StatusMenuRows, ExactlyTheIntervalOfTheSettingsIsChecked) {
  start();
  const auto choicesAt = [&](std::int64_t minutes) {
    pellar->store().update([&](AppState& state) { state.settings.autoSaveMinutes = minutes; });
    return menu("Auto-save changed files");
  };
  EXPECT_EQ(choicesAt(0), (Rows{"✓ Off", "Every 1 min", "Every 5 min", "Every 10 min"}));
  EXPECT_EQ(choicesAt(1), (Rows{"Off", "✓ Every 1 min", "Every 5 min", "Every 10 min"}));
  EXPECT_EQ(choicesAt(5), (Rows{"Off", "Every 1 min", "✓ Every 5 min", "Every 10 min"}));
  EXPECT_EQ(choicesAt(10), (Rows{"Off", "Every 1 min", "Every 5 min", "✓ Every 10 min"}));
  for (const std::int64_t odd : {-1, 2, 7, 60})
    EXPECT_EQ(choicesAt(odd), (Rows{"Off", "Every 1 min", "Every 5 min", "Every 10 min"}));
}

TEST_F(StatusMenuRows, TheItemShowsTheTemplateImageAndElseItsTitle) {
  start();
  EXPECT_EQ(mac.statusBar().item(), "[MenuBarTemplate, 16]");
  mac.statusBar().images.clear();
  EXPECT_EQ(mac.statusBar().item(), "⧉");
}

TEST_F(StatusMenuRows, TheItemGoesWithTheProgram) {
  start();
  EXPECT_TRUE(mac.statusBar().hasItem());
  pellar.reset();
  EXPECT_FALSE(mac.statusBar().hasItem());
}

}  // namespace
}  // namespace pellar
