#include "tests/app/automation/AutomationStory.h"

namespace pellar {
namespace {

class SimOfficeTest : public AutomationStory {
 protected:
  bool runs(const std::string& lines) {
    const auto result =
        mac.scripts().interpret("tell application \"Microsoft Word\"\n" + lines + "\nend tell");
    return !result.error;
  }
  std::optional<ScriptDescriptor> value(const std::string& expression) {
    return mac.scripts()
        .interpret(
            "tell application \"Microsoft Word\"\nset d to first document whose name is "
            "\"Plan.docx\"\nreturn " +
            expression + "\nend tell")
        .descriptor;
  }
  const std::string first = "set d to first document whose name is \"Plan.docx\"\n";
};

TEST_F(SimOfficeTest, ADocumentTellsOfItself) {
  mac.office().open(word, {.path = "/Users/ann/Plan.docx"});
  EXPECT_EQ(value("name of d"), ScriptDescriptor{"Plan.docx"});
  EXPECT_EQ(value("path of d"), ScriptDescriptor{"Macintosh HD:Users:ann"});
  EXPECT_EQ(value("full name of d"), ScriptDescriptor{"Macintosh HD:Users:ann:Plan.docx"});
  EXPECT_EQ(value("saved of d"), ScriptDescriptor{"true"});
}

TEST_F(SimOfficeTest, ANeverSavedDocumentHasNoPath) {
  mac.office().open(word, {.name = "Plan.docx", .saved = false});
  EXPECT_EQ(value("path of d"), ScriptDescriptor{""});
  EXPECT_EQ(value("full name of d"), ScriptDescriptor{"Plan.docx"});
  EXPECT_EQ(value("saved of d"), ScriptDescriptor{"false"});
}

TEST_F(SimOfficeTest, SavingANeverSavedDocumentAsksTheUser) {
  mac.office().open(word, {.name = "Plan.docx"});
  EXPECT_FALSE(runs(first + "save d"));
  EXPECT_EQ(mac.office().saveDialogs(), 1);
}

TEST_F(SimOfficeTest, SavesWriteRealFilesBelowHome) {
  const auto plan = openInWord("Plan.docx");
  SimOffice::edit(*plan, "changed");
  EXPECT_TRUE(runs(first + "save d"));
  EXPECT_EQ(contentOf(inFolder("Plan.docx")), "changed");
  EXPECT_TRUE(runs(first + "save as d file name " + Automation::quoted(inFolder("New.docx"))));
  EXPECT_EQ(contentOf(inFolder("New.docx")), "changed");
  EXPECT_TRUE(exists(inFolder("Plan.docx"))) << "the old file stays, as in the real applications";
  EXPECT_EQ(plan->path, inFolder("New.docx"));
  EXPECT_EQ(plan->window->title(), "New.docx");
}

TEST_F(SimOfficeTest, NothingIsWrittenOutsideHome) {
  const TemporaryFolder elsewhere;
  const auto outside = (elsewhere / "Plan.docx").string();
  const auto plan = mac.office().open(word, {.path = outside, .saved = false});
  EXPECT_TRUE(runs(first + "save d"));
  EXPECT_TRUE(plan->saved);
  EXPECT_FALSE(exists(outside));
  EXPECT_FALSE(runs(first + "save as d file name " + Automation::quoted((elsewhere / "New.docx").string())));
  EXPECT_FALSE(
      runs(first + "save as d file name " + Automation::quoted(mac.home().string() + "/../New.docx")));
  EXPECT_TRUE(std::filesystem::is_empty(elsewhere.path()));
}

TEST_F(SimOfficeTest, AClosedWindowClosesItsDocument) {
  const auto plan = openInWord("Plan.docx");
  plan->window->close();
  EXPECT_TRUE(mac.office().documents(word).empty());
  EXPECT_FALSE(runs(first));
}

TEST_F(SimOfficeTest, DocumentsGoWithTheirApplication) {
  openInWord("Plan.docx");
  mac.terminate(word);
  const auto again = launch(OfficeApp::word);
  EXPECT_TRUE(mac.office().documents(word).empty());
  EXPECT_TRUE(mac.office().documents(again).empty());
}

TEST_F(SimOfficeTest, ADocumentClosedSinceItWasFoundIsAnError) {
  const auto plan = openInWord("Plan.docx");
  mac.office().beforeEvent = [&](const std::string& event) {
    if (event == "get name") mac.office().close(plan);
  };
  EXPECT_FALSE(runs(first + "name of d"));
}

TEST_F(SimOfficeTest, NamesAreFoundWithoutRegardToCase) {
  openInWord("PLAN.DOCX");
  EXPECT_EQ(value("name of d"), ScriptDescriptor{"PLAN.DOCX"});
}

TEST_F(SimOfficeTest, EveryEventRunsTheMainLoopNestedAndTakesItsTime) {
  openInWord("Plan.docx");
  word.quirks().answerTime = std::chrono::milliseconds(10);
  int turns = 0;
  mac.office().beforeEvent = [&](const std::string&) { mac.mainLoop().post([&] { ++turns; }); };
  const auto start = mac.mainLoop().uptime();
  EXPECT_TRUE(runs(first + "name of d"));
  EXPECT_EQ(turns, 2);
  EXPECT_EQ(mac.mainLoop().uptime() - start, std::chrono::milliseconds(20));
}

TEST_F(SimOfficeTest, WithoutPermissionEveryEventFails) {
  openInWord("Plan.docx");
  mac.office().allowsControl = false;
  EXPECT_FALSE(runs("activate"));
  EXPECT_FALSE(runs(first));
}

TEST_F(SimOfficeTest, AnAnswerReplacesTheApplications) {
  mac.scripts().answer = [](const std::string& source) {
    return ScriptResult{ScriptDescriptor{source + "!"}, std::nullopt};
  };
  EXPECT_EQ(mac.scripts().run("nonsense").descriptor, ScriptDescriptor{"nonsense!"});
  EXPECT_EQ(mac.scripts().sources(), std::vector<std::string>{"nonsense"});
}

}  // namespace
}  // namespace pellar
