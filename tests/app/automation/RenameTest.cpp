#include "tests/app/automation/AutomationStory.h"
#include "tests/support/BrokenFileOperations.h"

namespace pellar {
namespace {

class Rename : public AutomationStory {
 protected:
  std::optional<std::string> rename(const std::string& newName) {
    return automation.rename(*record(*report->window), report->path, newName);
  }
  // The path that a rename of this file asks the application to save under; absent when it asks nothing.
  std::optional<std::string> askedFor(const std::string& oldPath, const std::string& newName) {
    mac.scripts().answer = [](const std::string&) { return ScriptResult{}; };
    const auto before = mac.scripts().sources().size();
    EXPECT_EQ(automation.rename(*record(*report->window), oldPath, newName), std::nullopt);
    if (mac.scripts().sources().size() == before) return std::nullopt;
    const std::string& script = mac.scripts().sources().back();
    const std::string start = "file name \"";
    const auto from = script.find(start) + start.size();
    return script.substr(from, script.find("\"\n", from) - from);
  }

  // In place of saving, this happens, and the application says that it saved.
  void saving(const std::function<void()>& happens) {
    mac.scripts().answer = [this, happens](const std::string& source) {
      if (source.find("save as d") == std::string::npos) return mac.scripts().interpret(source);
      happens();
      return ScriptResult{ScriptDescriptor{"ok"}, std::nullopt};
    };
  }
  [[nodiscard]] static std::string kept(const std::string& path, const std::string& why) {
    return "rename kept " + path + ": " + why;
  }

  SimDocumentPointer report = openInWord("Old.docx");
};

TEST_F(Rename, GivesTheDocumentAndItsFileTheNewName) {
  SimOffice::edit(*report, "changed");
  EXPECT_EQ(rename("Plan"), inFolder("Plan.docx"));
  EXPECT_EQ(contentOf(inFolder("Plan.docx")), "changed") << "unsaved changes go along";
  EXPECT_FALSE(exists(inFolder("Old.docx")));
  EXPECT_EQ(report->window->title(), "Plan.docx");
  EXPECT_TRUE(log.messages().empty());
}

TEST_F(Rename, WorksInExcelAndPowerPoint) {
  for (const auto& [app, extension] :
       {std::pair{OfficeApp::excel, ".xlsx"}, std::pair{OfficeApp::powerpoint, ".pptx"}}) {
    const auto application = launch(app);
    const auto document =
        mac.office().openInWindow(application, {.path = inFolder(std::string("Old") + extension)});
    const OfficeWindow window(mac.accessibility(), document->window->element(), TrackedApp::of(app),
                              application.pid());
    EXPECT_EQ(automation.rename(window, document->path, "New"), inFolder(std::string("New") + extension));
    EXPECT_FALSE(exists(inFolder(std::string("Old") + extension)));
    EXPECT_TRUE(exists(inFolder(std::string("New") + extension)));
  }
}

TEST_F(Rename, KeepsTheOldExtensionWhenTheNameHasNone) {
  EXPECT_EQ(askedFor("/d/Old.docx", "Plan"), "/d/Plan.docx");
  EXPECT_EQ(askedFor("/d/Old.docx", "Plan.rtf"), "/d/Plan.rtf");
  EXPECT_EQ(askedFor("/d/Old.docx", "Plan v1.2"), "/d/Plan v1.2") << "that is an extension to the platform";
  EXPECT_EQ(askedFor("/d/Old.docx", "Meeting 3.5 notes"), "/d/Meeting 3.5 notes.docx");
  EXPECT_EQ(askedFor("/d/Old.docx", "Dr. Smith"), "/d/Dr. Smith.docx");
  EXPECT_EQ(askedFor("/d/Report no. 4", "Report no. 5"), "/d/Report no. 5") << "nor had the old one any";
  EXPECT_EQ(askedFor("/d/Old.docx", "Plan."), "/d/Plan..docx") << "a dot at the end is none";
  EXPECT_EQ(askedFor("/d/Old.docx", ".hidden"), "/d/.hidden.docx");
  EXPECT_EQ(askedFor("/d/Old.docx", ""), "/d/.docx");
  EXPECT_EQ(askedFor("/d/Old", "Plan"), "/d/Plan");
  EXPECT_EQ(askedFor("/d.x/Old", "Plan"), "/d.x/Plan") << "a folder's extension is not the file's";
  EXPECT_EQ(askedFor("/d/Old.DOCX", "Plan"), "/d/Plan.DOCX");
}

TEST_F(Rename, StaysInTheFolder) {
  EXPECT_EQ(askedFor("/d/e f/Old.docx", "Plan"), "/d/e f/Plan.docx");
  EXPECT_EQ(askedFor("/Old.docx", "Plan"), "/Plan.docx");
  EXPECT_EQ(askedFor("Old.docx", "Plan"), std::nullopt) << "a bare name says no folder";
  EXPECT_EQ(askedFor("", "Plan"), std::nullopt);
}

TEST_F(Rename, NamesTheDocumentByItsFile) {
  askedFor("/d/Old.docx", "Plan");
  EXPECT_EQ(mac.scripts().sources().back(),
            R"(tell application "Microsoft Word"
    set d to first document whose name is "Old.docx"
    save as d file name "/d/Plan.docx"
    return "ok"
end tell)");
}

TEST_F(Rename, ToTheSameNameDoesNothing) {
  EXPECT_EQ(askedFor(inFolder("Old.docx"), "Old"), std::nullopt);
  EXPECT_EQ(askedFor(inFolder("Old.docx"), "Old.docx"), std::nullopt);
  EXPECT_EQ(askedFor("/nowhere/Gone.docx", "Gone"), std::nullopt) << "also when the file is gone";
  EXPECT_TRUE(mac.scripts().sources().empty());
}

TEST_F(Rename, NeverOverwritesAFile) {
  const auto plan = openInWord("Plan.docx");
  std::filesystem::create_directory(inFolder("Folder.docx"));
  EXPECT_EQ(rename("Plan"), std::nullopt);
  EXPECT_EQ(rename("Folder"), std::nullopt) << "nor a folder";
  EXPECT_EQ(contentOf(inFolder("Plan.docx")), "as opened");
  EXPECT_TRUE(exists(inFolder("Old.docx")));
  EXPECT_TRUE(mac.scripts().sources().empty());
}

TEST_F(Rename, AsksForNoNameThatCannotBeLookedAt) {
  EXPECT_EQ(rename(std::string(5000, 'x')), std::nullopt);
  EXPECT_EQ(rename(std::string("Pl\0an", 5)), std::nullopt);
  EXPECT_EQ(automation.rename(*record(*report->window), inFolder("Old.docx") + std::string("\0x", 2), "Plan"),
            std::nullopt);
  EXPECT_TRUE(mac.scripts().sources().empty());
  EXPECT_TRUE(exists(inFolder("Old.docx")));
}

TEST_F(Rename, ToNamesThatHoldAnything) {
  for (const std::string name : {R"(say "hi".docx)", R"(back\slash.docx)", "ta\tb.docx", "line\nbreak.docx",
                                 "计划 Ωμέγα 😀.docx", R"(\".docx)"}) {
    const std::string before = report->path;
    EXPECT_EQ(rename(name), inFolder(name));
    EXPECT_TRUE(exists(inFolder(name)));
    EXPECT_FALSE(exists(before));
  }
  EXPECT_EQ(scriptErrors(), 0U);
}

TEST_F(Rename, IntoAFolderThatIsNotThereFails) {
  EXPECT_EQ(rename("no such folder/Plan"), std::nullopt);
  EXPECT_TRUE(exists(inFolder("Old.docx")));
  EXPECT_EQ(scriptErrors(), 1U);
}

TEST_F(Rename, OfADocumentThatIsNotOpenFails) {
  std::ofstream(inFolder("Closed.docx")) << "closed";
  EXPECT_EQ(automation.rename(*record(*report->window), inFolder("Closed.docx"), "Plan"), std::nullopt);
  EXPECT_EQ(contentOf(inFolder("Closed.docx")), "closed");
  EXPECT_FALSE(exists(inFolder("Plan.docx")));
}

TEST_F(Rename, HasNoMeaningInOutlookAndElsewhere) {
  const auto element = report->window->element();
  launch(OfficeApp::outlook);
  const OfficeWindow message(mac.accessibility(), element, TrackedApp::of(OfficeApp::outlook), word.pid());
  const OfficeWindow text(mac.accessibility(), element, {"org.example.editor", "Editor", std::nullopt},
                          word.pid());
  EXPECT_EQ(automation.rename(message, inFolder("Old.docx"), "Plan"), std::nullopt);
  EXPECT_EQ(automation.rename(text, inFolder("Old.docx"), "Plan"), std::nullopt);
  EXPECT_TRUE(mac.scripts().sources().empty());
  EXPECT_TRUE(log.messages().empty());
}

TEST_F(Rename, OfADocumentWhoseApplicationHasQuitDoesNothing) {
  const auto window = record(*report->window);
  mac.terminate(word);
  EXPECT_EQ(automation.rename(*window, inFolder("Old.docx"), "Plan"), std::nullopt);
  EXPECT_EQ(contentOf(inFolder("Old.docx")), "as opened");
  EXPECT_EQ(mac.office().launches(), 0);
  EXPECT_TRUE(log.messages().empty()) << "no file of it is in doubt";
}

TEST_F(Rename, AnswersOtherThanOkAreNoSuccess) {
  for (const ScriptDescriptor& odd :
       {ScriptDescriptor{"OK"}, ScriptDescriptor{"ok "}, ScriptDescriptor{""}, ScriptDescriptor{1},
        ScriptDescriptor{std::vector{ScriptDescriptor{"ok"}}}}) {
    mac.scripts().answer = [&](const std::string& source) {
      static_cast<void>(mac.scripts().interpret(source));
      return ScriptResult{odd, std::nullopt};
    };
    EXPECT_EQ(rename("Plan"), std::nullopt);
    EXPECT_TRUE(exists(inFolder("Plan.docx"))) << "the application did save";
    EXPECT_TRUE(exists(inFolder("Old.docx"))) << "and nothing was taken away";
    std::filesystem::remove(inFolder("Plan.docx"));
    report->path = inFolder("Old.docx");
    report->name = "Old.docx";
  }
}

TEST_F(Rename, OkWithoutAFileIsNoSuccess) {
  saving([] {});
  EXPECT_EQ(rename("Plan"), std::nullopt);
  EXPECT_TRUE(exists(inFolder("Old.docx")));
}

TEST_F(Rename, OkWithAFolderIsNoSuccess) {
  saving([&] { std::filesystem::create_directories(inFolder("Folder.docx")); });
  EXPECT_EQ(rename("Folder"), std::nullopt);
  EXPECT_EQ(contentOf(inFolder("Old.docx")), "as opened");
}

TEST_F(Rename, OkWithAnEmptyFileIsASuccessThatKeepsTheOldFile) {
  saving([&] {
    std::ofstream(inFolder("Plan.docx")).flush();
    report->path = inFolder("Plan.docx");
  });
  EXPECT_EQ(rename("Plan"), inFolder("Plan.docx"));
  EXPECT_EQ(contentOf(inFolder("Old.docx")), "as opened");
  EXPECT_TRUE(log.has(kept(inFolder("Old.docx"), "the new file is empty")));
}

TEST_F(Rename, OfAnEmptyFileKeepsBoth) {
  const auto table = mac.office().openInWindow(word, {.path = inFolder("Old.rtf"), .content = ""});
  EXPECT_EQ(automation.rename(*record(*table->window), table->path, "New"), inFolder("New.rtf"));
  EXPECT_TRUE(exists(inFolder("Old.rtf")));
  EXPECT_TRUE(exists(inFolder("New.rtf")));
}

TEST_F(Rename, ANewNameForTheSameFileLosesNothing) {
  saving([&] { std::filesystem::create_symlink(inFolder("Old.docx"), inFolder("Plan.docx")); });
  EXPECT_EQ(rename("Plan"), inFolder("Plan.docx"));
  EXPECT_EQ(contentOf(inFolder("Plan.docx")), "as opened");
  EXPECT_TRUE(log.has(kept(inFolder("Old.docx"), "the new name leads to it")));
}

TEST_F(Rename, ADocumentThatIsStillTheOldFileKeepsIt) {
  // The application saved a copy and went on with the old file.
  saving([&] { std::ofstream(inFolder("Plan.docx")) << "as opened"; });
  EXPECT_EQ(rename("Plan"), inFolder("Plan.docx"));
  EXPECT_TRUE(exists(inFolder("Old.docx")));
  EXPECT_TRUE(log.has(kept(inFolder("Old.docx"), "the document may still be open")));
}

TEST_F(Rename, WithoutAnAnswerAfterwardsBothFilesStay) {
  bool saved = false;
  mac.scripts().answer = [&](const std::string& source) {
    if (saved) return ScriptResult{ScriptDescriptor{std::vector<ScriptDescriptor>{}}, std::nullopt};
    saved = source.find("save as d") != std::string::npos;
    return mac.scripts().interpret(source);
  };
  EXPECT_EQ(rename("Plan"), inFolder("Plan.docx"));
  EXPECT_EQ(contentOf(inFolder("Old.docx")), "as opened");
  EXPECT_EQ(contentOf(inFolder("Plan.docx")), "as opened");
  EXPECT_TRUE(log.has(kept(inFolder("Old.docx"), "the application did not name its open documents")));
}

TEST_F(Rename, WordFreezingOnceItSavedKeepsBothFiles) {
  mac.office().afterEvent = [&](const std::string& event) {
    if (event == "save as") word.freeze();
  };
  EXPECT_EQ(rename("Plan"), std::nullopt) << "it did not say that it saved";
  EXPECT_EQ(contentOf(inFolder("Old.docx")), "as opened");
  EXPECT_EQ(contentOf(inFolder("Plan.docx")), "as opened");
  EXPECT_TRUE(log.has(kept(inFolder("Old.docx"), "the application did not confirm the new file")));
}

TEST_F(Rename, WordThatSavesLongAfterItWasGivenUpLosesNothing) {
  mac.office().beforeEvent = [&](const std::string& event) {
    if (event == "save as") word.freeze();
  };
  EXPECT_EQ(rename("Plan"), std::nullopt);
  EXPECT_TRUE(log.has(kept(inFolder("Old.docx"), "the application did not confirm the new file")));
  mac.office().beforeEvent = nullptr;
  word.resume();
  mac.settle();
  EXPECT_EQ(contentOf(inFolder("Old.docx")), "as opened");
  EXPECT_EQ(contentOf(inFolder("Plan.docx")), "as opened");
  EXPECT_EQ(rename("Better"), inFolder("Better.docx")) << "from then on it has the new name";
  EXPECT_FALSE(exists(inFolder("Plan.docx")));
  EXPECT_EQ(contentOf(inFolder("Old.docx")), "as opened");
}

TEST_F(Rename, WhereASecondDocumentBearsTheNameNothingIsDone) {
  mac.office().openInWindow(word, {.path = inFolder("other/Old.docx"), .content = "another"});
  EXPECT_EQ(rename("Plan"), std::nullopt);
  EXPECT_FALSE(exists(inFolder("Plan.docx")));
  EXPECT_EQ(contentOf(inFolder("Old.docx")), "as opened");
  EXPECT_EQ(contentOf(inFolder("other/Old.docx")), "another");
  EXPECT_EQ(mac.scripts().sources().size(), 1U) << "it is not even told to save";
}

TEST_F(Rename, WhereTheNameMeansAnotherFileByNowNothingIsDone) {
  std::filesystem::create_directory(inFolder("copies"));
  const std::string original = report->path;
  mac.office().saveAs(word.pid(), report, inFolder("copies/Old.docx"));
  EXPECT_EQ(automation.rename(*record(*report->window), original, "Plan"), std::nullopt);
  EXPECT_TRUE(exists(original));
  EXPECT_TRUE(exists(inFolder("copies/Old.docx")));
  EXPECT_FALSE(exists(inFolder("Plan.docx")));
}

TEST_F(Rename, AFileReachedByAnotherSpellingOfItsPathIsTheSame) {
  std::filesystem::create_directory_symlink(inFolder(""), inFolder("link"));
  EXPECT_EQ(automation.rename(*record(*report->window), inFolder("link/Old.docx"), "Plan"),
            inFolder("link/Plan.docx"));
  EXPECT_FALSE(exists(inFolder("Old.docx")));
  EXPECT_EQ(contentOf(inFolder("Plan.docx")), "as opened");
}

TEST_F(Rename, ATitleThatLeavesTwoDocumentsOpenRenamesNeither) {
  openInWord("Old.doc");
  report->window->retitle("Old");
  EXPECT_EQ(rename("Plan"), std::nullopt);
  report->window->retitle("Old.docx - Word");
  EXPECT_EQ(rename("Plan"), inFolder("Plan.docx"));
  EXPECT_TRUE(exists(inFolder("Old.doc")));
}

TEST_F(Rename, AFileThatComesWhileWordIsAskedIsNotOverwritten) {
  mac.office().beforeEvent = [&](const std::string& event) {
    if (event == "get every document") std::ofstream(inFolder("Plan.docx")) << "somebody else's";
  };
  EXPECT_EQ(rename("Plan"), std::nullopt);
  EXPECT_EQ(contentOf(inFolder("Plan.docx")), "somebody else's");
  EXPECT_EQ(contentOf(inFolder("Old.docx")), "as opened");
}

TEST_F(Rename, RemovesTheOldFileOnlyWhenTheNewOneIsOnTheDisk) {
  test::BrokenFileOperations files;
  Automation careful(mac.platform(), files);
  EXPECT_EQ(careful.rename(*record(*report->window), report->path, "Plan"), inFolder("Plan.docx"));
  EXPECT_EQ(files.steps, (std::vector<std::string>{"flushFile", "flushFolder", "remove"}));
}

TEST_F(Rename, IntoAnotherFolderMakesTheNewFileLastThere) {
  std::filesystem::create_directory(inFolder("sub"));
  test::BrokenFileOperations files;
  Automation careful(mac.platform(), files);
  const std::string moved = inFolder("sub/Plan.docx");
  EXPECT_EQ(careful.rename(*record(*report->window), report->path, "sub/Plan"), moved);
  EXPECT_EQ(files.flushed, (std::vector<std::filesystem::path>{moved, inFolder("sub")}));
  EXPECT_TRUE(exists(moved));
  EXPECT_FALSE(exists(inFolder("Old.docx")));
}

TEST_F(Rename, AnOldFileThatCannotBeRemovedStaysBesideTheNewOne) {
  for (const std::string step : {"flushFile", "flushFolder", "remove"}) {
    test::BrokenFileOperations files;
    files.before = [&](std::string_view at) {
      return at == step ? std::make_error_code(std::errc::permission_denied) : std::error_code{};
    };
    Automation hindered(mac.platform(), files);
    const std::string before = report->path;
    EXPECT_EQ(hindered.rename(*record(*report->window), before, "After " + step),
              inFolder("After " + step + ".docx"));
    EXPECT_TRUE(exists(before));
    EXPECT_TRUE(exists(inFolder("After " + step + ".docx")));
    EXPECT_EQ(files.steps.back(), step);
    EXPECT_TRUE(log.has(
        kept(before, step == "remove" ? "it cannot be removed" : "the new file may not be on the disk")));
  }
}

// The disk refuses one step, or all from there, or the machine stops: the document is whole under its old
// name or its new one.
TEST_F(Rename, AtEveryStepTheDocumentIsWholeUnderOneOfItsNames) {
  int round = 0;
  for (const bool staysBroken : {false, true}) {
    for (int hit = 0; hit < 4; ++hit) {
      const std::string before = report->path;
      const std::string name = "Round " + std::to_string(round++);
      const std::string after = inFolder(name + ".docx");
      test::BrokenFileOperations files;
      int steps = 0;
      files.before = [&](std::string_view) {
        // Were it the last step, this is what a restart would find.
        EXPECT_EQ(contentOf(exists(before) ? before : after), "as opened");
        const int step = steps++;
        return step == hit || (staysBroken && step > hit) ? std::make_error_code(std::errc::io_error)
                                                          : std::error_code{};
      };
      Automation hindered(mac.platform(), files);
      EXPECT_EQ(hindered.rename(*record(*report->window), before, name), after);
      EXPECT_EQ(contentOf(after), "as opened");
      const bool wasHit = steps > hit;
      EXPECT_EQ(exists(before), wasHit) << "the old file goes when nothing is in doubt";
      EXPECT_EQ(wasHit, hit < 3);
    }
  }
}

TEST_F(Rename, AnOldFileThatIsGoneAlreadyDoesNotMatter) {
  mac.office().afterEvent = [&](const std::string&) { std::filesystem::remove(inFolder("Old.docx")); };
  EXPECT_EQ(rename("Plan"), inFolder("Plan.docx"));
  EXPECT_EQ(contentOf(inFolder("Plan.docx")), "as opened");
}

TEST_F(Rename, AWindowReportedAnewMeanwhileLosesNoOtherFile) {
  openInWord("Other.docx");
  const auto window = record(*report->window);
  window->path = inFolder("Old.docx");
  mac.office().beforeEvent = [&](const std::string&) { window->path = inFolder("Other.docx"); };
  EXPECT_EQ(automation.rename(*window, *window->path, "Plan"), inFolder("Plan.docx"));
  EXPECT_TRUE(exists(inFolder("Other.docx")));
  EXPECT_FALSE(exists(inFolder("Old.docx")));
}

}  // namespace
}  // namespace pellar
