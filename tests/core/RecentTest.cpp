#include <gtest/gtest.h>

#include <limits>

#include "core/Recent.h"

namespace pellar {
namespace {

using Paths = std::vector<std::string>;

// What the user sees in the list, with everything left out that a test does not speak of.
struct Ask {
  NameMap<double> own;
  NameMap<double> seeds;
  std::string query;
  std::optional<OfficeApp> app;
  std::optional<std::string> appKey;
  NameMap<std::string> apps;
  std::function<bool(const std::string&)> exists = [](const std::string&) { return true; };

  [[nodiscard]] Paths list() const { return Recent::list(own, seeds, query, app, appKey, apps, exists); }
};

TEST(Recent, NothingYieldsNothing) {
  EXPECT_EQ(Ask{}.list(), Paths{});
}

TEST(Recent, NewestComesFirst) {
  Ask ask;
  ask.own = {{"/old", 1}, {"/new", 3}};
  ask.seeds = {{"/middle", 2}};
  EXPECT_EQ(ask.list(), (Paths{"/new", "/middle", "/old"}));
}

TEST(Recent, WhatWasUsedAtTheSameTimeIsInTheOrderOfThePaths) {
  Ask ask;
  ask.own = {{"/c", 1}, {"/a", 1}, {"/d", 1}};
  ask.seeds = {{"/b", 1}};
  EXPECT_EQ(ask.list(), (Paths{"/a", "/b", "/c", "/d"}));
}

TEST(Recent, APathInBothKeepsTheNewerTime) {
  Ask ask;
  ask.own = {{"/a", 100}, {"/b", 300}};
  ask.seeds = {{"/a", 200}, {"/b", 200}, {"/between100and200", 150}, {"/between200and300", 250}};
  EXPECT_EQ(ask.list(), (Paths{"/b", "/between200and300", "/a", "/between100and200"}));
}

TEST(Recent, AnOwnTimeBefore1970CountsAs1970) {
  Ask ask;
  ask.own = {{"/ancient", -50}};
  ask.seeds = {{"/older", -10}};
  EXPECT_EQ(ask.list(), (Paths{"/ancient", "/older"}));
}

TEST(Recent, AnOfficeApplicationSeesItsDocumentsWhateverTheyWereOpenedWith) {
  Ask ask;
  ask.own = {{"/a/B.DOCX", 2}, {"/a/b.pdf", 1}, {"/docx", 3}, {"/a/.docx", 4}, {"/a.docx/b", 5}};
  ask.app = OfficeApp::word;
  ask.appKey = "com.example.viewer";
  ask.apps = {{"/a/B.DOCX", "com.example.viewer"}, {"/a/b.pdf", "word"}};
  EXPECT_EQ(ask.list(), (Paths{"/a/B.DOCX"}));
}

TEST(Recent, EveryOfficeApplicationTakesItsOwnExtensions) {
  for (const OfficeApp app : allOfficeApps) {
    Ask ask;
    ask.app = app;
    for (const OfficeApp other : allOfficeApps) {
      for (const std::string_view extension : extensions(other)) ask.own["/f." + std::string(extension)] = 1;
    }
    EXPECT_EQ(ask.list().size(), extensions(app).size());
  }
}

TEST(Recent, AnotherApplicationSeesWhatWasOpenedWithIt) {
  Ask ask;
  ask.own = {{"/mine", 1}, {"/others", 2}, {"/unknown", 3}};
  ask.apps = {{"/mine", "com.example.editor"}, {"/others", "com.example.Editor"}};
  ask.appKey = "com.example.editor";
  EXPECT_EQ(ask.list(), (Paths{"/mine"}));
  ask.apps.clear();
  EXPECT_EQ(ask.list(), Paths{});
}

TEST(Recent, WithoutAnApplicationEverythingIsKept) {
  Ask ask;
  ask.own = {{"/a.docx", 1}, {"/b.txt", 2}};
  ask.apps = {{"/a.docx", "word"}};
  EXPECT_EQ(ask.list(), (Paths{"/b.txt", "/a.docx"}));
}

TEST(Recent, TheQueryIsTrimmedAndMatchesFoldersToo) {
  Ask ask;
  ask.own = {{"/Users/x/Reports/a.docx", 1}, {"/Users/x/Plans/a.docx", 2}};
  ask.query = "  REP ";
  EXPECT_EQ(ask.list(), (Paths{"/Users/x/Reports/a.docx"}));
  ask.query = "\u00A0\tplans/A\u3000";
  EXPECT_EQ(ask.list(), (Paths{"/Users/x/Plans/a.docx"}));
  ask.query = " \t ";
  EXPECT_EQ(ask.list().size(), 2U);
}

TEST(Recent, LineBreaksInTheQueryAreNotTrimmed) {
  Ask ask;
  ask.own = {{"/a", 1}};
  ask.query = "a\n";
  EXPECT_EQ(ask.list(), Paths{});
}

TEST(Recent, ANameTypedComposedFindsOneStoredDecomposed) {
  Ask ask;
  ask.own = {{"/Users/ann/Re\u0301sume\u0301.docx", 1}, {"/Users/ann/Résumé 2.docx", 2}};
  ask.query = "RÉSUMÉ";
  EXPECT_EQ(ask.list().size(), 2U);
  ask.query = "re\u0301sume\u0301";
  EXPECT_EQ(ask.list().size(), 2U);
}

TEST(Recent, QueriesInAnyAlphabetIgnoreCase) {
  Ask ask;
  ask.own = {{"/Отчёт.docx", 1}};
  ask.query = "ОТЧЁТ";
  EXPECT_EQ(ask.list().size(), 1U);
}

TEST(Recent, AGreekNameIsFoundWhateverSigmaIsTyped) {
  Ask ask;
  ask.own = {{"/Users/x/ΟΔΟΣ.docx", 1}};
  for (const char* typed : {"οδος", "οδοσ", "ΟΔΟΣ"}) {
    ask.query = typed;
    EXPECT_EQ(ask.list(), Paths{"/Users/x/ΟΔΟΣ.docx"}) << typed;
  }
}

TEST(Recent, ATurkishCapitalIIsFoundWithAPlainOne) {
  const std::string composed = "/Users/x/İstanbul.docx";
  const std::string decomposed = "/Users/x/I\u0307zmir.docx";
  Ask ask;
  ask.own = {{composed, 2}, {decomposed, 1}};
  ask.query = "istanbul";
  EXPECT_EQ(ask.list(), Paths{composed});
  for (const char* typed : {"izmir", "İzmir", "I\u0307ZMIR"}) {
    ask.query = typed;
    EXPECT_EQ(ask.list(), Paths{decomposed}) << typed;
  }
}

// Scripts tell a path composed, Office's own list decomposed.
TEST(Recent, AFileThatOfficeSpellsInAnotherWayIsListedOnce) {
  const std::string composed = "/Users/x/Résumé.docx";
  const std::string decomposed = "/Users/x/Re\u0301sume\u0301.docx";
  Ask ask;
  ask.own = {{composed, 100}, {"/z", 150}};
  ask.seeds = {{decomposed, 200}, {"/Users/x/R", 50}};
  EXPECT_EQ(ask.list(), (Paths{composed, "/z", "/Users/x/R"}));
  ask.app = std::nullopt;
  ask.appKey = "word";
  ask.apps = {{decomposed, "word"}};
  EXPECT_EQ(ask.list(), Paths{composed});
}

TEST(Recent, AQueryIsNoPattern) {
  Ask ask;
  ask.own = {{"/a.docx", 1}, {"/a*.docx", 2}};
  ask.query = "a*";
  EXPECT_EQ(ask.list(), (Paths{"/a*.docx"}));
}

TEST(Recent, BytesThatAreNoTextNeitherMatchNorBreakAnything) {
  Ask ask;
  ask.own = {{"/pl\xFF"
              "an.docx",
              1},
             {"/plan.docx", 2}};
  ask.query = "PLAN\xC3";
  EXPECT_EQ(ask.list(), Paths{});
  ask.query = "an.docx";
  EXPECT_EQ(ask.list().size(), 2U);
}

TEST(Recent, AFileThatIsGoneIsNeverListed) {
  Ask ask;
  ask.own = {{"/gone", 1000}, {"/here", 1}};
  ask.exists = [](const std::string& path) { return path == "/here"; };
  EXPECT_EQ(ask.list(), (Paths{"/here"}));
}

TEST(Recent, OnlyFilesThatPassedEverythingElseAreLookedFor) {
  Paths asked;
  Ask ask;
  ask.own = {{"/plan.docx", 1}, {"/plan.pdf", 2}, {"/report.docx", 3}};
  ask.seeds = {{"/plan.docx", 5}};
  ask.app = OfficeApp::word;
  ask.query = "plan";
  ask.exists = [&](const std::string& path) {
    asked.push_back(path);
    return true;
  };
  EXPECT_EQ(ask.list(), (Paths{"/plan.docx"}));
  EXPECT_EQ(asked, (Paths{"/plan.docx"}));
}

TEST(Recent, TimesThatAreNoNumbersComeLast) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  Ask ask;
  ask.seeds = {{"/nan", nan}, {"/past", -infinity}, {"/one", 1}, {"/future", infinity}, {"/both", nan}};
  ask.own = {{"/both", 2}};
  const Paths listed = ask.list();
  ASSERT_EQ(listed.size(), 5U);
  EXPECT_EQ(Paths(listed.begin(), listed.begin() + 3), (Paths{"/future", "/both", "/one"}));
}

TEST(Recent, ALongRecordIsListedWhole) {
  Ask ask;
  for (int index = 0; index < 2000; ++index) ask.own["/" + std::to_string(index)] = index;
  const Paths listed = ask.list();
  EXPECT_EQ(listed.size(), 2000U);
  EXPECT_EQ(listed.front(), "/1999");
}

}  // namespace
}  // namespace pellar
