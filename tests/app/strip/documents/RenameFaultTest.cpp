// A rename that meets something else: nothing of the user's work is lost, and the tab says what is so.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "platform/sim/office/ScriptError.h"
#include "tests/app/strip/documents/RenameStory.h"
#include "tests/support/Files.h"

namespace pellar {
namespace {

class RenameFault : public RenameStory {
 protected:
  // What the tags are once the user has tried these names in vain for a red document, and it is saved under
  // `name` after all.
  [[nodiscard]] Tags tagsAfterTrying(const Labels& names, const std::string& name) {
    const auto plan = openInWord("Plan.docx");
    tag(pathOf("Plan.docx"), "red");
    start();
    for (const auto& each : names) renameInVain("Plan", each);
    EXPECT_EQ(saved().tags, redOf("Plan.docx"));
    mac.office().saveAs(word.pid(), plan, pathOf(name + ".docx"));
    mac.advance(std::chrono::seconds(31));
    plan->window->moveTo({100, 300});
    mac.settle();
    EXPECT_EQ(strip().tabs(), Labels{name});
    return saved().tags;
  }
};

// --- what must not be lost ---

TEST_F(RenameFault, OfTwoDocumentsOfOneNameNeitherLosesItsText) {
  const auto a = openInWord("a/Report.docx");
  const auto b = openInWord("b/Report.docx");
  SimOffice::edit(*a, "A's text");
  test::put(pathOf("b/Report.docx"), "B's text");
  start();
  renameTab("Report", "Plan");
  EXPECT_TRUE(exists(pathOf("a/Report.docx")));
  EXPECT_EQ(test::content(pathOf("b/Report.docx")), "B's text");
  EXPECT_FALSE(exists(pathOf("a/Plan.docx")));
  EXPECT_FALSE(exists(pathOf("b/Plan.docx")));
  EXPECT_TRUE(log.has(failure("b/Report.docx", "Plan")));
  EXPECT_EQ(strip().tabs(), (Labels{"Report", "Report"}));
}

TEST_F(RenameFault, TheOriginalOfACopyOfTheSameNameStays) {
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

TEST_F(RenameFault, ATabThatMayBeEitherOfTwoDocumentsIsNotRenamed) {
  static_cast<void>(openInWord("Letter.doc"));
  openInWord("Letter.docx")->window->retitle("Letter");
  start();
  mac.alerts().nextType("Plan");
  strip().clickTool("Rename");
  EXPECT_TRUE(exists(pathOf("Letter.doc")));
  EXPECT_TRUE(exists(pathOf("Letter.docx")));
  EXPECT_TRUE(log.has(failure("Letter.docx", "Plan")));
}

TEST_F(RenameFault, WhenWordSavesAfterItWasGivenUpTheTabFollowsAndBothFilesStay) {
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

TEST_F(RenameFault, OfTwoThatFailedAndAreSavedUnderTheirNewNamesLaterEachKeepsItsColour) {
  const auto plan = openInWord("Plan.docx");
  const auto notes = openInWord("Notes.docx");
  start();
  tag(pathOf("Plan.docx"), "red");
  tag(pathOf("Notes.docx"), "blue");
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

TEST_F(RenameFault, OfTwoNamesTriedInVainEitherMayBeTheOneItIsSavedUnderLater) {
  EXPECT_EQ(tagsAfterTrying({"Budget", "Diary"}, "Budget"), redOf("Budget.docx"));
}

TEST_F(RenameFault, OfTwoNamesTriedInVainTheSecondMayBeTheOneItIsSavedUnderLater) {
  EXPECT_EQ(tagsAfterTrying({"Budget", "Diary"}, "Diary"), redOf("Diary.docx"));
}

// Some never are; so they are not all waited for.
class ManyNamesTriedInVain : public RenameFault {
 protected:
  [[nodiscard]] static Labels numbers(int count) {
    Labels names;
    for (int i = 1; i <= count; ++i) names.push_back(std::to_string(i));
    return names;
  }
};

TEST_F(ManyNamesTriedInVain, TwentyAreWaitedFor) {
  EXPECT_EQ(tagsAfterTrying(numbers(20), "1"), redOf("1.docx"));
}

TEST_F(ManyNamesTriedInVain, WithOneMoreTheFirstIsGivenUp) {
  EXPECT_EQ(tagsAfterTrying(numbers(21), "1"), redOf("Plan.docx"));
}

TEST_F(ManyNamesTriedInVain, WithOneMoreTheSecondIsNot) {
  EXPECT_EQ(tagsAfterTrying(numbers(21), "2"), redOf("2.docx"));
}

// --- what goes wrong ---

TEST_F(RenameFault, FailingAtAnyPointKeepsTheFileThePathAndTheColour) {
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

TEST_F(RenameFault, WithoutThePermissionToControlWordNothingChanges) {
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

TEST_F(RenameFault, ANameThatLeadsNowhereFails) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  renameTab("Plan", "no such folder/Budget");
  renameTab("Plan", std::string(10'240, 'n'));
  renameTab("Plan", std::string("zero \0 byte", 11));
  EXPECT_TRUE(exists(pathOf("Plan.docx")));
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
  EXPECT_TRUE(log.has(failure("Plan.docx", "no such folder/Budget")));
}

TEST_F(RenameFault, StrangeNamesAreGivenToTheFileAsTheyAre) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  for (const std::string name : {"say \"hi\" \\ \u05E9\u05DC\u05D5\u05DD", "-rf", "a & b"}) {
    renameTab(strip().tabs().front(), name);
    EXPECT_TRUE(exists(pathOf(name + ".docx"))) << name;
    EXPECT_EQ(strip().tabs(), Labels{name});
  }
}

TEST_F(RenameFault, AWindowThatClosesWhileTheNameIsTypedIsNotRenamed) {
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

TEST_F(RenameFault, AWindowThatClosesWhileANameIsTypedAfterAnotherRenameFailed) {
  const auto plan = openInWord("Plan.docx");
  static_cast<void>(openInWord("Report.docx"));
  start();
  renameInVain("Report", "Diary");
  answerAfter([&] { plan->window->close(); }, "Budget");
  choose("Plan", {"Rename…"});
  EXPECT_TRUE(log.has(failure("Plan.docx", "Budget")));
  EXPECT_EQ(strip().tabs(), Labels{"Report"});
}

TEST_F(RenameFault, AWindowThatGotANewRecordWhileTheNameWasTypedIsRenamed) {
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

TEST_F(RenameFault, AWindowThatGetsANewRecordWhileWordSavesKeepsItsColour) {
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

TEST_F(RenameFault, TheColourMovesEvenWhileAnotherApplicationIsInFront) {
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

TEST_F(RenameFault, WordMayQuitWhileItSaves) {
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

TEST_F(RenameFault, WhileOneQuestionIsOpenThereIsNoOther) {
  openThree();
  start();
  answerAfter([&] { strip().clickTool("Rename"); }, "Budget");
  choose("Plan", {"Rename…"});
  EXPECT_EQ(mac.alerts().shown().size(), 1U);
  EXPECT_EQ(strip().tabs(), (Labels{"Budget", "Report", "Notes"}));
}

}  // namespace
}  // namespace pellar
