#include "app/automation/OfficeScripts.h"
#include "tests/app/automation/AutomationStory.h"

namespace pellar {
namespace {

class SimOfficeTest : public AutomationStory {
 protected:
  // The error that a script ends with; empty for none.
  std::string error(const std::optional<std::string>& script) {
    return mac.scripts().interpret(script.value()).error.value_or("");
  }
  std::string errorOfSavingAs(const std::string& name, const std::string& path) {
    return error(OfficeScripts::saveAs(OfficeApp::word, name, path));
  }
  std::string errorOfSaving() { return error(OfficeScripts::saveAll(OfficeApp::word, false)); }
};

TEST_F(SimOfficeTest, SavesWriteRealFilesBelowHome) {
  const auto plan = openInWord("Plan.docx");
  SimOffice::edit(*plan, "changed");
  EXPECT_EQ(errorOfSaving(), "");
  EXPECT_EQ(contentOf(inFolder("Plan.docx")), "changed");
  EXPECT_EQ(errorOfSavingAs("Plan.docx", inFolder("New.docx")), "");
  EXPECT_EQ(contentOf(inFolder("New.docx")), "changed");
  EXPECT_TRUE(exists(inFolder("Plan.docx"))) << "the old file stays, as in the real applications";
  EXPECT_EQ(plan->path, inFolder("New.docx"));
  EXPECT_EQ(plan->window->title(), "New.docx");
}

TEST_F(SimOfficeTest, NothingIsWrittenOutsideHome) {
  const TemporaryFolder elsewhere;
  const auto outside = (elsewhere / "Plan.docx").string();
  const auto plan = mac.office().open(word, {.path = outside, .saved = false});
  EXPECT_EQ(errorOfSaving(), "");
  EXPECT_TRUE(plan->saved);
  EXPECT_FALSE(exists(outside));
  EXPECT_NE(errorOfSavingAs("Plan.docx", (elsewhere / "New.docx").string()), "");
  EXPECT_NE(errorOfSavingAs("Plan.docx", mac.home().string() + "/../New.docx"), "");
  EXPECT_TRUE(std::filesystem::is_empty(elsewhere.path()));
}

TEST_F(SimOfficeTest, AClosedWindowClosesItsDocument) {
  const auto plan = openInWord("Plan.docx");
  plan->window->close();
  EXPECT_TRUE(mac.office().documents(word).empty());
  EXPECT_NE(errorOfSavingAs("Plan.docx", inFolder("New.docx")), "");
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
    if (event == "save as") mac.office().close(plan);
  };
  EXPECT_NE(errorOfSavingAs("Plan.docx", inFolder("New.docx")), "");
}

TEST_F(SimOfficeTest, NamesAreFoundWithoutRegardToCase) {
  openInWord("PLAN.DOCX");
  EXPECT_EQ(errorOfSavingAs("Plan.docx", inFolder("New.docx")), "");
}

TEST_F(SimOfficeTest, EveryEventRunsTheMainLoopNestedAndTakesItsTime) {
  openInWord("Plan.docx");
  word.quirks().answerTime = std::chrono::milliseconds(10);
  int turns = 0;
  mac.office().beforeEvent = [&](const std::string&) { mac.mainLoop().post([&] { ++turns; }); };
  const auto start = mac.mainLoop().uptime();
  EXPECT_EQ(errorOfSavingAs("Plan.docx", inFolder("New.docx")), "");
  EXPECT_EQ(turns, 2);
  EXPECT_EQ(mac.mainLoop().uptime() - start, std::chrono::milliseconds(20));
}

TEST_F(SimOfficeTest, ScriptsAskForOneThingAfterTheOther) {
  mac.office().open(word, {.name = "Document1"});
  openInWord("Plan.docx");
  EXPECT_EQ(error(OfficeScripts::pathsByName(OfficeApp::word)), "");
  EXPECT_EQ(error(OfficeScripts::saveAll(OfficeApp::word, true)), "");
  EXPECT_EQ(
      mac.office().events(),
      (std::vector<std::string>{"get every document", "get path", "get path", "get name", "get full name",
                                "get every document", "get path", "get path", "get saved"}));
}

TEST_F(SimOfficeTest, WithoutPermissionEveryEventFails) {
  openInWord("Plan.docx");
  mac.office().allowsControl = false;
  EXPECT_NE(error(OfficeScripts::newDocument(OfficeApp::word)), "");
  EXPECT_NE(errorOfSaving(), "");
  EXPECT_EQ(mac.office().events().size(), 2U);
}

TEST_F(SimOfficeTest, DescribesAnErrorAsTheSystemDoes) {
  mac.office().allowsControl = false;
  EXPECT_EQ(error(OfficeScripts::newDocument(OfficeApp::word)),
            "{\n"
            "    NSAppleScriptErrorMessage = \"Microsoft Word got an error: Not authorized to send Apple "
            "events.\";\n"
            "    NSAppleScriptErrorNumber = \"-1743\";\n"
            "}");
}

TEST_F(SimOfficeTest, AScriptStartsAnApplicationThatIsNotRunning) {
  EXPECT_EQ(error(OfficeScripts::saveAll(OfficeApp::excel, true)), "");
  EXPECT_EQ(mac.office().launches(), 1);
  EXPECT_TRUE(mac.workspace().isRunning(std::string(bundleID(OfficeApp::excel))));
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, word.pid()) << "behind what is in front";
}

TEST_F(SimOfficeTest, AnEventThatWasGivenUpIsHandledWhenTheApplicationGoesOn) {
  const auto plan = openInWord("Plan.docx");
  mac.office().beforeEvent = [&](const std::string& event) {
    if (event == "save as") word.freeze();
  };
  EXPECT_NE(errorOfSavingAs("Plan.docx", inFolder("New.docx")).find("-1712"), std::string::npos);
  EXPECT_FALSE(exists(inFolder("New.docx")));
  word.resume();
  mac.settle();
  EXPECT_TRUE(exists(inFolder("New.docx")));
  EXPECT_EQ(plan->path, inFolder("New.docx"));
}

TEST_F(SimOfficeTest, TimersFireWhileAScriptWaits) {
  openInWord("Plan.docx");
  word.quirks().answerTime = std::chrono::seconds(1);
  int ticks = 0;
  const auto timer = mac.mainLoop().every(std::chrono::milliseconds(400), [&] { ++ticks; });
  EXPECT_EQ(errorOfSavingAs("Plan.docx", inFolder("New.docx")), "");
  EXPECT_EQ(ticks, 5) << "in the two seconds of two events";
}

TEST_F(SimOfficeTest, AScriptWaitsUntilTheUserHasGivenAccess) {
  openInWord("Plan.docx");
  mac.office().asksForAccess = true;
  auto timer = mac.mainLoop().after(std::chrono::seconds(30), [&] { mac.office().answer(true); });
  const auto start = mac.mainLoop().uptime();
  EXPECT_EQ(errorOfSavingAs("Plan.docx", inFolder("New.docx")), "");
  EXPECT_EQ(mac.mainLoop().uptime() - start, std::chrono::seconds(30));
  timer = mac.mainLoop().after(std::chrono::seconds(30), [&] { mac.office().answer(false); });
  EXPECT_NE(errorOfSavingAs("New.docx", inFolder("Newer.docx")).find("-50"), std::string::npos);
  EXPECT_FALSE(exists(inFolder("Newer.docx")));
}

TEST_F(SimOfficeTest, AccessGivenAfterTheTimeOutSavesStill) {
  openInWord("Plan.docx");
  mac.office().asksForAccess = true;
  EXPECT_NE(errorOfSavingAs("Plan.docx", inFolder("New.docx")).find("-1712"), std::string::npos);
  EXPECT_TRUE(mac.office().isAsking());
  mac.office().answer(true);
  EXPECT_TRUE(exists(inFolder("New.docx")));
}

TEST_F(SimOfficeTest, AFileIsReplacedWhenTheUserSaysSo) {
  openInWord("Plan.docx");
  openInWord("New.docx");
  mac.office().asksBeforeReplacing = true;
  auto timer = mac.mainLoop().after(std::chrono::seconds(5), [&] { mac.office().answer(false); });
  EXPECT_NE(errorOfSavingAs("Plan.docx", inFolder("New.docx")).find("-128"), std::string::npos);
  timer = mac.mainLoop().after(std::chrono::seconds(5), [&] { mac.office().answer(true); });
  EXPECT_EQ(errorOfSavingAs("Plan.docx", inFolder("New.docx")), "");
}

TEST_F(SimOfficeTest, AnAddressInTheCloudIsNamedLikeAPath) {
  mac.office().open(word, {.name = "Letter.docx", .path = "https://d.docs.live.net/1/Letter.docx"});
  const auto result = mac.scripts().interpret(OfficeScripts::pathsByName(OfficeApp::word).value());
  ASSERT_TRUE(result.descriptor.has_value());
  EXPECT_EQ(result.descriptor->items().at(0).stringValue(),
            "Letter.docx\t/https/::d.docs.live.net:1:Letter.docx");
}

TEST_F(SimOfficeTest, ATextThatIsNoScriptFailsBeforeAnythingRuns) {
  EXPECT_NE(error("tell application \"Microsoft Word\"\nactivate\nend tell").find("-2741"),
            std::string::npos);
  EXPECT_TRUE(mac.office().events().empty());
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
