#include "tests/app/automation/AutomationStory.h"

namespace pellar {
namespace {

// One script is under way at a time; the main loop goes on while its application works.
class ScriptsInTurn : public AutomationStory {
 protected:
  // Something happens while Word answers its next script.
  void whileWordIsAsked(const std::function<void()>& happens) {
    mac.office().beforeEvent = [this, happens](const std::string&) {
      mac.office().beforeEvent = nullptr;
      happens();
    };
  }

  SimDocumentPointer report = openInWord("Report.docx");
};

TEST_F(ScriptsInTurn, AnotherThatIsWantedMeanwhileIsNotRun) {
  whileWordIsAsked([&] {
    EXPECT_TRUE(automation.isBusy());
    EXPECT_TRUE(automation.pathsByName(OfficeApp::word).empty());
    EXPECT_EQ(automation.saveAll(OfficeApp::word, /*onlyModified=*/false), 0);
  });
  EXPECT_EQ(automation.pathsByName(OfficeApp::word).size(), 1U);
  EXPECT_EQ(mac.scripts().sources().size(), 1U);
  EXPECT_EQ(report->saves, 0);
  EXPECT_FALSE(automation.isBusy());
}

TEST_F(ScriptsInTurn, WhatWaitsComesAfterwardsInItsOrder) {
  std::vector<std::string> done;
  whileWordIsAsked([&] {
    for (const std::string name : {"first", "second", "third"})
      automation.whenFree([&done, name] { done.push_back(name); });
    mac.settle();
    EXPECT_TRUE(done.empty());
  });
  EXPECT_EQ(automation.pathsByName(OfficeApp::word).size(), 1U);
  mac.settle();
  EXPECT_EQ(done, (std::vector<std::string>{"first", "second", "third"}));
}

TEST_F(ScriptsInTurn, AQuestionToTheUserDoesNotHoldUpWhatWaitsBehindIt) {
  bool saved = false;
  bool savedMeanwhile = false;
  whileWordIsAsked([&] {
    automation.whenFree([&] {
      mac.settle();  // as while the question is open
      savedMeanwhile = saved;
    });
    automation.whenFree([&] { saved = automation.saveAll(OfficeApp::word, /*onlyModified=*/false) == 1; });
  });
  EXPECT_EQ(automation.pathsByName(OfficeApp::word).size(), 1U);
  mac.settle();
  EXPECT_TRUE(savedMeanwhile);
  EXPECT_EQ(report->saves, 1);
}

}  // namespace
}  // namespace pellar
