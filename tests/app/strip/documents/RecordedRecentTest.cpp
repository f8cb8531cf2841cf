#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string_view>
#include <system_error>

#include "tests/support/BrokenFileOperations.h"
#include "tests/support/StripStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class RecordedRecent : public StripStory {
 protected:
  // Each save puts a new file in place of the old one.
  [[nodiscard]] std::filesystem::file_time_type lastSave() {
    return std::filesystem::last_write_time(pellar.store().url());
  }
  void markSaved() { std::filesystem::last_write_time(pellar.store().url(), longAgo); }

  const std::filesystem::file_time_type longAgo{};
};

TEST_F(RecordedRecent, ADocumentSeenOpenIsEnteredWithItsApplicationAndTime) {
  open("Plan").setDocument("file:///Users/ann/My%20Plan.txt");
  open("Untitled");
  start();
  EXPECT_EQ(state().recent, (NameMap<double>{{"/Users/ann/My Plan.txt", SimMainLoop::startSeconds}}));
  EXPECT_EQ(state().recentApp, (NameMap<std::string>{{"/Users/ann/My Plan.txt", "org.example.editor"}}));
  EXPECT_EQ(StateStore(pellar.store().url()).state(), state());
}

TEST_F(RecordedRecent, ADocumentIsEnteredOnceARun) {
  auto plan = open("Plan");
  plan.setDocument("file:///plan.txt");
  start();
  plan.close();
  mac.advance(100s);
  open("Plan again").setDocument("file:///plan.txt");
  mac.settle();
  EXPECT_EQ(state().recent.at("/plan.txt"), SimMainLoop::startSeconds);
}

TEST_F(RecordedRecent, NothingIsSavedWhenNoNewDocumentIsSeen) {
  auto plan = open("Plan");
  plan.setDocument("file:///plan.txt");
  start();
  markSaved();
  plan.retitle("Plan, edited");
  mac.settle();
  EXPECT_EQ(lastSave(), longAgo);
  open("Report").setDocument("file:///report.txt");
  mac.settle();
  EXPECT_NE(lastSave(), longAgo);
}

TEST_F(RecordedRecent, DocumentsSeenTogetherAreSavedTogether) {
  for (const auto* name : {"plan", "report", "notes"})
    open(name).setDocument("file:///" + std::string(name) + ".txt");
  test::BrokenFileOperations files;
  const auto store = std::make_shared<StateStore>(pellar.store().url(), files);
  bool isShown = false;
  files.before = [&](std::string_view) {
    EXPECT_TRUE(isShown) << "a disk that takes its time does not hold up the strip";
    return std::error_code{};
  };
  const auto platform = mac.platform();
  const auto tracker = WindowTracker::create(platform.accessibility, platform.workspace, platform.mainLoop);
  const auto automation = std::make_shared<Automation>(platform);
  const auto paths = std::make_shared<DocumentPaths>(platform, tracker, automation);
  const auto controller = StripController::create(tracker, store, paths, automation,
                                                  PlaceInFront::create(platform.workspace), platform);
  controller->canCycleMayHaveChanged = [&isShown] { isShown = true; };
  tracker->start();
  mac.settle();
  EXPECT_EQ(store->state().recent.size(), 3U);
  EXPECT_EQ(std::ranges::count(files.steps, "rename"), 1);
}

TEST_F(RecordedRecent, WindowsWithoutAStripAreNotEntered) {
  pellar.store().update([](AppState& settings) { settings.settings.hiddenApps = {"org.example.editor"}; });
  open("Plan").setDocument("file:///plan.txt");
  start();
  EXPECT_TRUE(state().recent.empty());
}

class OfficePaths : public RecordedRecent {
 protected:
  OfficePaths() { start(); }
  [[nodiscard]] std::size_t asked() { return mac.scripts().sources().size(); }
};

TEST_F(OfficePaths, AnOfficeWindowGetsThePathOfTheDocumentOfItsName) {
  auto word = launchWord();
  mac.office().open(word, {.name = "Letter", .path = "/Users/ann/Letter.docx"});
  word.open("Letter.docx - Word");
  word.open("Other.docx");
  mac.settle();
  EXPECT_EQ(knownFile(*pellar.tracker().windows().at(0)), "/Users/ann/Letter.docx");
  EXPECT_EQ(knownFile(*pellar.tracker().windows().at(1)), std::nullopt);
  EXPECT_EQ(state().recentApp.at("/Users/ann/Letter.docx"), "com.microsoft.Word");
}

TEST_F(OfficePaths, ADocumentIsFoundByItsFileNameAsMuchAsByTheNameOnItsTab) {
  auto word = launchWord();
  mac.office().open(word, {.path = "/Users/ann/Letter.docx"});
  mac.office().open(word, {.path = "/Users/ann/Thesis.odt"});
  word.open("Letter - Saved to my Mac");
  word.open("Thesis.odt - Word");
  word.open("Thesis");
  mac.settle();
  EXPECT_EQ(knownFile(*pellar.tracker().windows().at(0)), "/Users/ann/Letter.docx");
  EXPECT_EQ(knownFile(*pellar.tracker().windows().at(1)), "/Users/ann/Thesis.odt");
  EXPECT_EQ(knownFile(*pellar.tracker().windows().at(2)), std::nullopt);
}

TEST_F(OfficePaths, AllWindowsTogetherAreAskedAboutOnce) {
  auto word = launchWord();
  for (const auto* title : {"A", "B", "C"}) word.open(title);
  mac.settle();
  EXPECT_EQ(asked(), 1U);
}

TEST_F(OfficePaths, AWindowNotFoundIsAskedAboutAgainAfterMoreThanThirtySeconds) {
  auto word = launchWord();
  auto letter = word.open("Letter.docx");
  mac.settle();
  EXPECT_EQ(asked(), 1U);
  mac.advance(30s);
  letter.retitle("Letter 2.docx");
  mac.settle();
  EXPECT_EQ(asked(), 1U);
  mac.advance(1s);
  mac.office().open(word, {.path = "/Users/ann/Letter 3.docx"});
  letter.retitle("Letter 3.docx");
  mac.settle();
  EXPECT_EQ(asked(), 2U);
  EXPECT_EQ(knownFile(), "/Users/ann/Letter 3.docx");
  mac.advance(100s);
  letter.moveTo({0, 300});
  mac.settle();
  EXPECT_EQ(asked(), 2U);
}

TEST_F(OfficePaths, AFoundPathIsKeptHoweverLongAnotherApplicationIsInFront) {
  auto word = launchWord();
  mac.office().open(word, {.path = "/Users/ann/Letter.docx"});
  word.open("Letter - Word");
  mac.settle();
  for (const auto absence : {0s, 31s, 3600s}) {
    mac.activate(editor);
    mac.advance(absence);
    mac.activate(word);
    mac.settle();
    EXPECT_EQ(knownFile(), "/Users/ann/Letter.docx");
    EXPECT_EQ(asked(), 1U);
  }
}

TEST_F(OfficePaths, AnAccentWrittenInOtherCharactersInTheTitleIsTheSameDocument) {
  auto word = launchWord();
  mac.office().open(word, {.name = "R\u00E9sum\u00E9.docx", .path = "/Users/ann/Re\u0301sume\u0301.docx"});
  word.open("R\u00E9sum\u00E9.docx - Word");
  mac.settle();
  mac.activate(editor);
  mac.settle();
  mac.activate(word);
  mac.settle();
  EXPECT_EQ(knownFile(), "/Users/ann/Re\u0301sume\u0301.docx");
  EXPECT_EQ(asked(), 1U);
}

TEST_F(OfficePaths, AWindowThatHasAnotherDocumentWhenItComesBackLosesThePathOfTheFirst) {
  auto word = launchWord();
  const auto document = mac.office().open(word, {.path = "/Users/ann/Letter.docx"});
  auto window = word.open("Letter.docx - Word");
  mac.settle();
  mac.activate(editor);
  mac.settle();
  document->name = "Budget.docx";
  document->path = "/Users/ann/Budget.docx";
  window.retitle("Budget.docx - Word");
  mac.activate(word);
  EXPECT_EQ(strip().tabs(), Labels{"Budget"});
  EXPECT_EQ(knownFile(), std::nullopt);
  mac.advance(31s);
  window.moveTo({0, 300});
  mac.settle();
  EXPECT_EQ(knownFile(), "/Users/ann/Budget.docx");
  EXPECT_EQ(asked(), 2U);
}

TEST_F(OfficePaths, MoreDocumentsThanAreRememberedAreAskedAboutAgain) {
  auto word = launchWord();
  const auto openLetter = [&](int number) {
    const auto name = "Letter " + std::to_string(number);
    mac.office().open(word, {.name = name, .path = "/Users/ann/" + name + ".docx"});
    word.open(name);
  };
  for (int number = 0; number <= 1000; ++number) openLetter(number);
  mac.settle();
  mac.advance(31s);
  openLetter(1001);
  mac.settle();
  EXPECT_EQ(asked(), 2U);
  mac.activate(editor);
  mac.settle();
  mac.activate(word);
  mac.settle();
  EXPECT_EQ(asked(), 3U);
  for (const auto& window : pellar.tracker().windows())
    EXPECT_EQ(knownFile(*window), "/Users/ann/" + window->title + ".docx");
}

TEST_F(OfficePaths, ADocumentThatWordNamesWithoutAPathHasNoFile) {
  mac.scripts().answer = [](const std::string&) {
    return ScriptResult{ScriptDescriptor{std::vector<ScriptDescriptor>{{"Letter\t"}}}, std::nullopt};
  };
  launchWord().open("Letter.docx");
  EXPECT_EQ(strip().tabs(), Labels{"Letter"});
  EXPECT_EQ(asked(), 1U);
  EXPECT_EQ(knownFile(), std::nullopt);
  EXPECT_TRUE(state().recent.empty());
}

TEST_F(OfficePaths, OutlookIsNotAskedForDocuments) {
  auto outlook = mac.launch({.bundleId = "com.microsoft.Outlook", .name = "Microsoft Outlook"});
  outlook.open("Inbox - Outlook");
  EXPECT_EQ(strip().tabs(), Labels{"Inbox"});
  EXPECT_EQ(asked(), 0U);
}

TEST_F(OfficePaths, OtherApplicationsAreNotAskedForNames) {
  open("Plan");
  mac.settle();
  EXPECT_EQ(asked(), 0U);
}

TEST_F(OfficePaths, ApplicationsSwitchedWhileTheyAreAskedLeaveTheStripToTheOneInFront) {
  auto word = launchWord();
  mac.office().open(word, {.path = "/Users/ann/Letter.docx"});
  word.open("Letter.docx");
  const auto plan = open("Plan");
  mac.office().beforeEvent = [&](const std::string&) {
    mac.activate(editor);
    mac.settle();
  };
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
  expectStripOver(plan);
}

}  // namespace
}  // namespace pellar
