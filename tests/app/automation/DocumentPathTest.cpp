
#include "app/automation/OfficeScripts.h"
#include "tests/app/automation/AutomationStory.h"

namespace pellar {
namespace {

using Paths = std::unordered_map<std::string, std::string>;

class DocumentPath : public AutomationStory {
 protected:
  // Word answers the look-up with these items.
  void answer(std::vector<ScriptDescriptor> items) {
    mac.scripts().answer = [items](const std::string&) {
      return ScriptResult{ScriptDescriptor{items}, std::nullopt};
    };
  }
};

TEST_F(DocumentPath, EveryDocumentWithAFileIsFoundByItsName) {
  openInWord("Report.docx");
  openInWord("Plan.docx");
  EXPECT_EQ(automation.pathsByName(OfficeApp::word),
            (Paths{{"Report.docx", inFolder("Report.docx")}, {"Plan.docx", inFolder("Plan.docx")}}));
}

TEST_F(DocumentPath, ADocumentThatWasNeverSavedIsLeftOut) {
  mac.office().openInWindow(word, {.name = "Document1", .saved = false});
  openInWord("Plan.docx");
  EXPECT_EQ(automation.pathsByName(OfficeApp::word), (Paths{{"Plan.docx", inFolder("Plan.docx")}}));
}

TEST_F(DocumentPath, ADocumentThatRaisesAnErrorIsPassedOver) {
  openInWord("Report.docx");
  openInWord("Broken.docx")->raises = true;
  openInWord("Plan.docx");
  EXPECT_EQ(automation.pathsByName(OfficeApp::word).size(), 2U);
  EXPECT_EQ(scriptErrors(), 0U);
}

TEST_F(DocumentPath, NamesMayHoldAnything) {
  for (const std::string name : {R"(say "hi".docx)", R"(back\slash.docx)", "line\nbreak.docx",
                                 "计划 Ωμέγα 😀.docx", "col:on.docx", "--comment.docx"}) {
    openInWord(name);
    EXPECT_EQ(automation.pathsByName(OfficeApp::word)[name], inFolder(name));
  }
}

TEST_F(DocumentPath, ATabInAPathStaysWhileOneInANameCutsIt) {
  mac.office().open(word, {.name = "Tab.docx", .path = inFolder("a\tb/Tab.docx")});
  mac.office().open(word, {.name = "c\td.docx", .path = inFolder("c\td.docx")});
  EXPECT_EQ(automation.pathsByName(OfficeApp::word),
            (Paths{{"Tab.docx", inFolder("a\tb/Tab.docx")}, {"c", "d.docx\t" + inFolder("c\td.docx")}}));
}

TEST_F(DocumentPath, EachApplicationIsAskedForItsOwnDocuments) {
  const auto excel = launch(OfficeApp::excel);
  const auto powerpoint = launch(OfficeApp::powerpoint);
  mac.office().open(excel, {.path = inFolder("Budget.xlsx")});
  mac.office().open(powerpoint, {.path = inFolder("Deck.pptx")});
  EXPECT_EQ(automation.pathsByName(OfficeApp::word), Paths{});
  EXPECT_EQ(automation.pathsByName(OfficeApp::excel), (Paths{{"Budget.xlsx", inFolder("Budget.xlsx")}}));
  EXPECT_EQ(automation.pathsByName(OfficeApp::powerpoint), (Paths{{"Deck.pptx", inFolder("Deck.pptx")}}));
}

TEST_F(DocumentPath, OutlookIsNeverAsked) {
  launch(OfficeApp::outlook);
  EXPECT_EQ(automation.pathsByName(OfficeApp::outlook), Paths{});
  EXPECT_TRUE(mac.scripts().sources().empty());
}

TEST_F(DocumentPath, OddItemsAreIgnored) {
  answer({ScriptDescriptor{"no tab"}, ScriptDescriptor{""}, ScriptDescriptor{std::int32_t{5}},
          ScriptDescriptor{std::vector{ScriptDescriptor{"a\t/nested"}}}, ScriptDescriptor{"b\t/b"},
          ScriptDescriptor{"b\t/later"}, ScriptDescriptor{"\t/nameless"}, ScriptDescriptor{"empty\t"}});
  EXPECT_EQ(automation.pathsByName(OfficeApp::word),
            (Paths{{"b", "/later"}, {"", "/nameless"}, {"empty", ""}}));
}

TEST_F(DocumentPath, OnlyTheFirstTabSplits) {
  answer({ScriptDescriptor{"a\t/b\tc\t"}});
  EXPECT_EQ(automation.pathsByName(OfficeApp::word), (Paths{{"a", "/b\tc\t"}}));
}

TEST_F(DocumentPath, AnAnswerThatIsNoListCountsAsNone) {
  for (const ScriptDescriptor& odd : {ScriptDescriptor{"Report.docx\t/d/Report.docx"}, ScriptDescriptor{7},
                                      ScriptDescriptor{std::vector<ScriptDescriptor>{}}}) {
    mac.scripts().answer = [odd](const std::string&) { return ScriptResult{odd, std::nullopt}; };
    EXPECT_EQ(automation.pathsByName(OfficeApp::word), Paths{});
  }
  mac.scripts().answer = [](const std::string&) { return ScriptResult{}; };
  EXPECT_EQ(automation.pathsByName(OfficeApp::word), Paths{});
  EXPECT_EQ(scriptErrors(), 0U) << "a system without scripts says nothing";
}

TEST_F(DocumentPath, HostileAnswersDoNoHarm) {
  ScriptDescriptor deep{"x\t/x"};
  for (int level = 0; level < 1000; ++level) deep = ScriptDescriptor{std::vector{std::move(deep)}};
  std::vector<ScriptDescriptor> items{std::move(deep), ScriptDescriptor{"\xFF\xC3\t/bad/\xED\xA0\x80"},
                                      ScriptDescriptor{std::string("nul\0\t/n\0l", 9)},
                                      ScriptDescriptor{std::string(1'000'000, 'x')}};
  for (int number = 0; number < 100'000; ++number)
    items.push_back(ScriptDescriptor{std::to_string(number) + ".docx\t/d/" + std::to_string(number)});
  answer(std::move(items));
  const auto paths = automation.pathsByName(OfficeApp::word);
  EXPECT_EQ(paths.size(), 100'002U);
  EXPECT_EQ(paths.at("\xFF\xC3"), "/bad/\xED\xA0\x80") << "byte for byte";
  EXPECT_EQ(paths.at(std::string("nul\0", 4)), std::string("/n\0l", 4));
  EXPECT_EQ(automation.openDocuments(OfficeApp::word).match("99999.docx - Word")->path, "/d/99999");
}

TEST_F(DocumentPath, AFailedLookUpLeavesOneLineInTheLog) {
  mac.office().allowsControl = false;
  EXPECT_EQ(automation.pathsByName(OfficeApp::word), Paths{});
  EXPECT_EQ(scriptErrors(), 1U);
  EXPECT_TRUE(log.has("applescript error: {"));
}

TEST_F(DocumentPath, AnApplicationThatIsNotRunningIsNotAsked) {
  EXPECT_EQ(automation.pathsByName(OfficeApp::excel), Paths{});
  EXPECT_TRUE(mac.scripts().sources().empty());
  EXPECT_EQ(mac.office().launches(), 0);
}

TEST_F(DocumentPath, WithoutTheUsersPermissionNothingIsFound) {
  openInWord("Report.docx");
  mac.office().allowsControl = false;
  EXPECT_EQ(automation.pathsByName(OfficeApp::word), Paths{});
  EXPECT_EQ(scriptErrors(), 1U);
}

TEST_F(DocumentPath, TheErrorIsLoggedAsTheSystemDescribesIt) {
  mac.scripts().answer = [](const std::string&) {
    return ScriptResult{ScriptDescriptor{"ignored"}, "what \xFF happened"};
  };
  EXPECT_EQ(automation.run("whatever"), std::nullopt);
  EXPECT_EQ(log.messages(), std::vector<std::string>{"applescript error: what \uFFFD happened"});
}

TEST_F(DocumentPath, ARunGivesWhatTheScriptReturned) {
  const std::string script = OfficeScripts::saveAll(OfficeApp::word, false).value();
  openInWord("Report.docx");
  EXPECT_EQ(automation.run(script), ScriptDescriptor{1});
  EXPECT_EQ(mac.scripts().sources(), std::vector<std::string>{script});
  EXPECT_EQ(log.messages(), std::vector<std::string>{});
}

TEST_F(DocumentPath, WordQuittingInTheMiddleLeavesWhatWasFound) {
  openInWord("Report.docx");
  openInWord("Plan.docx");
  int events = 0;
  mac.office().beforeEvent = [&](const std::string&) {
    if (++events == 5) mac.terminate(word);
  };
  EXPECT_EQ(automation.pathsByName(OfficeApp::word), (Paths{{"Report.docx", inFolder("Report.docx")}}));
}

TEST_F(DocumentPath, AFrozenWordHoldsTheCallUpUntilTheSystemGivesUp) {
  openInWord("Report.docx");
  word.freeze();
  const auto start = mac.mainLoop().uptime();
  EXPECT_EQ(automation.pathsByName(OfficeApp::word), Paths{});
  EXPECT_EQ(mac.mainLoop().uptime() - start, SimOffice::eventTimeout);
  EXPECT_EQ(scriptErrors(), 1U);
}

}  // namespace
}  // namespace pellar
