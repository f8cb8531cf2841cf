#include "tests/app/automation/AutomationStory.h"

namespace pellar {
namespace {

class ScriptLanguage : public AutomationStory {
 protected:
  std::optional<ScriptDescriptor> value(const std::string& source) {
    const auto result = mac.scripts().interpret(source);
    EXPECT_EQ(result.error, std::nullopt) << source;
    return result.descriptor;
  }
  // The number of the error that a script ends with; 0 for none.
  int errorOf(const std::string& source) {
    const auto result = mac.scripts().interpret(source);
    if (!result.error) return 0;
    const std::string start = "NSAppleScriptErrorNumber = \"";
    return std::stoi(result.error->substr(result.error->find(start) + start.size()));
  }
  static std::string toldToWord(const std::string& lines) {
    return "tell application \"Microsoft Word\"\n" + lines + "\nend tell";
  }
};

TEST_F(ScriptLanguage, KnowsTextsNumbersAndLists) {
  EXPECT_EQ(value("return \"a\" & \"b\""), ScriptDescriptor{"ab"});
  EXPECT_EQ(value("return \"a\" & 1 + 2"), ScriptDescriptor{"a3"});
  EXPECT_EQ(value("return 1 & \"a\""),
            ScriptDescriptor{(std::vector{ScriptDescriptor{1}, ScriptDescriptor{"a"}})});
  EXPECT_EQ(value("return {}"), ScriptDescriptor{std::vector<ScriptDescriptor>{}});
  EXPECT_EQ(value("return 5 as string"), ScriptDescriptor{"5"});
  EXPECT_EQ(value("return character id 9"), ScriptDescriptor{"\t"});
  EXPECT_EQ(value(R"(return "\"\\\n\r\t")"), ScriptDescriptor{"\"\\\n\r\t"});
  EXPECT_EQ(value("return POSIX path of \"Macintosh HD:d:a.docx\""), ScriptDescriptor{"/d/a.docx"});
}

TEST_F(ScriptLanguage, KnowsVariablesConditionsAndLoops) {
  EXPECT_EQ(value("set a to {}\nset end of a to 1\nset end of a to \"x\"\nset n to 0\n"
                  "repeat with d in a\n    try\n        set n to n + d\n    end try\nend repeat\nreturn n"),
            ScriptDescriptor{1});
  EXPECT_EQ(value("if \"A\" is \"a\" and 1 is not 2 then\nreturn \"yes\"\nend if\nreturn \"no\""),
            ScriptDescriptor{"yes"});
  EXPECT_EQ(value("if true is false then\nreturn \"yes\"\nend if\nreturn \"no\""), ScriptDescriptor{"no"});
  EXPECT_EQ(value("repeat with d in {} & 1 & 2 & 3\nif d is 2 then\nreturn d\nend if\nend repeat"),
            ScriptDescriptor{2});
}

TEST_F(ScriptLanguage, EndsWithTheValueOfItsLastLine) {
  EXPECT_EQ(value("set a to 4"), ScriptDescriptor{4});
  EXPECT_EQ(value(""), std::nullopt);
  EXPECT_EQ(value(toldToWord("make new document")), std::nullopt);
}

TEST_F(ScriptLanguage, CaseDoesNotMatterInItsWords) {
  EXPECT_EQ(value("SET Total TO 1\nReturn tOTAL"), ScriptDescriptor{1});
}

TEST_F(ScriptLanguage, RefusesWhatIsNoPartOfIt) {
  for (const std::string bad : {"tel application \"Microsoft Word\"",
                                "set to 1",
                                "set a 1",
                                "set a to",
                                "return",
                                "return (1",
                                "return {1",
                                "return \"open",
                                R"(return "\q")",
                                "return 1 2",
                                "repeat with d in {}\n",
                                "try\nend repeat",
                                "end",
                                "if 1\nend if",
                                "repeat d in {}\nend repeat",
                                "repeat with d of {}\nend repeat",
                                "return character 9",
                                "return character id \"9\"",
                                "return a as number",
                                "-- a comment",
                                "return 1 # 2",
                                "set end a to 1",
                                "return every document",
                                "save d",
                                "return POSIX of \"x\"",
                                "activate",
                                "make new document",
                                "set name of d to 1",
                                "return 99999999999",
                                "tell application Word\nend tell",
                                "tell application \"Microsoft Word\"",
                                "set set to 1"}) {
    EXPECT_NE(errorOf(bad), 0) << bad;
  }
}

TEST_F(ScriptLanguage, AnErrorOfTheLanguageIsFoundBeforeAnythingRuns) {
  EXPECT_EQ(errorOf(toldToWord("activate\nmake new workbook")), -2741);
  EXPECT_TRUE(mac.office().events().empty());
}

TEST_F(ScriptLanguage, RefusesTheWordsOfOtherApplications) {
  for (const std::string bad :
       {"every workbook", "every presentation", "make new presentation", "open (make new outgoing message)",
        "save workbook as 1 filename \"x\"", "save 1 in \"x\"", "save as 1 filename \"x\"",
        "set d to first workbook whose name is 1"})
    EXPECT_EQ(errorOf(toldToWord(bad)), -2741) << bad;
  EXPECT_EQ(errorOf("tell application \"Microsoft Excel\"\nsave as 1 file name \"x\"\nend tell"), -2741);
  EXPECT_EQ(errorOf("tell application \"Microsoft Outlook\"\nevery document\nend tell"), -2741);
}

TEST_F(ScriptLanguage, FailsAtRunTimeUnderTheSystemsNumbers) {
  EXPECT_EQ(errorOf("return a"), -2753);
  EXPECT_EQ(errorOf("if 1 then\nend if"), -1700);
  EXPECT_EQ(errorOf("return \"a\" + 1"), -1700);
  EXPECT_EQ(errorOf("return 2147483647 + 1"), -2702);
  EXPECT_EQ(errorOf("set a to 1\nset end of a to 2"), -1728);
  EXPECT_EQ(errorOf("repeat with d in 1\nend repeat"), -1728);
  EXPECT_EQ(errorOf("tell application \"Microsoft Wrod\"\nactivate\nend tell"), -1728);
  EXPECT_EQ(errorOf("tell application \"Microsoft Excel\"\nactivate\nend tell"), -600);
  EXPECT_EQ(errorOf(toldToWord("first document whose name is \"none\"")), -1728);
  EXPECT_EQ(errorOf(toldToWord("name of 1")), -1700);
}

TEST_F(ScriptLanguage, AFailureInTheMiddleIsLeftToTheTryBlockAround) {
  EXPECT_EQ(value("set a to 1\ntry\nset a to b\nset a to 2\nend try\nreturn a"), ScriptDescriptor{1});
}

TEST_F(ScriptLanguage, DescribesAnErrorAsTheSystemDoes) {
  EXPECT_EQ(mac.scripts().interpret("tell application \"Microsoft Excel\"\nactivate\nend tell").error,
            "{\n"
            "    NSAppleScriptErrorMessage = \"Microsoft Excel got an error: Application isn’t running.\";\n"
            "    NSAppleScriptErrorNumber = \"-600\";\n"
            "}");
}

}  // namespace
}  // namespace pellar
