#include <gtest/gtest.h>

#include "core/Settings.h"

namespace pellar {
namespace {

const TrackedApp editor{"com.example.editor", "Editor", std::nullopt};

TEST(Settings, StartWithEverythingFollowedAndNothingAutomatic) {
  const Settings settings;
  EXPECT_EQ(settings.apps, (std::map<std::string, bool>{
                               {"word", true}, {"excel", true}, {"powerpoint", true}, {"outlook", true}}));
  EXPECT_FALSE(settings.launchAtLogin);
  EXPECT_EQ(settings.autoSaveMinutes, 0);
  EXPECT_TRUE(settings.allApps);
  EXPECT_TRUE(settings.hiddenApps.empty());
  EXPECT_TRUE(settings.autoUpdateCheck);
  EXPECT_EQ(settings.acceptedEulaVersion, "");
}

TEST(Settings, AnOfficeApplicationIsOnUnlessSwitchedOff) {
  Settings settings;
  settings.apps = {{"word", false}, {"excel", true}};
  EXPECT_FALSE(settings.isEnabled(OfficeApp::word));
  EXPECT_TRUE(settings.isEnabled(OfficeApp::excel));
  EXPECT_TRUE(settings.isEnabled(OfficeApp::outlook)) << "no entry means on";
}

TEST(Settings, AHiddenApplicationIsNotFollowedWhateverElseSays) {
  Settings settings;
  settings.hiddenApps = {"com.microsoft.Word", "com.example.editor"};
  EXPECT_TRUE(settings.isEnabled(OfficeApp::word));
  EXPECT_FALSE(settings.follows(TrackedApp::of(OfficeApp::word)));
  EXPECT_FALSE(settings.follows(editor));
  EXPECT_TRUE(settings.follows(TrackedApp::of(OfficeApp::excel)));
}

TEST(Settings, HidingIsByTheExactIdentifier) {
  Settings settings;
  settings.hiddenApps = {"com.example.Editor", "Editor", ""};
  EXPECT_TRUE(settings.follows(editor));
}

TEST(Settings, AnOfficeApplicationFollowsItsOwnSwitch) {
  Settings settings;
  settings.allApps = false;
  settings.apps["excel"] = false;
  EXPECT_TRUE(settings.follows(TrackedApp::of(OfficeApp::word)));
  EXPECT_FALSE(settings.follows(TrackedApp::of(OfficeApp::excel)));
}

TEST(Settings, OtherApplicationsFollowTheSwitchForAll) {
  Settings settings;
  EXPECT_TRUE(settings.follows(editor));
  settings.allApps = false;
  EXPECT_FALSE(settings.follows(editor));
}

}  // namespace
}  // namespace pellar
