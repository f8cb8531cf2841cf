// Starting, ending, and the surroundings in which it cannot work.

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>

#include "tests/e2e/DesktopTest.h"
#include "tests/e2e/Keys.h"
#include "tests/e2e/PopUpMenu.h"
#include "tests/support/Named.h"

namespace pellar::e2e {

namespace {

constexpr const char* savedState =
    R"({"settings":{"autoSaveMinutes":7,"allApps":true},"tags":{"Report":"red"}})";

// One line, of some length, with the line break at its end.
bool isOneSentence(const std::string& text) {
  return text.size() > 20 && text.back() == '\n' && std::count(text.begin(), text.end(), '\n') == 1;
}

class WithoutADesktop : public ::testing::Test {
 protected:
  // Runs Pellar until it gives up by itself.
  void runUntilItGivesUp(const Environment& environment) {
    folders.write(folders.stateFile(), savedState);
    Process pellar({builtProgram("pellar")}, environment, folders.root() / "pellar.errors");
    const auto ending = pellar.waitForEnd();
    errors = pellar.errors();
    ASSERT_TRUE(ending.has_value()) << "it is still running";
    ASSERT_TRUE(ending->exitCode.has_value())
        << "ended by signal " << ending->signal.value_or(0) << ": " << errors;
    EXPECT_NE(*ending->exitCode, 0);
    EXPECT_TRUE(isOneSentence(errors)) << errors;
    EXPECT_EQ(Folders::read(folders.stateFile()), savedState);
  }

  Folders folders;
  std::string errors;
};

TEST_F(WithoutADesktop, WithNoDisplayItSaysSo) {
  runUntilItGivesUp(folders.environment(""));
  EXPECT_NE(errors.find("DISPLAY"), std::string::npos) << errors;
}

TEST_F(WithoutADesktop, WithADisplayThatIsNotThereItSaysSo) {
  runUntilItGivesUp(folders.environment(":4711"));
  EXPECT_NE(errors.find(":4711"), std::string::npos) << errors;
}

TEST_F(WithoutADesktop, OnWaylandAloneItSaysThatItNeedsX11) {
  auto environment = folders.environment("");
  environment["WAYLAND_DISPLAY"] = "wayland-0";
  environment["XDG_SESSION_TYPE"] = "wayland";
  runUntilItGivesUp(environment);
  EXPECT_NE(errors.find("Wayland"), std::string::npos) << errors;
  EXPECT_NE(errors.find("X11"), std::string::npos) << errors;
}

class Starting : public DesktopTest {};

TEST_F(Starting, WhenTheConnectionIsLostItSaysSoAndEnds) {
  desktop.folders().write(desktop.folders().stateFile(), savedState);
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  strip.waitUntilOver(report);
  const auto before = state();
  desktop.server().signal(SIGKILL);
  const auto ending = pellar->waitForEnd();
  ASSERT_TRUE(ending.has_value());
  ASSERT_TRUE(ending->exitCode.has_value()) << "ended by signal " << ending->signal.value_or(0);
  EXPECT_NE(*ending->exitCode, 0);
  EXPECT_TRUE(isOneSentence(pellar->errors())) << pellar->errors();
  EXPECT_EQ(state(), before);
  pellar.reset();
}

TEST_F(Starting, BeforeAnyWindowThereIsNoStrip) {
  startPellar();
  const auto report = editor().open("Report", {200, 200, 800, 400});
  strip.waitUntilOver(report);
}

TEST_F(Starting, ItEndsInOrderWhenAskedAndTakesItsWindowsAlong) {
  for (const int request : {SIGTERM, SIGINT}) {
    const auto report = editor().open("Report", {200, 200, 800, 400});
    startPellar();
    strip.waitUntilOver(report);
    pellar->signal(request);
    const auto ending = pellar->waitForEnd();
    ASSERT_TRUE(ending.has_value());
    EXPECT_EQ(ending->exitCode, 0);
    EXPECT_EQ(pellar->errors(), "");
    desktop.observer().waitUntil("no window of Pellar is left",
                                 [this] { return strip.allWindows().empty(); });
    pellar.reset();
  }
}

TEST_F(Starting, TheToolkitsOptionsOnTheCommandLineAreNotObeyed) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  desktop.folders().settleIn();
  pellar = desktop.start({builtProgram("pellar"), "-platform", "offscreen", "-display", ":4711", "-style",
                          "nothing", "-geometry", "9x9", "--help"},
                         "pellar");
  strip.waitUntilOver(report);
}

TEST_F(Starting, TheToolkitsVariablesForItsPlatformAndStyleAreNotObeyed) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  const auto menuWith = [&](const Environment& more) {
    auto environment = desktop.environment();
    environment.insert(more.begin(), more.end());
    pellar = std::make_unique<Process>(std::vector{builtProgram("pellar")}, environment,
                                       desktop.folders().root() / "pellar.errors");
    strip.waitUntilTabs(1);
    strip.waitUntilOver(report);
    PopUpMenu menu(desktop, *pellar);
    strip.clickTab(0, 3);
    menu.waitUntilOpen();
    const auto place = menu.box();
    desktop.observer().strike(escapeKey);
    menu.waitUntilClosed();
    stopPellar();
    strip.waitUntilHidden();
    return std::pair(place.width, place.height);
  };
  const auto usual = menuWith({});
  EXPECT_EQ(menuWith({{"QT_QPA_PLATFORM", "offscreen"}}), usual);
  EXPECT_EQ(menuWith({{"QT_STYLE_OVERRIDE", "windows"}}), usual);
}

TEST_F(Starting, AStripComesBackAfterARestart) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  strip.waitUntilOver(report);
  stopPellar();
  strip.waitUntilHidden();
  startPellar();
  strip.waitUntilOver(report);
}

TEST_F(Starting, TheLogTellsThatTrackingStarted) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  strip.waitUntilOver(report);
  desktop.observer().waitUntil("the log tells it", [this] { return logLines("tracking started") > 0; });
  EXPECT_EQ(logLines("tracking started"), 1);
}

TEST_F(Starting, WithoutAWindowManagerThatListsWindowsTheLogSaysWhyThereAreNoTabs) {
  desktop.endWindowManager();
  startPellar();
  desktop.observer().waitUntil("the log tells it", [this] { return logLines("no tabs until one does") > 0; });
  EXPECT_EQ(logLines("no tabs until one does"), 1);
  EXPECT_FALSE(strip.window().has_value());
}

TEST_F(Starting, UnderALimitOnFileSizesItGoesOnWithoutSaving) {
  desktop.folders().write(desktop.folders().stateFile(), "{}");
  const auto report = editor().open("Report", {200, 200, 800, 400});
  pellar = desktop.start({"/bin/sh", "-c", "ulimit -f 0; exec \"$0\"", builtProgram("pellar")}, "pellar");
  acceptTerms();
  strip.waitUntilOver(report);
  EXPECT_EQ(state(), "{}");
}

using StateFile = test::Named<const char*>;

class AStateFile : public DesktopTest, public ::testing::WithParamInterface<StateFile> {};

TEST_P(AStateFile, ThatIsNoGoodDoesNotKeepTheStripAway) {
  desktop.folders().write(desktop.folders().stateFile(), GetParam().value);
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  acceptTerms();
  strip.waitUntilOver(report);
  strip.waitUntilTabs(1);
}

INSTANTIATE_TEST_SUITE_P(
    Files, AStateFile,
    ::testing::Values(StateFile{"empty", ""}, StateFile{"truncated", R"({"settings":{"autoSave)"},
                      StateFile{"corrupt", "\x01\xff\xfe not json"}, StateFile{"ofAnotherType", "[1,2,3]"},
                      StateFile{"ofWrongTypes",
                                R"({"tags":7,"groups":[],"settings":{"allApps":"yes"},"recent":{"a":"b"}})"},
                      StateFile{"nullOnly", "null"}),
    test::byName<const char*>);

TEST_F(Starting, AFolderInThePlaceOfTheStateFileDoesNotKeepTheStripAway) {
  std::filesystem::remove(desktop.folders().stateFile());
  std::filesystem::create_directories(desktop.folders().stateFile());
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  acceptTerms();
  strip.waitUntilOver(report);
}

TEST_F(Starting, AFileInThePlaceOfItsFolderDoesNotKeepTheStripAway) {
  std::filesystem::remove_all(desktop.folders().stateFile().parent_path());
  desktop.folders().write(desktop.folders().stateFile().parent_path(), "in the way");
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  acceptTerms();
  strip.waitUntilOver(report);
}

}  // namespace

}  // namespace pellar::e2e
