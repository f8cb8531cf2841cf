#include "tests/support/ShellStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class AutoSaving : public ShellStory {
 protected:
  AutoSaving() { setMinutes(1); }

  void setMinutes(std::int64_t minutes) {
    change([&](Settings& settings) { settings.autoSaveMinutes = minutes; });
  }
  SimApplication launch(OfficeApp app) {
    return mac.launch({.bundleId = std::string(bundleID(app)), .name = std::string(scriptName(app))});
  }
  SimDocumentPointer changedDocument(const SimApplication& application, const std::string& name) {
    const auto document =
        mac.office().openInWindow(application, {.path = (mac.home() / "Documents" / name).string()});
    SimOffice::edit(*document, "changed");
    return document;
  }
  // The editor's Save, which counts how often it is pressed.
  void giveEditorASave() {
    editor.setMenuBar({{"Apple", {}}, {"File", {{"New"}, {"Save", [this] { ++pressed; }}}}});
  }
  // A script finds the application busy for a while.
  void freezeWhenAsked(SimApplication& application, std::chrono::seconds time) {
    mac.office().beforeEvent = [this, &application, time](const std::string&) {
      mac.office().beforeEvent = nullptr;
      application.freeze();
      thaw = mac.mainLoop().after(time, [&application] { application.resume(); });
    };
  }

  int pressed = 0;
  Subscription thaw;
};

TEST_F(AutoSaving, ChangedDocumentsAreSavedAfterOneWholeInterval) {
  auto word = launch(OfficeApp::word);
  const auto report = changedDocument(word, "Report.docx");
  const auto plan = changedDocument(word, "Plan.docx");
  start();
  mac.advance(59s);
  EXPECT_EQ(report->saves, 0);
  mac.advance(1s);
  EXPECT_EQ(report->saves, 1);
  EXPECT_EQ(plan->saves, 1);
  EXPECT_EQ(log.count("autosave: Word saved 2"), 1);
  mac.advance(60s);
  EXPECT_EQ(report->saves, 1) << "it has not changed since";
  EXPECT_EQ(log.count("autosave: Word saved 2"), 1);
  SimOffice::edit(*plan, "changed again");
  mac.advance(60s);
  EXPECT_EQ(plan->saves, 2);
  EXPECT_EQ(log.count("autosave: Word saved 1"), 1);
}

TEST_F(AutoSaving, WordExcelAndPowerPointInThatOrder) {
  changedDocument(launch(OfficeApp::powerpoint), "Talk.pptx");
  changedDocument(launch(OfficeApp::excel), "Budget.xlsx");
  changedDocument(launch(OfficeApp::word), "Report.docx");
  start();
  mac.advance(60s);
  const auto lines = log.messages();
  EXPECT_EQ(Rows(lines.end() - 3, lines.end()),
            (Rows{"autosave: Word saved 1", "autosave: Excel saved 1", "autosave: PowerPoint saved 1"}));
}

TEST_F(AutoSaving, NothingIsAskedOfWhatIsNotRunningSwitchedOffOrOutlook) {
  change([](Settings& settings) { settings.apps["excel"] = false; });
  const auto budget = changedDocument(launch(OfficeApp::excel), "Budget.xlsx");
  launch(OfficeApp::outlook);
  goTo(editor);
  start();
  const auto scripts = mac.scripts().sources().size();
  mac.advance(10min);
  EXPECT_EQ(mac.scripts().sources().size(), scripts);
  EXPECT_EQ(budget->saves, 0);
  EXPECT_EQ(log.messages(), Rows{"tracking started"});
}

TEST_F(AutoSaving, OffAndNegativeNeverSave) {
  const auto report = changedDocument(launch(OfficeApp::word), "Report.docx");
  for (const std::int64_t minutes : {std::int64_t{0}, std::int64_t{-3}, INT64_MIN}) {
    pellar.reset();
    setMinutes(minutes);
    start();
    mac.advance(48h);
    EXPECT_EQ(report->saves, 0);
  }
}

TEST_F(AutoSaving, AnyOtherNumberInTheSettingsCounts) {
  const auto report = changedDocument(launch(OfficeApp::word), "Report.docx");
  setMinutes(7);
  start();
  mac.advance(7min - 1s);
  EXPECT_EQ(report->saves, 0);
  mac.advance(1s);
  EXPECT_EQ(report->saves, 1);
}

TEST_F(AutoSaving, AnAbsurdNumberOfMinutesIsAsGoodAsOff) {
  const auto report = changedDocument(launch(OfficeApp::word), "Report.docx");
  setMinutes(INT64_MAX);
  start();
  mac.advance(24h * 365);
  EXPECT_EQ(report->saves, 0);
}

TEST_F(AutoSaving, AnotherChoiceBeginsTheIntervalAnew) {
  const auto report = changedDocument(launch(OfficeApp::word), "Report.docx");
  setMinutes(5);
  start();
  mac.advance(4min);
  mac.statusBar().choose({"Auto-save changed files", "Every 10 min"});
  mac.advance(10min - 1s);
  EXPECT_EQ(report->saves, 0);
  mac.advance(1s);
  EXPECT_EQ(report->saves, 1);
}

TEST_F(AutoSaving, SwitchedOnByTheStripsToolItBeginsAndSwitchedOffItStops) {
  setMinutes(0);
  start();
  const auto report = changedDocument(launch(OfficeApp::word), "Report.docx");
  pellar->strip()->autoSaveToggled();
  mac.advance(60s);
  EXPECT_EQ(report->saves, 1);
  SimOffice::edit(*report, "more");
  pellar->strip()->autoSaveToggled();
  mac.advance(10min);
  EXPECT_EQ(report->saves, 1);
}

TEST_F(AutoSaving, TheStripsToolSaysAtOnceWhetherItIsOn) {
  setMinutes(0);
  editor.open("Plan", {100, 200, 1300, 600});
  start();
  mac.strip().clickTool(tool::autoSaveOff);
  EXPECT_NO_THROW(static_cast<void>(mac.strip().toolPoint(tool::autoSaveOn)));
  EXPECT_EQ(menu("Auto-save changed files"), (Rows{"Off", "✓ Every 1 min", "Every 5 min", "Every 10 min"}));
  mac.strip().clickTool(tool::autoSaveOn);
  EXPECT_NO_THROW(static_cast<void>(mac.strip().toolPoint(tool::autoSaveOff)));
}

TEST_F(AutoSaving, AFailedScriptLeavesNoOtherTraceThanItsOwnLine) {
  auto word = launch(OfficeApp::word);
  const auto report = changedDocument(word, "Report.docx");
  const auto budget = changedDocument(launch(OfficeApp::excel), "Budget.xlsx");
  goTo(editor);
  start();
  mac.scripts().answer = [this](const std::string& source) {
    if (source.find("Microsoft Word") == std::string::npos) return mac.scripts().interpret(source);
    return ScriptResult{std::nullopt, "no"};
  };
  mac.advance(60s);
  EXPECT_EQ(report->saves, 0);
  EXPECT_EQ(log.messages(), (Rows{"tracking started", "applescript error: no", "autosave: Excel saved 1"}));
  EXPECT_EQ(budget->saves, 1) << "the others are saved all the same";
}

TEST_F(AutoSaving, AnotherApplicationsFrontDocumentIsSavedByItsOwnMenu) {
  giveEditorASave();
  auto plan = editor.open("Plan.txt");
  plan.setDocument("file:///Users/ann/Plan.txt");
  start();
  mac.advance(60s);
  EXPECT_EQ(pressed, 1);
  EXPECT_EQ(log.count("autosave: Editor saved Plan.txt"), 1);
  // Its Save has nothing to do.
  editor.menu({"File", "Save"}).enabled = false;
  mac.advance(60s);
  EXPECT_EQ(pressed, 1);
  EXPECT_EQ(log.count("autosave: Editor saved Plan.txt"), 1);
}

TEST_F(AutoSaving, OfAnotherApplicationsWindowsOnlyTheOneInFrontIsSavedAndAgainEachTime) {
  giveEditorASave();
  for (const auto* name : {"Notes.txt", "Plan.txt"})
    editor.open(name).setDocument("file:///Users/ann/" + std::string(name));
  start();
  mac.advance(60s);
  EXPECT_EQ(pressed, 1);
  EXPECT_EQ(log.count("autosave: Editor saved Plan.txt"), 1);
  mac.advance(60s);
  EXPECT_EQ(pressed, 2);
  EXPECT_EQ(log.count("autosave: Editor saved Plan.txt"), 2);
}

TEST_F(AutoSaving, TheWindowInFrontIsTheOneAfterTheScripts) {
  const auto word = launch(OfficeApp::word);
  changedDocument(word, "Report.docx");
  giveEditorASave();
  editor.open("Plan.txt").setDocument("file:///Users/ann/Plan.txt");
  goTo(word);
  start();
  mac.office().beforeEvent = [&](const std::string&) {
    mac.office().beforeEvent = nullptr;
    goTo(editor);
  };
  mac.advance(60s);
  EXPECT_EQ(log.count("autosave: Word saved 1"), 1);
  EXPECT_EQ(log.count("autosave: Editor saved Plan.txt"), 1);
}

TEST_F(AutoSaving, AnApplicationSwitchedOffMeanwhileIsNotSavedAnyMore) {
  auto word = launch(OfficeApp::word);
  const auto report = changedDocument(word, "Report.docx");
  start();
  mac.advance(30s);
  mac.statusBar().choose({"Word"});
  mac.advance(60s);
  EXPECT_EQ(report->saves, 0);
}

TEST_F(AutoSaving, ItGoesOnWhileTheTermsAreNotAccepted) {
  forgetTerms();
  auto word = launch(OfficeApp::word);
  const auto report = changedDocument(word, "Report.docx");
  start();
  mac.advance(60s);
  EXPECT_EQ(report->saves, 1);
}

TEST_F(AutoSaving, OfficeDocumentsComeBeforeTheFrontDocumentOfAnotherApplication) {
  changedDocument(launch(OfficeApp::word), "Report.docx");
  giveEditorASave();
  editor.open("Plan.txt").setDocument("file:///Users/ann/Plan.txt");
  goTo(editor);
  start();
  mac.advance(60s);
  EXPECT_EQ(log.messages(),
            (Rows{"tracking started", "autosave: Word saved 1", "autosave: Editor saved Plan.txt"}));
}

TEST_F(AutoSaving, AWindowWithoutAFileIsLeftAlone) {
  giveEditorASave();
  editor.open("Untitled");
  start();
  mac.advance(5min);
  EXPECT_EQ(pressed, 0);
}

TEST_F(AutoSaving, AWindowThatSaysItShowsAnotherFileByNowIsLeftAlone) {
  giveEditorASave();
  auto window = editor.open("My thoughts");
  window.setDocument("file:///Users/ann/Plan.txt");
  start();
  // "New" in the same window, whose title never said what it shows.
  window.setDocument(std::nullopt);
  mac.advance(60s);
  EXPECT_EQ(pressed, 0) << "it would ask where to save";
  window.setDocument("file:///Users/ann/Notes.txt");
  mac.advance(60s);
  EXPECT_EQ(pressed, 0);
  EXPECT_EQ(log.messages(), Rows{"tracking started"});
  mac.advance(60s);
  EXPECT_EQ(pressed, 1) << "that it shows the other file is known by now";
}

TEST_F(AutoSaving, AnApplicationThatDoesNotSayWhetherThereIsAnythingToSaveIsSaved) {
  giveEditorASave();
  editor.open("Plan.txt").setDocument("file:///Users/ann/Plan.txt");
  editor.menu({"File", "Save"}).refusedAttributes = {"AXEnabled"};
  start();
  mac.advance(60s);
  EXPECT_EQ(pressed, 1);
  EXPECT_EQ(log.count("autosave: Editor saved Plan.txt"), 1);
}

TEST_F(AutoSaving, AnApplicationThatIsBusySavingIsToldSoOnce) {
  giveEditorASave();
  editor.open("Plan.txt").setDocument("file:///Users/ann/Plan.txt");
  editor.menu({"File", "Save"}).unansweredPress = true;
  start();
  mac.advance(60s);
  EXPECT_EQ(pressed, 1);
  EXPECT_EQ(log.count("autosave: Editor saved Plan.txt"), 1);
}

TEST_F(AutoSaving, AnOfficeDocumentIsNeverSavedByTheMenu) {
  auto word = launch(OfficeApp::word);
  word.setMenuBar({{"Apple", {}}, {"File", {{"Save", [this] { ++pressed; }}}}});
  const auto report = changedDocument(word, "Report.docx");
  report->window->setDocument("file://" + report->path);
  start();
  mac.advance(60s);
  EXPECT_EQ(report->saves, 1);
  EXPECT_EQ(pressed, 0);
}

TEST_F(AutoSaving, AFrozenApplicationHoldsUpOnlyItsOwnPass) {
  auto word = launch(OfficeApp::word);
  const auto report = changedDocument(word, "Report.docx");
  goTo(editor);
  start();
  word.freeze();
  // The interval passes again and again while the first pass waits for Word.
  mac.advance(5min);
  word.resume();
  mac.advance(3min);
  EXPECT_EQ(report->saves, 1);
  EXPECT_EQ(log.count("autosave: Word saved 1"), 1);
}

TEST_F(AutoSaving, ASaveThatIsDueWhileWordIsAskedSomethingElseComesAfterIt) {
  auto word = launch(OfficeApp::word);
  const auto report = changedDocument(word, "Report.docx");
  start();
  int underWay = 0;
  mac.scripts().answer = [&](const std::string& source) {
    EXPECT_EQ(++underWay, 1) << "scripts ran inside one another";
    auto result = mac.scripts().interpret(source);
    --underWay;
    return result;
  };
  mac.advance(50s);
  freezeWhenAsked(word, 40s);
  mac.office().openInWindow(word, {.path = (mac.home() / "Documents" / "Plan.docx").string()});
  mac.settle();
  EXPECT_GE(mac.mainLoop().uptime(), 90s) << "the save was due in between";
  EXPECT_EQ(report->saves, 1);
  EXPECT_EQ(log.count("autosave: Word saved 1"), 1);
}

TEST_F(AutoSaving, SwitchedOffWhileASaveWaitsItDoesNotCome) {
  auto word = launch(OfficeApp::word);
  const auto report = changedDocument(word, "Report.docx");
  start();
  mac.advance(50s);
  freezeWhenAsked(word, 40s);
  const auto off = mac.mainLoop().after(20s, [&] { pellar->strip()->autoSaveToggled(); });
  mac.office().openInWindow(word, {.path = (mac.home() / "Documents" / "Plan.docx").string()});
  mac.settle();
  mac.advance(10min);
  EXPECT_EQ(report->saves, 0);
}

TEST_F(AutoSaving, WordQuittingInTheMiddleLosesNothing) {
  auto word = launch(OfficeApp::word);
  const auto report = changedDocument(word, "Report.docx");
  goTo(editor);
  start();
  mac.office().beforeEvent = [&](const std::string& event) {
    if (event == "save") mac.terminate(word);
  };
  mac.advance(10min);
  EXPECT_EQ(report->saves, 0);
  for (const auto& line : log.messages()) EXPECT_FALSE(line.starts_with("autosave: ")) << line;
}

TEST_F(AutoSaving, ItGoesOnWhileThePermissionIsAwaited) {
  mac.accessibility().setTrusted(false);
  const auto report = changedDocument(launch(OfficeApp::word), "Report.docx");
  start();
  mac.advance(60s);
  EXPECT_EQ(report->saves, 1);
}

TEST_F(AutoSaving, TheProgramEndingDuringAPassIsNoHarm) {
  const auto budget = changedDocument(launch(OfficeApp::excel), "Budget.xlsx");
  const auto report = changedDocument(launch(OfficeApp::word), "Report.docx");
  start();
  mac.office().beforeEvent = [&](const std::string&) { pellar.reset(); };
  mac.advance(5min);
  EXPECT_EQ(report->saves, 1) << "the pass that had begun";
  EXPECT_EQ(budget->saves, 1);
  EXPECT_FALSE(pellar.has_value());
}

}  // namespace
}  // namespace pellar
