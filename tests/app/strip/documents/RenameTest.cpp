#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "platform/sim/office/ScriptError.h"
#include "tests/support/Files.h"
#include "tests/support/MenuStory.h"

namespace pellar {
namespace {

using Tags = NameMap<std::string>;

class Renaming : public WordStory {
 protected:
  [[nodiscard]] static bool exists(const std::string& path) { return std::filesystem::exists(path); }
  void renameTab(const std::string& tab, const std::string& answer) {
    mac.alerts().nextType(answer);
    choose(tab, {"Rename…"});
  }
  // The user answers, but something else happens first.
  void answerAfter(const std::function<void()>& happening, const std::string& answer) {
    mac.alerts().next([=](const TextAlert&) {
      happening();
      return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, answer};
    });
  }
  void tag(const std::string& path, const std::string& color) {
    pellar.store().update([&](AppState& state) { state.tags[path] = color; });
  }
  [[nodiscard]] std::string failure(const std::string& name, const std::string& answer) {
    return "rename failed for " + pathOf(name) + " -> " + answer;
  }
  [[nodiscard]] Tags redOf(const std::string& name) { return {{pathOf(name), "red"}}; }
};

TEST_F(Renaming, AsksForTheNewNameOverTheOldOne) {
  static_cast<void>(openInWord("Report.v2.docx"));
  start();
  mac.alerts().nextCancel();
  choose("Report.v2", {"Rename…"});
  ASSERT_EQ(mac.alerts().shown().size(), 1U);
  const TextAlert& question = mac.alerts().shown().front();
  EXPECT_EQ(question.messageText, "Rename file");
  EXPECT_EQ(question.informativeText, "New name for Report.v2:");
  EXPECT_EQ(question.fieldText, "Report.v2");
}

TEST_F(Renaming, TheFileTheTabTheColourAndTheRecentFilesHaveTheNewName) {
  const auto plan = openInWord("Plan.docx");
  static_cast<void>(openInWord("Report.docx"));
  start();
  choose("Plan", {"Colour tag", "Red"});
  SimOffice::edit(*plan, "typed but not saved");
  renameTab("Plan", "  Budget ");
  EXPECT_FALSE(exists(pathOf("Plan.docx")));
  std::ifstream file(pathOf("Budget.docx"));
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "typed but not saved");
  EXPECT_EQ(strip().tabs(), (Labels{"Budget", "Report"}));
  EXPECT_EQ(strip().tagOf("Budget"), Color::of(SystemColor::red));
  EXPECT_EQ(saved().tags, redOf("Budget.docx"));
  EXPECT_TRUE(saved().recent.contains(pathOf("Budget.docx")));
  choose("Budget", {"Copy path"});
  EXPECT_EQ(mac.pasteboard().string(), pathOf("Budget.docx"));
}

// A file of that name was there once.
TEST_F(Renaming, TheDocumentKeepsItsColourUnderANameThatHadAnother) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  choose("Plan", {"Colour tag", "Red"});
  tag(pathOf("Budget.docx"), "blue");
  renameTab("Plan", "Budget");
  EXPECT_EQ(saved().tags, redOf("Budget.docx"));
  EXPECT_EQ(strip().tagOf("Budget"), Color::of(SystemColor::red));
}

TEST_F(Renaming, ATypedExtensionIsTaken) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  renameTab("Plan", "Plan.rtf");
  EXPECT_TRUE(exists(pathOf("Plan.rtf")));
  EXPECT_FALSE(exists(pathOf("Plan.docx")));
}

TEST_F(Renaming, ANameWithADotAndASpaceIsAskedForInFullAndKeepsTheExtension) {
  static_cast<void>(openInWord("Plan.docx"));
  static_cast<void>(openInWord("Meeting 3.5 notes"));
  start();
  renameTab("Plan", "Dr. Smith");
  EXPECT_TRUE(exists(pathOf("Dr. Smith.docx")));
  EXPECT_EQ(strip().tabs(), (Labels{"Dr. Smith", "Meeting 3.5 notes"}));
  mac.alerts().nextCancel();
  choose("Meeting 3.5 notes", {"Rename…"});
  EXPECT_EQ(mac.alerts().shown().back().fieldText, "Meeting 3.5 notes");
}

TEST_F(Renaming, TheSameNameNoNameAndNoAnswerDoNothing) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  const auto asked = mac.scripts().sources().size();
  renameTab("Plan", "Plan");
  renameTab("Plan", " Plan\t");
  renameTab("Plan", "   ");
  mac.alerts().nextCancel("Budget");
  choose("Plan", {"Rename…"});
  EXPECT_EQ(mac.scripts().sources().size(), asked);
  EXPECT_TRUE(exists(pathOf("Plan.docx")));
  EXPECT_EQ(log.messages(), Labels{"tracking started"});
}

TEST_F(Renaming, TheSameNameTypedInOtherCharactersDoesNothing) {
  static_cast<void>(openInWord("U\u0308bersicht.docx"));  // as some file systems hand names out
  start();
  const auto asked = mac.scripts().sources().size();
  renameTab(strip().tabs().front(), "\u00DCbersicht");
  EXPECT_EQ(mac.scripts().sources().size(), asked);
  EXPECT_TRUE(exists(pathOf("U\u0308bersicht.docx")));
  EXPECT_EQ(log.messages(), Labels{"tracking started"});
}

TEST_F(Renaming, AnotherFileIsNeverOverwritten) {
  static_cast<void>(openInWord("Plan.docx"));
  std::ofstream(pathOf("Budget.docx")) << "somebody else's";
  tag(pathOf("Plan.docx"), "red");
  start();
  renameTab("Plan", "Budget");
  std::ifstream file(pathOf("Budget.docx"));
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "somebody else's");
  EXPECT_TRUE(exists(pathOf("Plan.docx")));
  EXPECT_TRUE(log.has(failure("Plan.docx", "Budget")));
  EXPECT_EQ(saved().tags, redOf("Plan.docx"));
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
}

TEST_F(Renaming, AnUntaggedDocumentTakesNobodysColour) {
  static_cast<void>(openInWord("Plan.docx"));
  static_cast<void>(openInWord("Report.docx"));
  tag(pathOf("Report.docx"), "red");
  start();
  renameTab("Plan", "Budget");
  EXPECT_EQ(saved().tags, redOf("Report.docx"));
}

TEST_F(Renaming, TheToolRenamesTheFocusedDocument) {
  static_cast<void>(openInWord("Plan.docx"));
  static_cast<void>(openInWord("Report.docx"));
  start();
  mac.alerts().nextType("Budget");
  strip().clickTool("Rename");
  EXPECT_EQ(mac.alerts().shown().back().fieldText, "Report");
  EXPECT_EQ(strip().tabs(), (Labels{"Plan", "Budget"}));
}

TEST_F(Renaming, TheToolFindsAFileGivenAMomentAgo) {
  const auto fresh = newInWord("Letter");
  start();
  strip().clickTool("Rename");
  EXPECT_TRUE(mac.alerts().shown().empty());
  fresh->path = pathOf("Letter.docx");
  mac.alerts().nextCancel();
  strip().clickTool("Rename");
  EXPECT_EQ(mac.alerts().shown().size(), 1U);
  EXPECT_EQ(knownFile(), pathOf("Letter.docx"));
}

TEST_F(Renaming, PellarIsInFrontWhileItAsksAndWordAfterwards) {
  const auto plan = openInWord("Plan.docx");
  start();
  answerAfter(
      [&] {
        EXPECT_EQ(mac.workspace().frontmostApplication()->bundleId, mac.workspace().ownBundleId());
        EXPECT_EQ(strip().tabs(), Labels{"Plan"});
        expectStripOver(*plan->window);
      },
      "Budget");
  choose("Plan", {"Rename…"});
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, word.pid());
  EXPECT_EQ(strip().tabs(), Labels{"Budget"});
  expectStripOver(*plan->window);
}

TEST_F(Renaming, AnUnchangedAnswerToANameWithBlanksAroundItDoesNothing) {
  static_cast<void>(openInWord(" Plan .docx"));
  start();
  const auto asked = mac.scripts().sources().size();
  mac.alerts().next([](const TextAlert& question) {
    return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, question.fieldText};
  });
  strip().clickTool("Rename");
  EXPECT_EQ(mac.scripts().sources().size(), asked);
  EXPECT_TRUE(exists(pathOf(" Plan .docx")));
  EXPECT_EQ(log.messages(), Labels{"tracking started"});
}

// --- what must not be lost ---

TEST_F(Renaming, OfTwoDocumentsOfOneNameNeitherLosesItsText) {
  const auto a = openInWord("a/Report.docx");
  const auto b = openInWord("b/Report.docx");
  SimOffice::edit(*a, "A's text");
  std::ofstream(pathOf("b/Report.docx")) << "B's text";
  start();
  renameTab("Report", "Plan");
  EXPECT_TRUE(exists(pathOf("a/Report.docx")));
  EXPECT_EQ(test::content(pathOf("b/Report.docx")), "B's text");
  EXPECT_FALSE(exists(pathOf("a/Plan.docx")));
  EXPECT_FALSE(exists(pathOf("b/Plan.docx")));
  EXPECT_TRUE(log.has(failure("b/Report.docx", "Plan")));
  EXPECT_EQ(strip().tabs(), (Labels{"Report", "Report"}));
}

TEST_F(Renaming, TheOriginalOfACopyOfTheSameNameStays) {
  const auto report = openInWord("Report.docx");
  start();
  std::filesystem::create_directories(pathOf("copies"));
  SimOffice::edit(*report, "the copy");
  mac.office().saveAs(word.pid(), report, pathOf("copies/Report.docx"));
  mac.settle();
  renameTab("Report", "Plan");
  EXPECT_EQ(test::content(pathOf("Report.docx")), "as opened");
  EXPECT_FALSE(exists(pathOf("Plan.docx")));
  EXPECT_TRUE(log.has(failure("Report.docx", "Plan")));
  // By now it is known which file it is.
  renameTab("Report", "Plan");
  EXPECT_EQ(test::content(pathOf("Report.docx")), "as opened");
  EXPECT_EQ(test::content(pathOf("copies/Plan.docx")), "the copy");
  EXPECT_FALSE(exists(pathOf("copies/Report.docx")));
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
}

TEST_F(Renaming, ATabThatMayBeEitherOfTwoDocumentsIsNotRenamed) {
  static_cast<void>(openInWord("Letter.doc"));
  openInWord("Letter.docx")->window->retitle("Letter");
  start();
  mac.alerts().nextType("Plan");
  strip().clickTool("Rename");
  EXPECT_TRUE(exists(pathOf("Letter.doc")));
  EXPECT_TRUE(exists(pathOf("Letter.docx")));
  EXPECT_TRUE(log.has(failure("Letter.docx", "Plan")));
}

TEST_F(Renaming, WhenWordSavesAfterItWasGivenUpTheTabFollowsAndBothFilesStay) {
  const auto plan = openInWord("Plan.docx");
  start();
  mac.office().beforeEvent = [&](const std::string& event) {
    if (event == "save as") word.freeze();
  };
  renameTab("Plan", "Budget");
  EXPECT_TRUE(log.has(failure("Plan.docx", "Budget")));
  EXPECT_TRUE(
      log.has("rename kept " + pathOf("Plan.docx") + ": the application did not confirm the new file"));
  mac.office().beforeEvent = nullptr;
  word.resume();
  mac.office().saveAs(word.pid(), plan, pathOf("Budget.docx"));
  mac.advance(std::chrono::seconds(31));
  plan->window->moveTo({100, 300});
  mac.settle();
  EXPECT_EQ(strip().tabs(), Labels{"Budget"});
  EXPECT_EQ(knownFile(), pathOf("Budget.docx"));
  EXPECT_EQ(test::content(pathOf("Plan.docx")), "as opened");
  EXPECT_EQ(test::content(pathOf("Budget.docx")), "as opened");
}

TEST_F(Renaming, OfTwoThatFailedAndAreSavedUnderTheirNewNamesLaterEachKeepsItsColour) {
  const auto plan = openInWord("Plan.docx");
  const auto notes = openInWord("Notes.docx");
  start();
  tag(pathOf("Plan.docx"), "red");
  tag(pathOf("Notes.docx"), "blue");
  const auto renameInVain = [&](const std::string& tab, const std::string& answer) {
    mac.office().beforeEvent = [&](const std::string& event) {
      if (event == "save as") throw ScriptError(ScriptError::handlerFailed, "AppleEvent handler failed.");
    };
    renameTab(tab, answer);
    mac.office().beforeEvent = nullptr;
  };
  renameInVain("Plan", "Budget");
  renameInVain("Notes", "Diary");
  EXPECT_EQ(saved().tags, (Tags{{pathOf("Plan.docx"), "red"}, {pathOf("Notes.docx"), "blue"}}));
  mac.office().saveAs(word.pid(), plan, pathOf("Budget.docx"));
  mac.office().saveAs(word.pid(), notes, pathOf("Diary.docx"));
  mac.advance(std::chrono::seconds(31));
  plan->window->moveTo({100, 300});
  mac.settle();
  EXPECT_EQ(saved().tags, (Tags{{pathOf("Budget.docx"), "red"}, {pathOf("Diary.docx"), "blue"}}));
}

// --- what goes wrong ---

TEST_F(Renaming, FailingAtAnyPointKeepsTheFileThePathAndTheColour) {
  // Each event of the script in turn fails, until one run gets through.
  int failing = 0;
  int failures = 0;
  for (bool undisturbed = false; !undisturbed; ++failing) {
    ASSERT_LT(failing, 50);
    SimMac other;
    auto otherWord = other.launch({.bundleId = "com.microsoft.Word", .name = "Microsoft Word"});
    const std::string path = other.home() / "Documents" / "Plan.docx";
    const std::string newPath = other.home() / "Documents" / "Budget.docx";
    std::filesystem::create_directories(other.platform().folders.logFile.parent_path());
    const auto document = other.office().openInWindow(otherWord, {.path = path});
    document->window->setFrame({100, 200, 1300, 600});
    AppDelegate program(other.platform());
    acceptTerms(program);
    program.store().update([&](AppState& state) { state.tags[path] = "red"; });
    program.applicationDidFinishLaunching();
    other.settle();

    int events = 0;
    other.office().beforeEvent = [&](const std::string&) {
      if (events++ == failing) throw ScriptError(ScriptError::handlerFailed, "AppleEvent handler failed.");
    };
    other.alerts().nextType("Budget");
    other.strip().clickTool("Rename");
    undisturbed = events <= failing;
    const bool renamed = exists(newPath);
    if (!renamed) ++failures;
    EXPECT_TRUE(renamed || exists(path));
    EXPECT_TRUE(renamed || !undisturbed);
    EXPECT_FALSE(undisturbed && exists(path));
    const std::string& now = renamed ? newPath : path;
    EXPECT_EQ(StateStore(program.store().url()).state().tags, (Tags{{now, "red"}}));
    EXPECT_EQ(program.documentPaths().of(*program.tracker().front())->path, now);
    const LogReader written(other.platform().folders.logFile);
    EXPECT_EQ(written.has("rename failed for " + path + " -> Budget"), !renamed);
    EXPECT_EQ(other.strip().tabs(), Labels{renamed ? "Budget" : "Plan"});
    EXPECT_EQ(other.strip().tagOf(renamed ? "Budget" : "Plan"), Color::of(SystemColor::red));
  }
  EXPECT_GE(failing, 3);
  EXPECT_GE(failures, 2);
}

TEST_F(Renaming, WithoutThePermissionToControlWordNothingChanges) {
  static_cast<void>(openInWord("Plan.docx"));
  tag(pathOf("Plan.docx"), "red");
  start();
  mac.office().allowsControl = false;
  renameTab("Plan", "Budget");
  EXPECT_TRUE(exists(pathOf("Plan.docx")));
  EXPECT_FALSE(exists(pathOf("Budget.docx")));
  EXPECT_EQ(saved().tags, redOf("Plan.docx"));
  EXPECT_TRUE(log.has(failure("Plan.docx", "Budget")));
}

TEST_F(Renaming, ANameThatLeadsNowhereFails) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  renameTab("Plan", "no such folder/Budget");
  renameTab("Plan", std::string(10'240, 'n'));
  renameTab("Plan", std::string("zero \0 byte", 11));
  EXPECT_TRUE(exists(pathOf("Plan.docx")));
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
  EXPECT_TRUE(log.has(failure("Plan.docx", "no such folder/Budget")));
}

TEST_F(Renaming, StrangeNamesAreGivenToTheFileAsTheyAre) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  for (const std::string name : {"say \"hi\" \\ \u05E9\u05DC\u05D5\u05DD", "-rf", "a & b"}) {
    renameTab(strip().tabs().front(), name);
    EXPECT_TRUE(exists(pathOf(name + ".docx"))) << name;
    EXPECT_EQ(strip().tabs(), Labels{name});
  }
}

TEST_F(Renaming, AWindowThatClosesWhileTheNameIsTypedIsNotRenamed) {
  const auto plan = openInWord("Plan.docx");
  static_cast<void>(openInWord("Report.docx"));
  tag(pathOf("Plan.docx"), "red");
  start();
  const auto asked = mac.scripts().sources().size();
  answerAfter([&] { plan->window->close(); }, "Budget");
  choose("Plan", {"Rename…"});
  EXPECT_EQ(mac.scripts().sources().size(), asked);
  EXPECT_TRUE(exists(pathOf("Plan.docx")));
  EXPECT_EQ(saved().tags, redOf("Plan.docx"));
  EXPECT_TRUE(log.has(failure("Plan.docx", "Budget")));
  EXPECT_EQ(strip().tabs(), Labels{"Report"});
}

TEST_F(Renaming, AWindowThatGotANewRecordWhileTheNameWasTypedIsRenamed) {
  static_cast<void>(openInWord("Plan.docx"));
  tag(pathOf("Plan.docx"), "red");
  start();
  const std::weak_ptr<OfficeWindow> before = pellar.tracker().front();
  answerAfter([&] { lookAtTheEditor(); }, "Budget");
  choose("Plan", {"Rename…"});
  EXPECT_NE(pellar.tracker().front(), before.lock());
  EXPECT_EQ(knownFile(), pathOf("Budget.docx"));
  EXPECT_EQ(strip().tabs(), Labels{"Budget"});
  EXPECT_EQ(strip().tagOf("Budget"), Color::of(SystemColor::red));
  EXPECT_EQ(saved().tags, redOf("Budget.docx"));
}

TEST_F(Renaming, AWindowThatGetsANewRecordWhileWordSavesKeepsItsColour) {
  static_cast<void>(openInWord("Plan.docx"));
  tag(pathOf("Plan.docx"), "red");
  start();
  mac.office().duringWrite = [&](const std::string&) { lookAtTheEditor(); };
  renameTab("Plan", "Budget");
  EXPECT_EQ(knownFile(), pathOf("Budget.docx"));
  EXPECT_EQ(strip().tabs(), Labels{"Budget"});
  EXPECT_EQ(strip().tagOf("Budget"), Color::of(SystemColor::red));
  EXPECT_EQ(saved().tags, redOf("Budget.docx"));
}

TEST_F(Renaming, TheColourMovesEvenWhileAnotherApplicationIsInFront) {
  static_cast<void>(openInWord("Plan.docx"));
  const auto text = open("Text");
  tag(pathOf("Plan.docx"), "red");
  start();
  mac.office().duringWrite = [&](const std::string&) {
    mac.activate(editor);
    mac.settle();
  };
  renameTab("Plan", "Budget");
  EXPECT_EQ(strip().tabs(), Labels{"Text"});
  expectStripOver(text);
  EXPECT_EQ(saved().tags, redOf("Budget.docx"));
  EXPECT_FALSE(exists(pathOf("Plan.docx")));
}

TEST_F(Renaming, WordMayQuitWhileItSaves) {
  static_cast<void>(openInWord("Plan.docx"));
  tag(pathOf("Plan.docx"), "red");
  start();
  mac.office().duringWrite = [&](const std::string&) {
    mac.terminate(word);
    mac.settle();
  };
  renameTab("Plan", "Budget");
  EXPECT_FALSE(stripShown());
  EXPECT_TRUE(exists(pathOf("Plan.docx")));
  EXPECT_EQ(saved().tags, redOf("Plan.docx"));
  EXPECT_TRUE(log.has(failure("Plan.docx", "Budget")));
}

TEST_F(Renaming, WhileOneQuestionIsOpenThereIsNoOther) {
  openThree();
  start();
  answerAfter([&] { strip().clickTool("Rename"); }, "Budget");
  choose("Plan", {"Rename…"});
  EXPECT_EQ(mac.alerts().shown().size(), 1U);
  EXPECT_EQ(strip().tabs(), (Labels{"Budget", "Report", "Notes"}));
}

}  // namespace
}  // namespace pellar
