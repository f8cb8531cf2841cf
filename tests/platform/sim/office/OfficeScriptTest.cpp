#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "app/automation/OfficeScripts.h"
#include "platform/sim/office/OfficeScript.h"

namespace pellar {
namespace {

using Kind = OfficeScript::Kind;

constexpr OfficeApp withDocuments[] = {OfficeApp::word, OfficeApp::excel, OfficeApp::powerpoint};

void expectToBe(Kind kind, OfficeApp app, const std::string& source) {
  const auto script = OfficeScript::of(source);
  ASSERT_TRUE(script.has_value()) << source;
  EXPECT_EQ(script->kind, kind) << source;
  EXPECT_EQ(script->app, app) << source;
}

TEST(OfficeScript, EachApplicationKnowsTheScriptsItIsSent) {
  for (const OfficeApp app : withDocuments) {
    expectToBe(Kind::pathsByName, app, OfficeScripts::pathsByName(app).value());
    expectToBe(Kind::saveChanged, app, OfficeScripts::saveAll(app, true).value());
    expectToBe(Kind::saveAll, app, OfficeScripts::saveAll(app, false).value());
    expectToBe(Kind::saveAs, app, OfficeScripts::saveAs(app, "Old", "/d/New").value());
  }
  for (const OfficeApp app : allOfficeApps)
    expectToBe(Kind::newDocument, app, OfficeScripts::newDocument(app));
}

TEST(OfficeScript, NoApplicationKnowsTheWordsOfAnother) {
  for (const auto& [right, wrong] :
       {std::pair{"document", "workbook"}, {"save as d file name", "save d in"}, {"Word", "Excel"}}) {
    std::string source = OfficeScripts::saveAs(OfficeApp::word, "Old", "/d/New").value();
    source.replace(source.find(right), std::string(right).size(), wrong);
    EXPECT_FALSE(OfficeScript::of(source)) << source;
  }
}

TEST(OfficeScript, OnlyTheWholeTextCounts) {
  const std::string source = OfficeScripts::saveAs(OfficeApp::word, "Old", "/d/New").value();
  for (std::size_t length = 0; length < source.size(); ++length)
    EXPECT_FALSE(OfficeScript::of(source.substr(0, length))) << length;
  EXPECT_FALSE(OfficeScript::of(source + "\n"));
  EXPECT_FALSE(OfficeScript::of("tell application \"Microsoft Outlook\"\nactivate\nmake new \nend tell"));
}

TEST(OfficeScript, ATextThatIsNoLiteralIsNoPartOfAScript) {
  const std::string source = OfficeScripts::saveAs(OfficeApp::word, "Old", "/d/New").value();
  const auto naming = [&](const std::string& literal) {
    std::string named = source;
    return OfficeScript::of(named.replace(named.find("\"Old\""), 5, literal));
  };
  EXPECT_EQ(naming(R"("\"\\\n\r\t")").value().documentName, "\"\\\n\r\t");
  for (const std::string bad : {"Old", "\"Old", "Old\"", R"("\q")", R"("\")", R"("O" & "ld")", R"("O"ld")"})
    EXPECT_FALSE(naming(bad)) << bad;
}

// Any bytes at all, with those that matter to the language often among them.
rc::Gen<std::string> anyText() {
  const auto letter = rc::gen::oneOf(
      rc::gen::element('"', '\\', '\n', '\r', '\t', '\0', '&', '{', '(', '$', 'n', 't', ' ', '\xFF', '\xC3'),
      rc::gen::arbitrary<char>());
  return rc::gen::container<std::string>(letter);
}

RC_GTEST_PROP(OfficeScriptProperty, NamesAndPathsArriveAsTheyWereMeant, ()) {
  const std::string name = *anyText();
  const std::string path = *anyText();
  for (const OfficeApp app : withDocuments) {
    const auto script = OfficeScript::of(OfficeScripts::saveAs(app, name, path).value());
    RC_ASSERT(script.has_value());
    RC_ASSERT(script->app == app);
    RC_ASSERT(script->documentName == name);
    RC_ASSERT(script->newPath == path);
  }
}

}  // namespace
}  // namespace pellar
