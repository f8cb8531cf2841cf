#include <filesystem>
#include <fstream>

#include "app/automation/OpenDocuments.h"
#include "tests/app/automation/AutomationStory.h"

namespace pellar {
namespace {

std::optional<std::string> pathIn(const OpenDocuments& open, const std::string& title) {
  const auto match = open.match(title);
  return match ? std::optional(match->path) : std::nullopt;
}
OpenDocuments listed(std::vector<OpenDocuments::Document> documents) {
  return OpenDocuments(std::move(documents));
}
bool isOnly(const OpenDocuments& open, const std::string& title) {
  const auto match = open.match(title);
  return match && match->isOnly;
}

TEST(OpenDocumentsMatch, AFileThatIsGoneIsTheSameHoweverItIsSpelt) {
  EXPECT_TRUE(isSameFile("/nowhere/\u00e9.docx", "/nowhere/e\u0301.docx"));
  EXPECT_FALSE(isSameFile("/nowhere/a.docx", "/nowhere/b.docx"));
}

TEST(OpenDocumentsMatch, APathWithAZeroByteLeadsToNoFile) {
  // To the system's calls it ends there.
  const std::string folder("/usr");
  EXPECT_TRUE(isSameFile(folder, folder + "/"));
  EXPECT_FALSE(isSameFile(folder + std::string("\0x", 2), folder));
  EXPECT_FALSE(isSameFile(folder, folder + std::string("\0x", 2)));
}

TEST(OpenDocumentsMatch, AWindowIsFoundByItsLabel) {
  const OpenDocuments open({{"Report.docx", "/d/Report.docx"}, {"Budget.odt", "/d/Budget.odt"}});
  EXPECT_EQ(pathIn(open, "Report.docx"), "/d/Report.docx");
  EXPECT_EQ(pathIn(open, "Report"), "/d/Report.docx");
  EXPECT_EQ(pathIn(open, "Report.docx - Read-Only - Word"), "/d/Report.docx");
  EXPECT_EQ(pathIn(open, "Report [Compatibility Mode]"), "/d/Report.docx");
  EXPECT_EQ(pathIn(open, "Budget.odt - Word"), "/d/Budget.odt");
  EXPECT_EQ(pathIn(open, "report.docx"), std::nullopt) << "case counts";
  EXPECT_EQ(pathIn(open, "Repor"), std::nullopt);
  EXPECT_EQ(pathIn(open, "Old Report.docx"), std::nullopt);
  EXPECT_TRUE(isOnly(open, "Report"));
}

TEST(OpenDocumentsMatch, OfTwoWithOneLabelTheOneWhoseWholeNameStandsInTheTitleWins) {
  for (const bool turned : {false, true}) {
    std::vector<OpenDocuments::Document> both{{"Letter.docx", "/d/Letter.docx"},
                                              {"Letter.doc", "/d/Letter.doc"}};
    if (turned) std::swap(both[0], both[1]);
    const OpenDocuments open(both);
    EXPECT_EQ(pathIn(open, "Letter.docx - Word"), "/d/Letter.docx");
    EXPECT_EQ(pathIn(open, "Letter.doc [Compatibility Mode] - Word"), "/d/Letter.doc");
    EXPECT_TRUE(isOnly(open, "Letter.doc"));
    EXPECT_TRUE(pathIn(open, "Letter").has_value()) << "either will do";
    EXPECT_FALSE(isOnly(open, "Letter")) << "but as a guess";
  }
}

TEST(OpenDocumentsMatch, LettersMayBeComposedInOneAndNotInTheOther) {
  const OpenDocuments open({{"U\u0308bersicht.docx", "/d/1"}, {"\u00DCbersicht.rtf", "/d/2"}});
  EXPECT_EQ(pathIn(open, "\u00DCbersicht.docx - Word"), "/d/1");
  EXPECT_EQ(pathIn(open, "U\u0308bersicht.rtf - Word"), "/d/2");
  EXPECT_TRUE(pathIn(open, "\u00DCbersicht").has_value());
}

TEST(OpenDocumentsMatch, ANameThatLooksLikeASuffixIsTheWholeName) {
  const OpenDocuments open({{"Plan - Saved", "/d/saved"}, {"Plan", "/d/plain"}});
  EXPECT_EQ(pathIn(open, "Plan - Saved"), "/d/plain")
      << "the title's own suffix cannot be told from the name";
  EXPECT_FALSE(isOnly(open, "Plan - Saved"));
}

TEST(OpenDocumentsMatch, TwoDocumentsOfOneNameAreAGuess) {
  const OpenDocuments open({{"Report.docx", "/a/Report.docx"}, {"Report.docx", "/b/Report.docx"}});
  EXPECT_EQ(pathIn(open, "Report.docx"), "/b/Report.docx");
  EXPECT_FALSE(isOnly(open, "Report.docx"));
}

TEST(OpenDocumentsMatch, AnAddressOfTheCloudIsNoPath) {
  for (const std::string address :
       {"https://d.docs.live.net/1/Letter.docx", "https/::d.docs.live.net/1/Letter.docx",
        "/https/::d.docs.live.net:1:Letter.docx", "/http/::intranet:1:Letter.docx", "Letter.docx", ""}) {
    const OpenDocuments open({{"Letter.docx", address}, {"Letter.doc", "/d/Letter.doc"}});
    EXPECT_EQ(pathIn(open, "Letter.docx"), std::nullopt) << address;
    EXPECT_EQ(pathIn(open, "Letter.doc"), "/d/Letter.doc");
  }
  EXPECT_EQ(pathIn(listed({{"a", std::string("/d/nul\0x", 8)}}), "a"), std::nullopt);
}

class Contradiction : public AutomationStory {
 protected:
  Contradiction() {
    std::filesystem::create_directories(inFolder("copies"));
    for (const auto* name : {"Report.docx", "copies/Report.docx"})
      std::ofstream(inFolder(name)) << "the same";
  }
  const std::string report = inFolder("Report.docx");
  const std::string copy = inFolder("copies/Report.docx");
};

TEST_F(Contradiction, NothingSaidIsNone) {
  EXPECT_FALSE(listed({}).contradict("Report.docx", report));
  EXPECT_FALSE(listed({{"Plan.docx", "/d/Plan.docx"}}).contradict("Report.docx", report));
}

TEST_F(Contradiction, TheFileItselfIsNoneHoweverItIsSpelt) {
  EXPECT_FALSE(listed({{"Report.docx", report}}).contradict("Report.docx", report));
  EXPECT_FALSE(listed({{"Report.docx", inFolder("copies/../Report.docx")}}).contradict("", report));
  std::filesystem::create_symlink(report, inFolder("Link.docx"));
  EXPECT_FALSE(listed({{"Report.docx", inFolder("Link.docx")}}).contradict("Report", report));
  EXPECT_FALSE(listed({{"Gone.docx", "/gone/Gone.docx"}}).contradict("Gone", "/gone/Gone.docx"));
}

TEST_F(Contradiction, AnotherFileOfTheSameTextIsOne) {
  EXPECT_TRUE(listed({{"Report.docx", copy}}).contradict("Report.docx", report));
  EXPECT_TRUE(listed({{"Report.docx", "/gone/Report.docx"}}).contradict("", report));
  EXPECT_TRUE(listed({{"Report.docx", "https/::cloud/Report.docx"}}).contradict("", report));
  EXPECT_TRUE(listed({{"Report.docx", report + std::string("\0x", 2)}}).contradict("", report));
}

TEST_F(Contradiction, ASecondDocumentOfTheNameIsOne) {
  EXPECT_TRUE(listed({{"Report.docx", copy}, {"Report.docx", report}}).contradict("", report));
  EXPECT_TRUE(listed({{"Report.docx", report}, {"Report.docx", copy}}).contradict("", report));
  EXPECT_TRUE(listed({{"U\u0308.docx", "/d/\u00DC.docx"}, {"\u00DC.docx", "/d/\u00DC.docx"}})
                  .contradict("", "/d/\u00DC.docx"));
}

TEST_F(Contradiction, ScriptsFindADocumentWhateverTheCaseOfItsName) {
  EXPECT_TRUE(listed({{"REPORT.docx", copy}, {"Report.docx", report}}).contradict("", report));
  EXPECT_TRUE(listed({{"REPORT.docx", copy}}).contradict("", report));
}

TEST_F(Contradiction, ATitleThatNamesAnotherDocumentOrLeavesItOpenIsOne) {
  const OpenDocuments open({{"Report.docx", report}, {"Report.doc", inFolder("Report.doc")}});
  EXPECT_FALSE(open.contradict("Report.docx - Word", report));
  EXPECT_TRUE(open.contradict("Report.doc - Word", report));
  EXPECT_TRUE(open.contradict("Report", report));
}

TEST_F(Contradiction, ADocumentMayHoldTheFileByItsPathOrWithoutOneByItsName) {
  EXPECT_TRUE(listed({{"any", inFolder("copies/../Report.docx")}}).mayHold(report));
  EXPECT_TRUE(listed({{"Report.docx", "https/::cloud/Report.docx"}}).mayHold(report));
  EXPECT_FALSE(listed({{"Report.docx", copy}}).mayHold(report));
  EXPECT_FALSE(listed({{"Plan.docx", "https/::cloud/Plan.docx"}}).mayHold(report));
  EXPECT_FALSE(listed({}).mayHold(report));
}

}  // namespace
}  // namespace pellar
