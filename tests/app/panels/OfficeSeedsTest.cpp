// The documents that the Office applications remember themselves, in real property lists below the home
// folder.

#include <gtest/gtest.h>

#include "app/panels/OfficeSeeds.h"
#include "app/panels/RecentView.h"
#include "tests/support/Files.h"
#include "tests/support/PropertyListFile.h"
#include "tests/support/RecentStory.h"

namespace pellar {
namespace {

using test::binaryList;
using test::bookmark;
using test::xmlList;

class OfficeSeeds : public RecentStory {
 protected:
  // Where an Office application keeps its list.
  std::filesystem::path bookmarks(const std::string& word) {
    return mac.home() / "Library/Containers" / ("com.microsoft." + word) / "Data/Library/Preferences" /
           ("com.microsoft." + word + ".securebookmarks.plist");
  }
  void remember(const std::string& word, const std::string& list) { test::put(bookmarks(word), list); }
  std::string url(const std::string& name) { return "file://" + file(name); }

  void openDropdownOverWord() {
    auto word = launchWord();
    word.open("Plan.docx", {100, 200, 1200, 600});
    start();
    strip().clickSearchField();
  }
};

TEST_F(OfficeSeeds, WordsOwnDocumentsAreOfferedOverWord) {
  remember("Word", binaryList("<dict>" + bookmark(url("Letter.docx"), "2024-05-01T12:00:00Z") +
                              bookmark(url("Report.docx"), "2024-05-02T12:00:00Z") + "</dict>"));
  openDropdownOverWord();
  EXPECT_EQ(titles(), (Names{"Report.docx", "Letter.docx"}));
}

TEST_F(OfficeSeeds, AnXmlListWillDoAsWell) {
  remember("Word", xmlList("<dict>" + bookmark(url("Letter.docx"), "2024-05-01T12:00:00Z") + "</dict>"));
  openDropdownOverWord();
  EXPECT_EQ(titles(), Names{"Letter.docx"});
}

TEST_F(OfficeSeeds, OnlyTheThreeListsThatThereAreAreRead) {
  for (const auto* word : {"Outlook", "PowerPoint", "Onenote", "word"})
    remember(word, binaryList("<dict>" + bookmark(url(std::string(word) + ".docx"), "2024-05-01T12:00:00Z") +
                              "</dict>"));
  openDropdownOverWord();
  EXPECT_EQ(titles(), Names{});
}

TEST_F(OfficeSeeds, OtherApplicationsAreNotOfferedThem) {
  remember("Word", binaryList("<dict>" + bookmark(url("Letter.docx"), "2024-05-01T12:00:00Z") + "</dict>"));
  used("Plan.txt", 100);
  openDropdown();
  EXPECT_EQ(titles(), Names{"Plan.txt"});
}

TEST_F(OfficeSeeds, WithoutAnApplicationEveryOwnFileIsOfferedAndNoneOfTheirs) {
  remember("Word", binaryList("<dict>" + bookmark(url("Letter.docx"), "2024-05-01T12:00:00Z") + "</dict>"));
  used("Plan.txt", 100);
  used("Drawing.svg", 200, "org.example.painter");
  const auto panel = mac.platform().panels.makePanel({.contentSize = {480, 300}});
  RecentView view(panel->host(), std::make_shared<StateStore>(pellar.store().url()), mac.platform());
  view.reload("");
  EXPECT_EQ(view.items(), (Names{(mac.home() / "Drawing.svg").string(), (mac.home() / "Plan.txt").string()}));
}

TEST_F(OfficeSeeds, ADamagedListHidesNothingElse) {
  const auto whole = binaryList("<dict>" + bookmark(url("Lost.docx"), "2024-05-01T12:00:00Z") + "</dict>");
  remember("Word", whole.substr(0, whole.size() - 10));
  test::BinaryList itself;
  remember("Excel", itself.bytes(itself.dictionary({itself.text("a"), 1})));
  remember("Powerpoint",
           binaryList("<dict>" + bookmark(url("Found.docx"), "2024-05-01T12:00:00Z") + "</dict>"));
  used("Own.docx", 0, "com.microsoft.Word");
  openDropdownOverWord();
  EXPECT_EQ(titles(), (Names{"Found.docx", "Own.docx"}));
}

// Excel's list is read after Word's, and knows the document from earlier.
TEST_F(OfficeSeeds, ADocumentInTwoListsCountsAsUsedWhenItWasUsedLast) {
  const auto letter = url("Letter.docx");
  remember("Word", binaryList("<dict>" + bookmark(letter, "2024-05-03T12:00:00Z") +
                              bookmark(url("Report.docx"), "2024-05-02T12:00:00Z") + "</dict>"));
  remember("Excel", binaryList("<dict>" + bookmark(letter, "2024-05-01T12:00:00Z") + "</dict>"));
  openDropdownOverWord();
  EXPECT_EQ(titles(), (Names{"Letter.docx", "Report.docx"}));
}

TEST_F(OfficeSeeds, OverWordOnlyItsOwnKindsOfDocumentsAreOffered) {
  remember("Word", binaryList("<dict>" + bookmark(url("Letter.docx"), "2024-05-01T12:00:00Z") + "</dict>"));
  remember("Excel", binaryList("<dict>" + bookmark(url("Sums.xlsx"), "2024-05-02T12:00:00Z") +
                               bookmark(url("Notes.DOCX"), "2024-05-03T12:00:00Z") + "</dict>"));
  openDropdownOverWord();
  EXPECT_EQ(titles(), (Names{"Notes.DOCX", "Letter.docx"})) << "whoever remembered them";
}

TEST_F(OfficeSeeds, PowerpointsFolderIsSpelledItsOwnWay) {
  remember("Powerpoint",
           binaryList("<dict>" + bookmark(url("Talk.docx"), "2024-05-01T12:00:00Z") + "</dict>"));
  openDropdownOverWord();
  EXPECT_EQ(titles(), Names{"Talk.docx"});
}

TEST_F(OfficeSeeds, ADocumentInTwoListsCountsWithTheLaterTime) {
  const auto shared = url("Shared.docx");
  remember("Word", binaryList("<dict>" + bookmark(shared, "2024-05-01T12:00:00Z") +
                              bookmark(url("Middle.docx"), "2024-05-05T12:00:00Z") + "</dict>"));
  remember("Excel", binaryList("<dict>" + bookmark(shared, "2024-05-09T12:00:00Z") + "</dict>"));
  openDropdownOverWord();
  EXPECT_EQ(titles(), (Names{"Shared.docx", "Middle.docx"}));
  remember("Excel", binaryList("<dict>" + bookmark(shared, "2020-01-01T12:00:00Z") + "</dict>"));
  mac.pressKey("cancelOperation:");
  strip().clickSearchField();
  EXPECT_EQ(titles(), (Names{"Middle.docx", "Shared.docx"})) << "read again each time";
}

TEST_F(OfficeSeeds, AnEscapedBlankIsABlank) {
  file("My Letter.docx");
  remember("Word", binaryList("<dict>" +
                              bookmark("file://" + mac.home().string() + "/My%20Letter.docx",
                                       "2024-05-01T12:00:00Z") +
                              "</dict>"));
  openDropdownOverWord();
  EXPECT_EQ(titles(), Names{"My Letter.docx"});
  mac.pressKey("insertNewline:");
  EXPECT_EQ(opened(), Names{(mac.home() / "My Letter.docx").string()});
}

TEST_F(OfficeSeeds, AKeyThatIsNoUrlIsAPath) {
  const auto plain = file("Plain 100%.docx");
  remember("Word", binaryList("<dict>" + bookmark(plain, "2024-05-01T12:00:00Z") +
                              bookmark("file://%zz/Broken.docx", "2024-05-02T12:00:00Z") + "</dict>"));
  openDropdownOverWord();
  EXPECT_EQ(titles(), Names{"Plain 100%.docx"});
}

TEST_F(OfficeSeeds, ADocumentUnderTwoKeysOfOneListCountsWithTheLaterTime) {
  const auto report = file("Report.docx");
  remember("Word", binaryList("<dict>" + bookmark("file://" + report, "2024-05-03T12:00:00Z") +
                              bookmark(report, "2024-05-01T12:00:00Z") +
                              bookmark(url("Letter.docx"), "2024-05-02T12:00:00Z") + "</dict>"));
  openDropdownOverWord();
  EXPECT_EQ(titles(), (Names{"Report.docx", "Letter.docx"}));
}

TEST_F(OfficeSeeds, WithoutAUsableTimeADocumentComesLast) {
  const std::string noDate = "<key>" + url("NoDate.docx") + "</key><dict/>";
  const std::string noEntry = "<key>" + url("Text.docx") + "</key><string>what?</string>";
  const std::string wrongDate = "<key>" + url("Wrong.docx") +
                                "</key><dict><key>kLastUsedDateKey</key><string>yesterday</string></dict>";
  remember("Word", xmlList("<dict>" + noDate + noEntry + wrongDate +
                           bookmark(url("Dated.docx"), "2001-01-01T00:00:01Z") + "</dict>"));
  openDropdownOverWord();
  auto shown = titles();
  ASSERT_EQ(shown.size(), 4);
  EXPECT_EQ(shown.front(), "Dated.docx");
  std::ranges::sort(shown);
  EXPECT_EQ(shown, (Names{"Dated.docx", "NoDate.docx", "Text.docx", "Wrong.docx"}));
}

TEST_F(OfficeSeeds, ADocumentWithoutAUsableTimeWasNeverUsed) {
  const auto dated = [](const std::string& key, const std::string& entry) {
    return "<key>" + key + "</key>" + entry;
  };
  remember("Word", xmlList("<dict>" + dated("/Users/ann/NoDate.docx", "<dict/>") +
                           dated("/Users/ann/Text.docx", "<string>what?</string>") +
                           dated("/Users/ann/Wrong.docx",
                                 "<dict><key>kLastUsedDateKey</key><string>yesterday</string></dict>") +
                           bookmark("/Users/ann/Dated.docx", "1970-01-01T00:00:03Z") +
                           // No address of a file without the slashes of a host, but a path as it stands.
                           bookmark("file:/Users/ann/Plan.docx", "1970-01-01T00:00:04Z") + "</dict>"));
  EXPECT_EQ(officeSeeds(mac.platform().propertyLists, mac.home()),
            (NameMap<double>{{"/Users/ann/NoDate.docx", 0},
                             {"/Users/ann/Text.docx", 0},
                             {"/Users/ann/Wrong.docx", 0},
                             {"/Users/ann/Dated.docx", 3},
                             {"file:/Users/ann/Plan.docx", 4}}));
}

TEST_F(OfficeSeeds, TheTimesOfBothRecordsAreComparable) {
  // 2024-05-01 is 1714521600, well after what is recorded here.
  const auto own = used("Own.docx", 0, "com.microsoft.Word");
  remember("Word",
           binaryList("<dict>" + bookmark(url("Remembered.docx"), "2024-05-01T00:00:00Z") + "</dict>"));
  openDropdownOverWord();
  EXPECT_EQ(titles(), (Names{"Remembered.docx", "Own.docx"}));
  mac.pressKey("cancelOperation:");
  pellar.store().update([&](AppState& state) { state.recent[own] = 1'714'521'601; });
  strip().clickSearchField();
  EXPECT_EQ(titles(), (Names{"Own.docx", "Remembered.docx"}));
  pellar.store().update([&](AppState& state) { state.recent[own] = 1'714'521'599; });
  mac.type("o");
  EXPECT_EQ(titles(), (Names{"Remembered.docx", "Own.docx"}));
}

TEST_F(OfficeSeeds, ARememberedDocumentThatWasOpenedIsRecordedWithoutAnApplication) {
  const auto path = file("Letter.docx");
  remember("Word", binaryList("<dict>" + bookmark("file://" + path, "2024-05-01T00:00:00Z") + "</dict>"));
  openDropdownOverWord();
  mac.pressKey("insertNewline:");
  EXPECT_EQ(opened(), Names{path});
  EXPECT_EQ(state().recent.at(path), SimMainLoop::startSeconds);
  EXPECT_FALSE(state().recentApp.contains(path));
}

}  // namespace
}  // namespace pellar
