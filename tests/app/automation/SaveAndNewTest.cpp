#include "tests/app/automation/AutomationStory.h"

namespace pellar {
namespace {

class SaveDocuments : public AutomationStory {};

TEST_F(SaveDocuments, SavesOnlyWhatHasChanged) {
  const auto report = openInWord("Report.docx");
  const auto plan = openInWord("Plan.docx");
  SimOffice::edit(*plan, "a new plan");
  EXPECT_EQ(automation.saveAll(OfficeApp::word, true), 1);
  EXPECT_EQ(contentOf(inFolder("Plan.docx")), "a new plan");
  EXPECT_TRUE(plan->saved);
  EXPECT_EQ(report->saves, 0);
}

TEST_F(SaveDocuments, SavesEverythingThatHasAFile) {
  const auto report = openInWord("Report.docx");
  const auto plan = openInWord("Plan.docx");
  SimOffice::edit(*plan, "a new plan");
  EXPECT_EQ(automation.saveAll(OfficeApp::word, false), 2);
  EXPECT_EQ(report->saves, 1);
  EXPECT_EQ(plan->saves, 1);
}

TEST_F(SaveDocuments, ANeverSavedDocumentOpensNoDialog) {
  mac.office().openInWindow(word, {.name = "Document1", .saved = false});
  EXPECT_EQ(automation.saveAll(OfficeApp::word, true), 0);
  EXPECT_EQ(automation.saveAll(OfficeApp::word, false), 0);
  EXPECT_EQ(mac.office().saveDialogs(), 0);
}

TEST_F(SaveDocuments, ADocumentThatRaisesAnErrorDoesNotStopTheOthers) {
  SimOffice::edit(*openInWord("Report.docx"), "1");
  const auto broken = openInWord("Broken.docx");
  SimOffice::edit(*broken, "2");
  broken->raises = true;
  SimOffice::edit(*openInWord("Plan.docx"), "3");
  EXPECT_EQ(automation.saveAll(OfficeApp::word, true), 2);
  EXPECT_EQ(scriptErrors(), 0U);
}

TEST_F(SaveDocuments, OutlookIsNeverAsked) {
  launch(OfficeApp::outlook);
  EXPECT_EQ(automation.saveAll(OfficeApp::outlook, true), 0);
  EXPECT_EQ(automation.saveAll(OfficeApp::outlook, false), 0);
  EXPECT_TRUE(mac.scripts().sources().empty());
}

TEST_F(SaveDocuments, NoDocumentsAreNoneSaved) {
  EXPECT_EQ(automation.saveAll(OfficeApp::word, false), 0);
  EXPECT_TRUE(log.messages().empty());
}

TEST_F(SaveDocuments, AnApplicationThatDoesNotRunSavesNothing) {
  EXPECT_EQ(automation.saveAll(OfficeApp::powerpoint, true), 0);
  EXPECT_EQ(mac.office().launches(), 0) << "nor is it started";
}

TEST_F(SaveDocuments, WordQuittingInTheMiddleCountsWhatWasSaved) {
  SimOffice::edit(*openInWord("Report.docx"), "1");
  SimOffice::edit(*openInWord("Plan.docx"), "2");
  mac.office().afterEvent = [&](const std::string& event) {
    if (event == "save" && contentOf(inFolder("Plan.docx")) == "2") mac.terminate(word);
  };
  EXPECT_EQ(automation.saveAll(OfficeApp::word, true), 1);
}

TEST_F(SaveDocuments, AFrozenWordSavesNothing) {
  SimOffice::edit(*openInWord("Report.docx"), "1");
  word.freeze();
  EXPECT_EQ(automation.saveAll(OfficeApp::word, true), 0);
  EXPECT_EQ(scriptErrors(), 1U);
}

TEST_F(SaveDocuments, NonsenseCountsAsNothingSaved) {
  for (const ScriptResult& odd :
       {ScriptResult{}, ScriptResult{ScriptDescriptor{"many"}, std::nullopt},
        ScriptResult{ScriptDescriptor{std::vector{ScriptDescriptor{3}}}, std::nullopt},
        ScriptResult{ScriptDescriptor{3}, "failed after all"}}) {
    mac.scripts().answer = [odd](const std::string&) { return odd; };
    EXPECT_EQ(automation.saveAll(OfficeApp::word, true), 0);
  }
}

TEST_F(SaveDocuments, TimersGoOnWhileAnApplicationWorks) {
  SimOffice::edit(*openInWord("Report.docx"), "1");
  word.freeze();
  int ticks = 0;
  const auto timer = mac.mainLoop().every(std::chrono::seconds(1), [&] {
    if (++ticks == 5) word.resume();
  });
  EXPECT_EQ(automation.saveAll(OfficeApp::word, true), 1) << "it answered late";
  EXPECT_EQ(ticks, 5);
}

class NewDocument : public AutomationStory {};

TEST_F(NewDocument, ComesForwardInAWindowOfItsOwn) {
  const auto editor = mac.launch({.bundleId = "org.example.editor", .name = "Editor"});
  automation.newDocument(OfficeApp::word);
  mac.settle();
  ASSERT_EQ(mac.office().documents(word).size(), 1U);
  EXPECT_EQ(mac.office().documents(word).front()->path, "");
  EXPECT_EQ(mac.frontWindow()->title(), "Document1");
  EXPECT_TRUE(log.messages().empty());
}

TEST_F(NewDocument, IsOfEachApplicationsOwnKind) {
  launch(OfficeApp::excel);
  launch(OfficeApp::powerpoint);
  automation.newDocument(OfficeApp::excel);
  EXPECT_EQ(mac.frontWindow()->title(), "Workbook1");
  automation.newDocument(OfficeApp::powerpoint);
  EXPECT_EQ(mac.frontWindow()->title(), "Presentation1");
}

TEST_F(NewDocument, IsAMessageInOutlook) {
  launch(OfficeApp::outlook);
  mac.activate(word);
  automation.newDocument(OfficeApp::outlook);
  EXPECT_EQ(mac.frontWindow()->title(), "Untitled Message 1");
  EXPECT_EQ(mac.office().events(), (std::vector<std::string>{"activate", "make", "open"}));
}

TEST_F(NewDocument, DoesNotStartAnApplicationThatHasQuit) {
  mac.terminate(word);
  automation.newDocument(OfficeApp::word);
  EXPECT_EQ(mac.office().launches(), 0);
  EXPECT_TRUE(log.messages().empty());
}

}  // namespace
}  // namespace pellar
