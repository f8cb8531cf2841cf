#include <gtest/gtest.h>

#include <chrono>
#include <map>

#include "platform/sim/TemporaryFolder.h"
#include "tests/app/StripStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class RecordedRecent : public StripStory {
 protected:
  [[nodiscard]] const AppState& state() { return pellar.store().state(); }
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
  EXPECT_EQ(state().recent,
            (std::map<std::string, double>{{"/Users/ann/My Plan.txt", SimMainLoop::startSeconds}}));
  EXPECT_EQ(state().recentApp,
            (std::map<std::string, std::string>{{"/Users/ann/My Plan.txt", "org.example.editor"}}));
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

TEST_F(RecordedRecent, WindowsWithoutAStripAreNotEntered) {
  pellar.store().update([](AppState& settings) { settings.settings.hiddenApps = {"org.example.editor"}; });
  open("Plan").setDocument("file:///plan.txt");
  start();
  EXPECT_TRUE(state().recent.empty());
}

class OfficePaths : public RecordedRecent {
 protected:
  void startWord() {
    start();
    pellar.strip()->pathsByName = [this](OfficeApp app) {
      EXPECT_EQ(app, OfficeApp::word);
      ++asked;
      return documents;
    };
  }
  StripController::DocumentPaths documents;
  int asked = 0;
};

TEST_F(OfficePaths, AnOfficeWindowGetsThePathOfTheDocumentOfItsName) {
  documents = {{"Letter", "/Users/ann/Letter.docx"}};
  startWord();
  auto word = launchWord();
  word.open("Letter.docx - Word");
  word.open("Other.docx");
  mac.settle();
  EXPECT_EQ(pellar.tracker().windows().at(0)->path, "/Users/ann/Letter.docx");
  EXPECT_EQ(pellar.tracker().windows().at(1)->path, std::nullopt);
  EXPECT_EQ(state().recentApp.at("/Users/ann/Letter.docx"), "com.microsoft.Word");
}

TEST_F(OfficePaths, AWindowNotFoundIsAskedAboutAgainAfterMoreThanThirtySeconds) {
  startWord();
  auto word = launchWord();
  auto letter = word.open("Letter.docx");
  mac.settle();
  EXPECT_EQ(asked, 1);
  mac.advance(30s);
  letter.retitle("Letter 2.docx");
  mac.settle();
  EXPECT_EQ(asked, 1);
  mac.advance(1s);
  documents = {{"Letter 3", "/letter.docx"}};
  letter.retitle("Letter 3.docx");
  mac.settle();
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(pellar.tracker().front()->path, "/letter.docx");
  mac.advance(100s);
  letter.moveTo({0, 300});
  mac.settle();
  EXPECT_EQ(asked, 2);
}

TEST_F(OfficePaths, OtherApplicationsAreNotAskedForNames) {
  startWord();
  open("Plan");
  mac.settle();
  EXPECT_EQ(asked, 0);
}

}  // namespace
}  // namespace pellar
