#include <gtest/gtest.h>

#include <string>

#include "tests/support/StripStory.h"

namespace pellar {
namespace {

TEST_F(StripStory, OneWindowHasAStripWithOneTabOverIt) {
  const auto plan = open("Plan.docx");
  start();
  expectStripOver(plan);
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
  EXPECT_EQ(strip().activeTab(), "Plan");
  EXPECT_FALSE(strip().panel().isKey());
}

TEST_F(StripStory, TheStripsPanelIsAQuietOne) {
  open("Plan");
  start();
  const PanelStyle expected{
      .contentSize = {400, 32}, .canBecomeKey = true, .stationary = true, .ignoresCycle = true};
  EXPECT_EQ(strip().panel().style(), expected);
  EXPECT_EQ(dropdown().style(), (PanelStyle{.contentSize = {480, 300}, .level = PanelLevel::popUpMenu}));
}

TEST_F(StripStory, WithoutWindowsThereIsNoStrip) {
  start();
  EXPECT_FALSE(stripShown());
  auto plan = open("Plan");
  EXPECT_TRUE(stripShown());
  plan.close();
  EXPECT_FALSE(stripShown());
}

TEST_F(StripStory, TheStripFollowsEverythingThatHappensToTheWindow) {
  auto plan = open("Plan");
  auto report = open("Report");
  start();
  expectStripOver(report);
  report.moveTo({20, 300});
  expectStripOver(report);
  report.resizeTo({800, 300});
  expectStripOver(report);
  editor.focus(plan);
  expectStripOver(plan);
  EXPECT_EQ(strip().activeTab(), "Plan");
  plan.retitle("Plan of the year");
  EXPECT_EQ(strip().tabs(), (Labels{"Plan of the year", "Report"}));
  const auto notes = open("Notes", {10, 150, 1000, 300});
  expectStripOver(notes);
  EXPECT_EQ(strip().tabs(), (Labels{"Plan of the year", "Report", "Notes"}));
  EXPECT_FALSE(strip().panel().drawing().isTorn());
}

TEST_F(StripStory, TheTabsAreThoseOfTheWindowAsSoonAsTheStripIsOverIt) {
  const auto plan = open("Plan");
  open("Report", {20, 300, 1100, 500});
  start();
  editor.focus(plan);
  pellar.tracker().refresh();
  EXPECT_EQ(mac.strip().accessibilityFrame(), over(plan));
  EXPECT_EQ(mac.strip().activeTab(), "Plan");
}

TEST_F(StripStory, TheStripComesUpWhereItBelongs) {
  auto plan = open("Plan");
  start();
  EXPECT_EQ(strip().panel().cameUpAt(), strip().frame());
  plan.minimise();
  ASSERT_FALSE(stripShown());
  plan.moveTo({40, 300});
  plan.restore();
  EXPECT_EQ(strip().panel().cameUpAt(), strip().frame());
  expectStripOver(plan);
}

TEST_F(StripStory, AMinimisedWindowHasNoStripUntilItIsBack) {
  auto plan = open("Plan");
  start();
  plan.minimise();
  EXPECT_FALSE(stripShown());
  plan.restore();
  expectStripOver(plan);
}

TEST_F(StripStory, TheStripBelongsToTheWindowItIsOver) {
  const auto plan = open("Plan");
  const auto report = open("Report");
  start();
  EXPECT_EQ(strip().panel().window(), report.element());
  editor.focus(plan);
  EXPECT_EQ(strip().panel().window(), plan.element());
  // It does so while it has the keyboard, too; what comes up over it stands over all.
  pellar.strip()->openRecent();
  EXPECT_EQ(strip().panel().window(), plan.element());
  EXPECT_FALSE(dropdown().window());
}

TEST_F(StripStory, AFocusedWindowThatIsMinimisedHidesTheStrip) {
  auto plan = open("Plan");
  const auto report = open("Report");
  start();
  // The application goes on naming it, as some do.
  plan.minimise();
  editor.focus(report);
  ASSERT_TRUE(stripShown());
  const auto& windows = pellar.tracker().windows();
  pellar.strip()->tracker(pellar.tracker(), pellar.tracker().app(), WindowList(windows), windows.front());
  EXPECT_FALSE(stripShown());
}

TEST_F(StripStory, AFullScreenWindowHasNoStrip) {
  auto plan = open("Plan");
  start();
  plan.enterFullScreen();
  EXPECT_FALSE(stripShown());
  plan.leaveFullScreen();
  expectStripOver(plan);
}

TEST_F(StripStory, AWindowWithoutWidthHasNoStrip) {
  open("Plan");
  start();
  const auto front = pellar.tracker().front();
  const auto shownOverWidth = [&](double width) {
    front->frame.width = width;
    pellar.strip()->tracker(pellar.tracker(), pellar.tracker().app(), {front}, front);
    return stripShown();
  };
  for (const double width : {0.0, -40.0}) {
    EXPECT_FALSE(shownOverWidth(width)) << width;
    EXPECT_TRUE(shownOverWidth(1200));
  }
  EXPECT_TRUE(shownOverWidth(0.5));
}

TEST_F(StripStory, TheStripGoesWithTheApplicationInFront) {
  const auto plan = open("Plan");
  auto word = mac.launch({.bundleId = "com.microsoft.Word", .name = "Microsoft Word", .inFront = false});
  const auto letter = word.open("Letter.docx", {300, 250, 900, 500});
  start();
  expectStripOver(plan);
  mac.activate(word);
  expectStripOver(letter);
  EXPECT_EQ(strip().tabs(), Labels{"Letter"});
  mac.terminate(word);
  expectStripOver(plan);
  mac.terminate(editor);
  EXPECT_FALSE(stripShown());
}

TEST_F(StripStory, ApplicationsThatTheUserSwitchedOffHaveNoStrip) {
  open("Plan");
  pellar.store().update([](AppState& state) { state.settings.hiddenApps = {"org.example.editor"}; });
  start();
  EXPECT_FALSE(stripShown());
  pellar.store().update([](AppState& state) { state.settings.hiddenApps.clear(); });
  pellar.tracker().refresh();
  EXPECT_TRUE(stripShown());
}

TEST_F(StripStory, WhileTheTermsAreNotAcceptedTheStripStaysHidden) {
  open("Plan");
  start();
  pellar.strip()->locked = true;
  pellar.tracker().refresh();
  EXPECT_FALSE(stripShown());
  pellar.strip()->locked = false;
  pellar.tracker().refresh();
  EXPECT_TRUE(stripShown());
}

TEST_F(StripStory, TheStripStaysWhilePellarItselfIsInFront) {
  const auto plan = open("Plan");
  start();
  mac.activatePellar();
  expectStripOver(plan);
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
  mac.leaveNobodyInFront();
  EXPECT_FALSE(stripShown());
}

TEST_F(StripStory, WithoutAnyIdentifierToTellByTheStripStays) {
  const auto plan = open("Plan");
  mac.setPellarBundleId(std::nullopt);
  start();
  mac.leaveNobodyInFront();
  expectStripOver(plan);
}

TEST_F(StripStory, OfficeApplicationsHaveTheRenameTool) {
  open("Plan");
  start();
  EXPECT_EQ(strip().tools(), (Labels{tool::autoSaveOff, "Save all", "Close all", "Groups", "+",
                                     tool::minimize, tool::zoom, tool::closeWindow}));
  launchWord().open("Letter.docx", {100, 200, 1200, 600});
  ASSERT_FALSE(strip().tools().empty());
  EXPECT_EQ(strip().tools().front(), "Rename");
}

TEST_F(StripStory, TabsAreMarkedInTheColourOfTheirApplication) {
  open("Plan");
  start();
  const auto marks = [this] {
    std::vector<Color> colours;
    for (const auto& item : strip().panel().drawing().items())
      if (item.kind == DrawnItem::Kind::roundedRect && item.rect.size() == Size{9, 9})
        colours.push_back(item.color);
    return colours;
  };
  const auto solid = [](const RGB& rgb) {
    return std::vector<Color>{{rgb.red, rgb.green, rgb.blue, 1, std::nullopt}};
  };
  EXPECT_EQ(marks(), solid(TrackedApp{"org.example.editor", "Editor", {}}.accentRGB()));
  launchWord().open("Letter.docx");
  mac.settle();
  EXPECT_EQ(marks(), solid({0.17, 0.34, 0.60}));
}

TEST_F(StripStory, TabsBearTheColoursOfTheirTags) {
  open("Red.docx");
  open("Odd");
  auto filed = open("Filed");
  filed.setDocument("file:///Users/ann/My%20File.txt");
  open("Plain");
  pellar.store().update([](AppState& state) {
    state.tags = {{"title:Red", "red"}, {"title:Odd", "crimson"}, {"/Users/ann/My File.txt", "purple"}};
  });
  start();
  EXPECT_EQ(strip().tabs(), (Labels{"Red", "Odd", "My File.txt", "Plain"}));
  EXPECT_EQ(strip().tagOf("Red"), Color::of(SystemColor::red));
  EXPECT_EQ(strip().tagOf("Odd"), std::nullopt);
  EXPECT_EQ(strip().tagOf("My File.txt"), Color::of(SystemColor::purple));
  EXPECT_EQ(strip().tagOf("Plain"), std::nullopt);
}

TEST_F(StripStory, AWindowUnderTheMenuBarMakesRoomForTheStrip) {
  auto plan = open("Plan", {100, 25, 1200, 600});
  start();
  EXPECT_EQ(plan.frame(), (AxRect{100, 57, 1200, 568}));
  expectStripOver(plan);
  plan.moveTo({100, 56.6});
  mac.settle();
  EXPECT_EQ(plan.frame().y, 56.6);
  plan.moveTo({100, 56.4});
  mac.settle();
  EXPECT_EQ(plan.frame().y, 57);
  plan.setFrame({100, 27, 1200, 210});
  mac.settle();
  EXPECT_EQ(plan.frame(), (AxRect{100, 57, 1200, 200}));
}

TEST_F(StripStory, AfterMakingRoomTheWindowIsLookedAtAgain) {
  auto plan = open("Plan");
  editor.quirks().refusedNotifications = {"AXWindowMoved", "AXWindowResized"};
  start();
  plan.moveTo({100, 25});
  pellar.tracker().refresh();
  EXPECT_EQ(plan.frame().y, 57);
  mac.accessibility().forgetRoundTrips();
  mac.settle();
  EXPECT_GT(mac.accessibility().roundTrips().reads, 0);
}

TEST_F(StripStory, AWindowThatRefusesToMakeRoomIsAskedAgainWithTheNextReport) {
  auto plan = open("Plan", {100, 25, 1200, 600});
  plan.quirks().refusesMoves = true;
  plan.quirks().refusesSizes = true;
  start();
  expectStripOver(plan);
  mac.accessibility().forgetRoundTrips();
  mac.advance(std::chrono::seconds(60));
  EXPECT_EQ(mac.accessibility().roundTrips().total(), 0);
  plan.retitle("Plan 2");
  mac.settle();
  EXPECT_GT(mac.accessibility().roundTrips().writes, 0);
  plan.quirks().refusesMoves = false;
  plan.retitle("Plan 3");
  mac.settle();
  EXPECT_EQ(plan.frame().y, 57);
  expectStripOver(plan);
}

TEST_F(StripStory, OnAScreenWithoutMenuBarTheStripNeedsItsOwnRoomOnly) {
  mac.screens().add({1440, 0, 1600, 900}, 0, 0);
  const auto plan = open("Plan", {1500, 10, 1200, 600});
  start();
  EXPECT_EQ(plan.frame().y, 32);
  expectStripOver(plan);
}

TEST_F(StripStory, WithoutScreensNothingBreaks) {
  const auto plan = open("Plan");
  start();
  mac.screens().set({});
  pellar.tracker().refresh();
  EXPECT_EQ(strip().frame(), (ScreenRect{100, -200, 1200, 32}));
}

TEST_F(StripStory, NothingHappensWhileNothingHappens) {
  open("Plan");
  open("Report");
  start();
  // The first look for updates is over.
  mac.advance(std::chrono::seconds(30));
  const auto turns = mac.mainLoop().turns();
  mac.accessibility().forgetRoundTrips();
  mac.advance(std::chrono::minutes(10));
  EXPECT_EQ(mac.mainLoop().turns(), turns);
  EXPECT_EQ(mac.mainLoop().activeTimers(), 1U) << "only the next look for updates is to come";
  EXPECT_EQ(mac.accessibility().roundTrips().total(), 0);
}

TEST_F(StripStory, AReportThatChangesNothingDrawsAndMovesNothing) {
  open("Plan");
  start();
  const auto repaints = strip().panel().simHost().repaints().size();
  const int moves = strip().panel().frameChanges();
  for (int i = 0; i < 10; ++i) pellar.tracker().refresh();
  EXPECT_EQ(strip().panel().simHost().repaints().size(), repaints);
  EXPECT_EQ(strip().panel().frameChanges(), moves);
}

TEST_F(StripStory, FiveHundredWindowsCostOneRoundTripEachAndTwoMore) {
  for (int i = 0; i < 500; ++i) open("Window " + std::to_string(i));
  start();
  mac.accessibility().forgetRoundTrips();
  pellar.tracker().refresh();
  EXPECT_EQ(mac.accessibility().roundTrips().total(), 502);
  EXPECT_EQ(pellar.tracker().windows().size(), 500U);
  expectStripOver(*mac.frontWindow());
}

}  // namespace
}  // namespace pellar
