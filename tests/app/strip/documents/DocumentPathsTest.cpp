#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/MenuStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// Which file is behind a window, as the user sees it: on the tab, in its colour, and where it leads.
class FileBehindAWindow : public WordStory {
 protected:
  [[nodiscard]] std::size_t asked() { return mac.scripts().sources().size(); }
  [[nodiscard]] std::string copiedPath(const std::string& tab) {
    mac.pasteboard().setString("");
    choose(tab, {"Copy path"});
    return mac.pasteboard().string();
  }
  [[nodiscard]] std::optional<Color> red() { return Color::of(SystemColor::red); }
  void tagRed(const std::string& path) {
    pellar.store().update([&](AppState& state) { state.tags[path] = "red"; });
  }
  // The user saves the document under another path; its window follows.
  void saveElsewhere(const SimDocumentPointer& document, const std::string& path) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    mac.office().saveAs(word.pid(), document, path);
  }
};

TEST_F(FileBehindAWindow, OfTwoDocumentsWithOneLabelEachHasItsOwn) {
  static_cast<void>(openInWord("Letter.doc"));
  static_cast<void>(openInWord("Letter.docx"));
  start();
  const auto& windows = pellar.tracker().windows();
  EXPECT_EQ(knownFile(*windows.at(0)), pathOf("Letter.doc"));
  EXPECT_EQ(knownFile(*windows.at(1)), pathOf("Letter.docx"));
  EXPECT_EQ(pellar.documentPaths().of(*windows.at(0))->source, PathSource::answered);
}

TEST_F(FileBehindAWindow, WhereTheTitleLeavesItOpenItIsAGuessThatIsAskedAboutAgain) {
  const auto first = openInWord("Letter.doc");
  const auto second = openInWord("Letter.docx");
  second->window->retitle("Letter");
  start();
  const auto window = pellar.tracker().front();
  EXPECT_EQ(pellar.documentPaths().of(*window)->source, PathSource::guessedByLabel);
  mac.office().close(first);
  mac.settle();
  EXPECT_EQ(copiedPath("Letter"), pathOf("Letter.docx"));
  EXPECT_EQ(pellar.documentPaths().of(*window)->source, PathSource::answered);
}

TEST_F(FileBehindAWindow, AGuessStaysWhenNobodyAnswersAnyMore) {
  static_cast<void>(openInWord("Letter.doc"));
  openInWord("Letter.docx")->window->retitle("Letter");
  start();
  const auto guess = knownFile();
  ASSERT_TRUE(guess);
  mac.office().allowsControl = false;
  EXPECT_EQ(pellar.documentPaths().ask(pellar.tracker().front())->path, *guess);
}

TEST_F(FileBehindAWindow, AnAddressInTheCloudIsNoPath) {
  static_cast<void>(newInWord("Letter.docx"));
  mac.scripts().answer = [](const std::string&) {
    return ScriptResult{
        ScriptDescriptor{std::vector<ScriptDescriptor>{{"Letter.docx\thttps/::d.docs.live.net/Letter.docx"}}},
        std::nullopt};
  };
  start();
  EXPECT_EQ(strip().tabs(), Labels{"Letter"});
  EXPECT_EQ(tabMenu("Letter").at(5), "(Rename…)");
  EXPECT_TRUE(saved().recent.empty());
  chooseInTool("Groups", {"Save open tabs as group…"});
  EXPECT_TRUE(mac.alerts().shown().empty());
}

TEST_F(FileBehindAWindow, ALookUpIsDatedWhenItsAnswerIsThere) {
  const auto letter = newInWord("Letter");
  Subscription thaw;
  mac.office().beforeEvent = [&](const std::string&) {
    mac.office().beforeEvent = nullptr;
    word.freeze();
    thaw = mac.mainLoop().after(100s, [&] { word.resume(); });
  };
  start();
  const auto before = asked();
  letter->path = pathOf("Letter.docx");
  letter->window->moveTo({100, 300});
  mac.advance(30s);
  EXPECT_EQ(asked(), before);
  mac.advance(1s);
  letter->window->moveTo({100, 310});
  mac.settle();
  EXPECT_EQ(asked(), before + 1);
  EXPECT_EQ(knownFile(), pathOf("Letter.docx"));
}

TEST_F(FileBehindAWindow, AFileThatIsKnownIsNotAskedAboutAgainWhenAnotherDocumentOpens) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  mac.advance(31s);
  const auto before = asked();
  const auto report = openInWord("Report.docx");
  mac.settle();
  report->window->moveTo({100, 300});
  mac.settle();
  EXPECT_EQ(asked(), before + 1);
  EXPECT_EQ(knownFile(), pathOf("Report.docx"));
}

TEST_F(FileBehindAWindow, ADocumentWithoutAFileIsNotAskedAboutSoonerWhenAnotherOneOpens) {
  static_cast<void>(newInWord("Letter"));
  start();
  mac.advance(10s);
  const auto before = asked();
  const auto draft = newInWord("Draft");
  mac.settle();
  draft->window->moveTo({100, 300});
  mac.settle();
  EXPECT_EQ(asked(), before + 1);
}

TEST_F(FileBehindAWindow, AtMostOneLookUpIsUnderWay) {
  const auto letter = openInWord("Letter.docx");
  std::size_t underWay = 0;
  mac.office().beforeEvent = [&](const std::string&) {
    letter->window->moveTo({100, letter->window->frame().y + 1});
    mac.settle();
    static_cast<void>(pellar.documentPaths().ask(pellar.tracker().front()));
    underWay = std::max(underWay, asked());
  };
  start();
  EXPECT_EQ(underWay, 1U);
  EXPECT_EQ(knownFile(), pathOf("Letter.docx"));
}

TEST_F(FileBehindAWindow, WhatALookUpFindsIsShownEvenIfAnotherPictureCameMeanwhile) {
  const auto letter = openInWord("Letter.docx");
  tagRed(pathOf("Letter.docx"));
  mac.office().beforeEvent = [&](const std::string&) {
    letter->window->moveTo({100, letter->window->frame().y + 1});
    mac.settle();
  };
  start();
  EXPECT_EQ(strip().tagOf("Letter"), red());
  expectStripOver(*letter->window);
}

TEST_F(FileBehindAWindow, OneFoundByARightClickShowsItsColourAtOnce) {
  const auto letter = newInWord("Letter");
  tagRed(pathOf("Letter.docx"));
  start();
  EXPECT_EQ(strip().tagOf("Letter"), std::nullopt);
  letter->path = pathOf("Letter.docx");
  mac.menus().next([&](SimOpenMenu&) {
    mac.settle();
    EXPECT_EQ(strip().tagOf("Letter"), red());
  });
  strip().rightClickTab("Letter");
  EXPECT_EQ(strip().tagOf("Letter"), red());
}

TEST_F(FileBehindAWindow, ForgottenWhenTheWindowShowsAnotherBeforeTheNextReport) {
  const auto plan = openInWord("Plan.docx");
  keepSilent(word);
  mac.office().afterEvent = [&](const std::string& event) {
    if (event != "get full name") return;
    mac.office().afterEvent = nullptr;
    plan->path = {};
    plan->name = "Document2";
    plan->window->retitle("Document2");
  };
  start();
  pellar.tracker().refresh();
  EXPECT_EQ(strip().tabs(), Labels{"Document2"});
  EXPECT_EQ(knownFile(), std::nullopt);
}

TEST_F(FileBehindAWindow, SavedUnderAnotherNameTheTabTheColourAndThePathAreTheNewOnes) {
  const auto plan = openInWord("Plan.docx");
  tagRed(pathOf("Plan.docx"));
  start();
  EXPECT_EQ(strip().tagOf("Plan"), red());
  mac.advance(31s);
  saveElsewhere(plan, pathOf("Budget.docx"));
  mac.settle();
  EXPECT_EQ(strip().tabs(), Labels{"Budget"});
  EXPECT_EQ(strip().tagOf("Budget"), std::nullopt);
  EXPECT_EQ(copiedPath("Budget"), pathOf("Budget.docx"));
}

TEST_F(FileBehindAWindow, ForgottenAMomentAfterItWasFoundTheTabSaysWhatTheWindowShows) {
  const auto plan = openInWord("Plan.docx");
  start();
  plan->path = {};
  plan->name = "Document2";
  plan->window->retitle("Document2");
  mac.settle();
  EXPECT_EQ(strip().tabs(), Labels{"Document2"});
  EXPECT_EQ(knownFile(), std::nullopt);
}

TEST_F(FileBehindAWindow, APathThatTheTitleNeverNamedStaysWhileTheRecordLives) {
  auto window = word.open("Draft", {100, 200, 1300, 600});
  mac.office().open(word, {.name = "Draft", .path = "/Users/ann/Plan.docx"});
  start();
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
  window.retitle("Something else");
  mac.settle();
  EXPECT_EQ(strip().tabs(), Labels{"Plan"});
  lookAtTheEditor();
  EXPECT_EQ(strip().tabs(), Labels{"Something else"});
}

TEST_F(FileBehindAWindow, ADocumentInTheCloudHasNoFile) {
  const auto letter = mac.office().openInWindow(
      word, {.name = "Letter.docx", .path = "https://d.docs.live.net/1/Letter.docx"});
  letter->window->setFrame({100, 200, 1300, 600});
  start();
  EXPECT_EQ(strip().tabs(), Labels{"Letter"});
  EXPECT_EQ(tabMenu("Letter").at(5), "(Rename…)");
  EXPECT_EQ(tabMenu("Letter").at(7), "(Copy path)");
  EXPECT_TRUE(saved().recent.empty());
  choose("Letter", {"Colour tag", "Red"});
  EXPECT_EQ(strip().tagOf("Letter"), Color::of(SystemColor::red));
  EXPECT_EQ(saved().tags.size(), 1U);
  choose("Letter", {"Save all"});
  EXPECT_EQ(letter->saves, 1);
}

TEST_F(FileBehindAWindow, ADocumentInAnApplicationsOwnFolderIsAFileLikeAnother) {
  const std::string path = mac.home() / "Library/Containers/com.microsoft.Word/Data/Documents/Plan.docx";
  const auto plan = mac.office().openInWindow(word, {.path = path});
  plan->window->setFrame({100, 200, 1300, 600});
  start();
  EXPECT_EQ(knownFile(), path);
  EXPECT_TRUE(saved().recent.contains(path));
}

// --- other applications ---

class FileInAnEditor : public FileBehindAWindow {
 protected:
  FileInAnEditor() {
    window.setDocument("file:///Users/ann/Plan.txt");
    mac.activate(editor);
  }
  void show(const std::string& title, const std::string& url) {
    window.setDocument(url);
    window.retitle(title);
    mac.settle();
  }
  SimWindow window = open("Plan.txt - Editor", {100, 200, 1300, 600});
};

TEST_F(FileInAnEditor, ItsOwnTabsAreFollowed) {
  start();
  EXPECT_EQ(strip().tabs(), Labels{"Plan.txt"});
  show("Notes.txt - Editor", "file:///Users/ann/Notes.txt");
  EXPECT_EQ(strip().tabs(), Labels{"Notes.txt"});
  EXPECT_EQ(copiedPath("Notes.txt"), "/Users/ann/Notes.txt");
  mac.alerts().nextType("Monday");
  chooseInTool("Groups", {"Save open tabs as group…"});
  EXPECT_EQ(saved().groups.at("Monday"), Labels{"/Users/ann/Notes.txt"});
  EXPECT_TRUE(saved().recent.contains("/Users/ann/Notes.txt"));
}

TEST_F(FileInAnEditor, NewInTheSameWindowHasNone) {
  start();
  show("Untitled - Editor", "");
  EXPECT_EQ(strip().tabs(), Labels{"Untitled - Editor"});
  EXPECT_EQ(knownFile(), std::nullopt);
}

TEST_F(FileInAnEditor, ATerminalThatRanAnEditorShowsTheTerminalAgain) {
  show("Plan.txt (~/Documents) - VIM", "file:///Users/ann/Plan.txt");
  start();
  EXPECT_EQ(strip().tabs(), Labels{"Plan.txt"});
  show("ann@host: ~", "");
  EXPECT_EQ(strip().tabs(), Labels{"ann@host: ~"});
}

TEST_F(FileInAnEditor, ChangesMarkedInTheTitleForgetNothing) {
  start();
  window.setDocument("");  // were it read again, there would be none
  for (const auto* title : {"*Plan.txt - Editor", "● Plan.txt — Editor", "Plan.txt [modified] - Editor"}) {
    window.retitle(title);
    mac.settle();
    EXPECT_EQ(strip().tabs(), Labels{"Plan.txt"}) << title;
  }
}

TEST_F(FileInAnEditor, ATitleThatStopsNamingItWhileTheWindowStillSaysItKeepsIt) {
  start();
  show("Editing...", "file:///Users/ann/Plan.txt");
  EXPECT_EQ(strip().tabs(), Labels{"Plan.txt"});
  show("Editing...", "");
  window.moveTo({100, 300});
  mac.settle();
  EXPECT_EQ(strip().tabs(), Labels{"Editing..."}) << "it is asked as long as the title does not say it";
}

TEST_F(FileInAnEditor, APathThatTheTitleNeverNamedIsNotReadAgain) {
  show("My thoughts", "file:///Users/ann/Plan.txt");
  start();
  show("My other thoughts", "file:///Users/ann/Notes.txt");
  EXPECT_EQ(strip().tabs(), Labels{"Plan.txt"});
}

TEST_F(FileInAnEditor, APathThatTheTitleNeverNamedIsNotReadAgainThoughTheOneBeforeWasNamed) {
  start();
  show("My thoughts", "file:///Users/ann/Notes.txt");
  EXPECT_EQ(strip().tabs(), Labels{"Notes.txt"});
  show("My other thoughts", "");
  EXPECT_EQ(strip().tabs(), Labels{"Notes.txt"});
}

}  // namespace
}  // namespace pellar
