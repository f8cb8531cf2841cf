#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>
#include <string_view>

#include "core/StateCoding.h"

namespace pellar {
namespace {

// The state in a file of one setting, absent when the file is refused.
std::optional<Settings> settingsIn(const std::string& members) {
  const auto state = decodeState(R"({"settings": {)" + members + "}}");
  return state ? std::optional(state->settings) : std::nullopt;
}

TEST(StateFile, IsPrettyPrintedWithSortedKeysAndEveryKeyPresent) {
  EXPECT_EQ(encodeState(AppState{}), R"({
  "groups": {},
  "recent": {},
  "recentApp": {},
  "settings": {
    "acceptedEulaVersion": "",
    "allApps": true,
    "apps": {
      "excel": true,
      "outlook": true,
      "powerpoint": true,
      "word": true
    },
    "autoSaveMinutes": 0,
    "autoUpdateCheck": true,
    "hiddenApps": [],
    "launchAtLogin": false
  },
  "tags": {}
})");
}

TEST(StateFile, KeepsEveryField) {
  AppState state;
  state.tags = {{"/a.docx", "red"}, {"title:Budget", "purple"}};
  state.groups = {{"Tuesday", {"/b.docx", "/a.docx"}}, {"", {}}};
  state.settings.apps = {{"word", false}};
  state.settings.launchAtLogin = true;
  state.settings.autoSaveMinutes = std::numeric_limits<std::int64_t>::min();
  state.settings.allApps = false;
  state.settings.hiddenApps = {"com.example.editor", "com.example.editor"};
  state.settings.autoUpdateCheck = false;
  state.settings.acceptedEulaVersion = "2025-01";
  state.recent = {{"/a.docx", 1741079727.123456}, {"/Résumé.docx", 0.1}};
  state.recentApp = {{"/a.docx", "word"}};
  EXPECT_EQ(decodeState(encodeState(state)), state);
}

TEST(StateFile, TextStaysUtf8AndTimesStayNumbers) {
  AppState state;
  state.recent = {{"/Résumé.docx", 5}};
  const std::string text = encodeState(state);
  EXPECT_NE(text.find("\"/Résumé.docx\": 5.0"), std::string::npos) << text;
}

TEST(StateFile, WhatIsMissingTakesItsDefault) {
  EXPECT_EQ(decodeState("{}"), AppState{});
  AppState expected;
  expected.settings.allApps = false;
  EXPECT_EQ(decodeState(R"({"settings": {"allApps": false}})"), expected);
  EXPECT_EQ(settingsIn("")->apps.size(), 4U);
  EXPECT_TRUE(settingsIn(R"("apps": {"word": false})")->isEnabled(OfficeApp::outlook));
  EXPECT_FALSE(settingsIn(R"("apps": {"word": false})")->isEnabled(OfficeApp::word));
}

TEST(StateFile, AKeyThatIsNullCountsAsMissing) {
  EXPECT_EQ(
      decodeState(R"({"tags": null, "groups": null, "settings": null, "recent": null, "recentApp": null})"),
      AppState{});
  EXPECT_EQ(settingsIn(R"("apps": null, "launchAtLogin": null, "autoSaveMinutes": null, "allApps": null,
                          "hiddenApps": null, "autoUpdateCheck": null, "acceptedEulaVersion": null)"),
            Settings{});
}

TEST(StateFile, ANullAmongNamesIsOfTheWrongType) {
  for (const auto* text :
       {R"({"tags": {"a": null, "b": "red"}})", R"({"groups": {"g": null}})",
        R"({"groups": {"g": ["/x", null]}})", R"({"recent": {"/r": null}})", R"({"recentApp": {"/r": null}})",
        R"({"settings": {"apps": {"word": null}}})", R"({"settings": {"hiddenApps": [null]}})"})
    EXPECT_EQ(decodeState(text), std::nullopt) << text;
}

TEST(StateFile, UnknownKeysAreIgnored) {
  EXPECT_EQ(decodeState(R"({"version": 7, "settings": {"theme": {"dark": [1, null, "x"]}}})"), AppState{});
}

TEST(StateFile, AWrongTypeAnywhereMakesTheWholeFileUnreadable) {
  for (const char* text :
       {R"({"tags": []})", R"({"tags": "x"})", R"({"tags": {"a": 1}})", R"({"tags": {"a": true}})",
        R"({"groups": []})", R"({"groups": {"g": "x"}})", R"({"groups": {"g": [1]}})",
        R"({"groups": {"g": {}}})", R"({"settings": []})", R"({"settings": 1})", R"({"recent": []})",
        R"({"recent": {"a": "1"}})", R"({"recent": {"a": true}})", R"({"recent": {"a": [1]}})",
        R"({"recentApp": {"a": 1}})", R"({"recentApp": [] })"}) {
    EXPECT_EQ(decodeState(text), std::nullopt) << text;
  }
  for (const char* members :
       {R"("apps": [])", R"("apps": {"word": 1})", R"("apps": {"word": "true"})", R"("launchAtLogin": 1)",
        R"("launchAtLogin": "false")", R"("launchAtLogin": 0)", R"("autoSaveMinutes": "5")",
        R"("autoSaveMinutes": true)", R"("autoSaveMinutes": 1.5)", R"("autoSaveMinutes": [5])",
        R"("allApps": 1.0)", R"("hiddenApps": {})", R"("hiddenApps": "x")", R"("hiddenApps": [1])",
        R"("hiddenApps": [true])", R"("autoUpdateCheck": {})", R"("acceptedEulaVersion": 1)",
        R"("acceptedEulaVersion": false)"}) {
    EXPECT_EQ(settingsIn(members), std::nullopt) << members;
  }
}

TEST(StateFile, AWholeNumberIsAGoodTimeAndAnIntegralOneAGoodInteger) {
  const auto state = decodeState(R"({"recent": {"/a": 5, "/b": 5.0, "/c": 18446744073709551615, "/d": -1}})");
  ASSERT_TRUE(state);
  EXPECT_EQ(state->recent,
            (NameMap<double>{{"/a", 5}, {"/b", 5}, {"/c", 18446744073709551616.0}, {"/d", -1}}));
  EXPECT_EQ(settingsIn(R"("autoSaveMinutes": 5.0)")->autoSaveMinutes, 5);
  EXPECT_EQ(settingsIn(R"("autoSaveMinutes": 5e1)")->autoSaveMinutes, 50);
  EXPECT_EQ(settingsIn(R"("autoSaveMinutes": -0.0)")->autoSaveMinutes, 0);
}

TEST(StateFile, IntegersAreSigned64Bit) {
  EXPECT_EQ(settingsIn(R"("autoSaveMinutes": 9223372036854775807)")->autoSaveMinutes, INT64_MAX);
  EXPECT_EQ(settingsIn(R"("autoSaveMinutes": -9223372036854775808)")->autoSaveMinutes, INT64_MIN);
  for (const char* number : {"9223372036854775808", "18446744073709551616", "-9223372036854775809", "1e19",
                             "9223372036854775808.0", "1e300"}) {
    EXPECT_EQ(settingsIn(R"("autoSaveMinutes": )" + std::string(number)), std::nullopt) << number;
  }
}

TEST(StateFile, WhatIsNoJsonObjectIsRefused) {
  using namespace std::string_view_literals;
  for (const std::string_view text : {""sv,
                                      " "sv,
                                      "null"sv,
                                      "[]"sv,
                                      "1"sv,
                                      "true"sv,
                                      "\"x\""sv,
                                      "{"sv,
                                      "}"sv,
                                      "{}}"sv,
                                      "{} x"sv,
                                      "{}\0 x"sv,
                                      "{'tags': {}}"sv,
                                      "{\"tags\": {},}"sv,
                                      "// hi\n{}"sv,
                                      "{\"recent\": {\"a\": NaN}}"sv,
                                      "{\"recent\": {\"a\": 1e999}}"sv,
                                      "{\"recent\": {\"a\": 01}}"sv,
                                      "{\"tags\": {\"a\": \"\xFF\"}}"sv,
                                      "{\"tags\": {\"\\ud800\": \"x\"}}"sv,
                                      "\0"sv,
                                      "{}\0"sv}) {
    EXPECT_EQ(decodeState(text), std::nullopt) << text;
  }
}

TEST(StateFile, ANumberTooLargeUnderAnUnknownKeyIsIgnored) {
  const std::string digits(400, '9');
  for (const std::string& number : {std::string("1e999"), std::string("-1.5E+999"), std::string(309, '9'),
                                    digits, "-" + digits, digits + ".5"}) {
    EXPECT_EQ(decodeState(R"({"x":)" + number + "}"), AppState{}) << number;
    EXPECT_EQ(decodeState(R"({"x": [1, )" + number + R"( ,2], "settings": {"y": {"z":)" + number + "}}}"),
              AppState{});
    EXPECT_EQ(decodeState(R"({"recent": {"a": )" + number + "}}"), std::nullopt)
        << "of a known key it is wrong";
    EXPECT_EQ(decodeState(R"({"settings": {"hiddenApps": [)" + number + "]}}"), std::nullopt);
    EXPECT_EQ(decodeState(R"({"settings": {"hiddenApps": )" + number + "}}"), std::nullopt);
    EXPECT_EQ(decodeState(R"({"groups": {"a": )" + number + "}}"), std::nullopt);
    EXPECT_EQ(decodeState("{" + number + ": 1}"), std::nullopt);
    EXPECT_EQ(decodeState(R"({"tags": {"\"x\\": "\": )" + number + R"("}})")->tags.at("\"x\\"),
              "\": " + number)
        << "a text stays as it is";
    EXPECT_EQ(decodeState(R"({"tags": {"a": "\")" + number + R"(\""}})")->tags.at("a"), "\"" + number + "\"");
  }
  for (const char* malformed :
       {"1e999e", "1e+", "01e999", ".1e999", "1.e999", "--1e999", "1e9-99", "+1e999"}) {
    EXPECT_EQ(decodeState(R"({"x":)" + std::string(malformed) + "}"), std::nullopt) << malformed;
  }
}

TEST(StateFile, AByteOrderMarkAndWhiteSpaceDoNotHurt) {
  EXPECT_EQ(decodeState("\xEF\xBB\xBF{}"), AppState{});
  EXPECT_EQ(decodeState("\r\n\t {} \n"), AppState{});
}

TEST(StateFile, OfAKeyGivenTwiceTheLastCounts) {
  EXPECT_EQ(decodeState(R"({"tags": {"a": "red"}, "tags": {"b": "blue"}})")->tags,
            (NameMap<std::string>{{"b", "blue"}}));
  EXPECT_EQ(decodeState(R"({"tags": {"a": "red", "a": "blue"}})")->tags.at("a"), "blue");
  EXPECT_EQ(settingsIn(R"("allApps": 1, "allApps": false)")->allApps, false);
}

TEST(StateFile, DeepNestingIsRefusedWithoutRunningOutOfStack) {
  EXPECT_EQ(decodeState(std::string(5'000'000, '[')), std::nullopt);
  std::string objects = R"({"x":)";
  for (int depth = 0; depth < 1'000'000; ++depth) objects += R"({"x":)";
  EXPECT_EQ(decodeState(objects), std::nullopt);
  const std::string balanced = R"({"x":)" + std::string(100'000, '[') + std::string(100'000, ']') + "}";
  EXPECT_EQ(decodeState(balanced), std::nullopt);
}

TEST(StateFile, ModestNestingUnderAnUnknownKeyIsIgnored) {
  EXPECT_EQ(decodeState(R"({"x":)" + std::string(500, '[') + std::string(500, ']') + "}"), AppState{});
  const std::string brackets(2000, '[');
  EXPECT_EQ(decodeState(R"({"tags": {"a": "\")" + brackets + R"("}})")->tags.at("a"), "\"" + brackets);
}

TEST(StateFile, MoreThan512ListsAndObjectsWithinOneAnotherAreTooMany) {
  const auto lists = [](std::size_t depth) {
    return R"({"x":)" + std::string(depth - 1, '[') + std::string(depth - 1, ']') + "}";
  };
  EXPECT_EQ(decodeState(lists(512)), AppState{});
  EXPECT_EQ(decodeState(lists(513)), std::nullopt);
  const auto objects = [](std::size_t depth) {
    std::string text;
    for (std::size_t each = 0; each < depth; ++each) text += R"({"x":)";
    return text + "1" + std::string(depth, '}');
  };
  EXPECT_EQ(decodeState(objects(512)), AppState{});
  EXPECT_EQ(decodeState(objects(513)), std::nullopt);
  std::string many = R"({"x":[{})";
  for (int each = 0; each < 600; ++each) many += ",{}";
  EXPECT_EQ(decodeState(many + "]}"), AppState{}) << "side by side";
}

TEST(StateFile, ManyListsSideBySideAreNoDeepNesting) {
  AppState state;
  for (int group = 0; group < 600; ++group) state.groups["group " + std::to_string(group)] = {"/a"};
  EXPECT_EQ(decodeState(encodeState(state)), state);
}

TEST(StateFile, TimesThatAreNotFiniteNeverReachItNorCostTheRest) {
  AppState state;
  state.recent = {{"/nan", std::numeric_limits<double>::quiet_NaN()},
                  {"/inf", std::numeric_limits<double>::infinity()},
                  {"/good", 5}};
  EXPECT_EQ(decodeState(encodeState(state))->recent, (NameMap<double>{{"/good", 5}}));
}

TEST(StateFile, TextsThatAreNotUtf8NeverReachItNorCostTheRest) {
  AppState state;
  state.tags = {{"\xFF", "red"}, {"/a", "\xFF"}, {"/good", "red"}};
  state.groups = {{"\xC3", {"/a"}}, {"mixed", {"/a", "\xED\xA0\x80", "/b"}}};
  state.recent = {{"/\xFF", 1}, {"/good", 2}};
  state.recentApp = {{"/\xFF", "word"}, {"/good", "\xFF"}, {"/fine", "word"}};
  state.settings.apps = {{"\xFF", false}, {"word", false}};
  state.settings.hiddenApps = {"\xFF", "com.example.editor"};
  state.settings.acceptedEulaVersion = "1\xFF";
  const auto read = decodeState(encodeState(state));
  ASSERT_TRUE(read);
  EXPECT_EQ(read->tags, (NameMap<std::string>{{"/good", "red"}}));
  EXPECT_EQ(read->groups, (NameMap<std::vector<std::string>>{{"mixed", {"/a", "/b"}}}));
  EXPECT_EQ(read->recent, (NameMap<double>{{"/good", 2}}));
  EXPECT_EQ(read->recentApp, (NameMap<std::string>{{"/fine", "word"}}));
  EXPECT_EQ(read->settings.apps, (std::map<std::string, bool>{{"word", false}}));
  EXPECT_EQ(read->settings.hiddenApps, (std::vector<std::string>{"com.example.editor"}));
  EXPECT_EQ(read->settings.acceptedEulaVersion, "");
}

TEST(StateFile, EveryNameThatIsLeftOutIsTold) {
  const auto bad = [](std::string_view text) { return std::string(text) + "\xFF"; };
  AppState state;
  state.tags = {{bad("/tagged"), "red"}, {"/good", "red"}};
  state.groups = {{bad("group"), {"/good"}}, {"Tuesday", {"/good", bad("/member")}}};
  state.recent = {{bad("/recent"), 1}, {"/good", 2}};
  state.recentApp = {{bad("/opened"), "word"}, {"/good", bad("opener")}};
  state.settings.apps = {{bad("enabled"), true}, {"word", false}};
  state.settings.hiddenApps = {bad("hidden"), "com.example.editor"};
  EXPECT_EQ(namesLeftOut(state),
            (std::set<std::string>{bad("/tagged"), bad("group"), bad("/member"), bad("/recent"),
                                   bad("/opened"), bad("opener"), bad("enabled"), bad("hidden")}));
  EXPECT_EQ(namesLeftOut(AppState{}), std::set<std::string>{});
}

}  // namespace
}  // namespace pellar
