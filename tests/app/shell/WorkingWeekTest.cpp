// A week of somebody's work with the program, from its first start on.

#include "tests/support/Files.h"
#include "tests/support/ShellStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class WorkingWeek : public ShellStory {
 protected:
  WorkingWeek() {
    std::filesystem::remove_all(mac.home() / "Library" / "Application Support");
    std::filesystem::create_directories(mac.home() / "Documents");
    editor.setMenuBar({{"Apple", {}}, {"File", {{"New"}, {"Save", [this] { ++editorSaves; }}}}});
  }

  void TearDown() override {
    EXPECT_EQ(mac.menus().awaited(), 0U);
    EXPECT_EQ(mac.alerts().awaited(), 0U);
    EXPECT_EQ(mac.office().saveDialogs(), 0);
  }

  [[nodiscard]] std::string pathOf(const std::string& name) const { return mac.home() / "Documents" / name; }
  SimDocumentPointer openDocument(const SimApplication& application, const std::string& name) {
    auto document = mac.office().openInWindow(application, {.path = pathOf(name)});
    document->window->setFrame({100, 200, 1300, 600});
    mac.settle();
    return document;
  }
  [[nodiscard]] static std::string contentOf(const std::string& path) { return test::content(path); }
  [[nodiscard]] AppState savedState() const {
    return StateStore(StateStore::defaultURL(mac.home() / "Library" / "Application Support")).state();
  }
  // What was written to the log since it was looked at last.
  Rows said() {
    auto all = log.messages();
    all.erase(all.begin(), all.begin() + read_);
    read_ += static_cast<std::ptrdiff_t>(all.size());
    return all;
  }

  int editorSaves = 0;

 private:
  std::ptrdiff_t read_ = 0;
};

TEST_F(WorkingWeek, FromTheFirstStartToTheNextMonday) {
  // Monday morning. The program is started for the first time, and may not look at windows yet.
  mac.accessibility().setTrusted(false);
  mac.web().answer(R"({"latest":"1.4.0","eula":{"version":"1"}})");
  auto notes = editor.open("Notes.txt", {100, 200, 1300, 600});
  notes.setDocument("file://" + pathOf("Notes.txt"));
  auto browser = mac.launch({.bundleId = "org.example.browser", .name = "Browser", .inFront = false});
  browser.open("News", {50, 150, 1300, 700});
  auto player = mac.launch({.bundleId = "org.example.player", .name = "Player", .inFront = false});
  player.open("Song", {300, 300, 1300, 400});
  start();
  EXPECT_EQ(mac.windows().visible(), Rows{onboardingTitle});
  EXPECT_FALSE(stripShown());
  mac.advance(5s);

  // The permission is given; the terms come, and no strip before them. The site's answer brings no other
  // terms.
  mac.accessibility().setTrusted(true);
  mac.advance(2s);
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
  goTo(editor);
  EXPECT_FALSE(stripShown());
  mac.advance(1min);
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
  EXPECT_EQ(mac.windows().made(), 2);
  window(termsTitle).press("I Agree");
  goTo(editor);
  EXPECT_EQ(mac.strip().tabs(), Rows{"Notes.txt"});
  EXPECT_EQ(savedState().settings.acceptedEulaVersion, "1");
  EXPECT_EQ(said(), (Rows{"tracking started", "terms accepted: v1"}));

  // Word with three documents, which are kept together.
  auto word = mac.launch({.bundleId = "com.microsoft.Word", .name = "Microsoft Word"});
  word.quirks().listsWindowsByCreation = true;
  const auto report = openDocument(word, "Report.docx");
  const auto plan = openDocument(word, "Plan.docx");
  const auto letter = openDocument(word, "Letter.docx");
  EXPECT_EQ(mac.strip().tabs(), (Rows{"Report", "Plan", "Letter"}));
  mac.menus().nextChoose({"Save open tabs as group…"});
  mac.alerts().nextType("Project");
  mac.strip().clickTool("Groups");
  EXPECT_EQ(savedState().groups.at("Project"),
            (Rows{pathOf("Report.docx"), pathOf("Plan.docx"), pathOf("Letter.docx")}));

  // He turns auto-save on by the strip; a minute later what changed is on the disk.
  mac.activate(word);
  mac.settle();
  mac.strip().clickTool(tool::autoSaveOff);
  EXPECT_EQ(savedState().settings.autoSaveMinutes, 1);
  SimOffice::edit(*report, "the report");
  mac.advance(59s);
  EXPECT_EQ(contentOf(pathOf("Report.docx")), "as opened");
  mac.advance(1s);
  EXPECT_EQ(contentOf(pathOf("Report.docx")), "the report");
  EXPECT_EQ(said(), Rows{"autosave: Word saved 1"});

  // Tuesday. Excel, with a longer interval; Word's documents are saved while Excel is in front.
  mac.advance(23h);
  auto excel = mac.launch({.bundleId = "com.microsoft.Excel", .name = "Microsoft Excel"});
  const auto budget = openDocument(excel, "Budget.xlsx");
  EXPECT_EQ(mac.strip().tabs(), Rows{"Budget"});
  EXPECT_EQ(menu("Auto-save changed files"), (Rows{"Off", "✓ Every 1 min", "Every 5 min", "Every 10 min"}));
  mac.statusBar().choose({"Auto-save changed files", "Every 5 min"});
  SimOffice::edit(*budget, "the budget");
  SimOffice::edit(*plan, "the plan");
  mac.advance(5min);
  EXPECT_EQ(contentOf(pathOf("Budget.xlsx")), "the budget");
  EXPECT_EQ(contentOf(pathOf("Plan.docx")), "the plan");
  EXPECT_EQ(said(), (Rows{"autosave: Word saved 1", "autosave: Excel saved 1"}));

  // The editor's own file is saved by its menu, and the player is to have no strip.
  goTo(editor);
  mac.advance(5min);
  EXPECT_EQ(editorSaves, 1);
  EXPECT_EQ(said(), Rows{"autosave: Editor saved Notes.txt"});
  goTo(player);
  EXPECT_EQ(mac.strip().tabs(), Rows{"Song"});
  mac.statusBar().choose({"Hide for Player"});
  EXPECT_FALSE(stripShown());
  goTo(browser);
  EXPECT_EQ(mac.strip().tabs(), Rows{"News"});
  goTo(player);
  EXPECT_FALSE(stripShown());

  // Wednesday. The plan gets another name, and a colour.
  mac.advance(24h);
  goTo(word);
  mac.strip().clickTab("Plan");
  mac.settle();
  mac.alerts().nextType("Roadmap");
  mac.strip().clickTool("Rename");
  EXPECT_EQ(mac.strip().tabs(), (Rows{"Report", "Roadmap", "Letter"}));
  EXPECT_FALSE(std::filesystem::exists(pathOf("Plan.docx")));
  EXPECT_EQ(contentOf(pathOf("Roadmap.docx")), "the plan");
  mac.menus().nextChoose({"Colour tag", "Green"});
  mac.strip().rightClickTab("Roadmap");
  EXPECT_EQ(savedState().tags, (NameMap<std::string>{{pathOf("Roadmap.docx"), "green"}}));
  EXPECT_EQ(said(), Rows{});

  // Thursday. An update is out, and is announced once.
  mac.web().answer(R"({"latest":"1.5.0","url":"https://pellar.example/1.5.0","eula":{"version":"1"}})");
  mac.advance(24h);
  ASSERT_EQ(mac.notifications().shown().size(), 1U);
  Rows fourTimes;
  for (int look = 0; look < 4; ++look) {
    fourTimes.push_back("update available: 1.5.0 (running 1.4.0), notify=true");
    fourTimes.push_back("update notification auth granted=true; posting for 1.5.0");
  }
  EXPECT_EQ(said(), fourTimes);
  EXPECT_EQ(mac.notifications().shown()[0].title, "Pellar 1.5.0 is available");
  EXPECT_EQ(menu().front(), "Update to 1.5.0 — Download");
  mac.statusBar().choose({"About Pellar"});
  EXPECT_EQ(window(aboutTitle).text("status"), "Update to 1.5.0 is ready.");
  EXPECT_TRUE(stripShown()) << "the strip stays under a window of the program";
  window(aboutTitle).clickClose();
  mac.statusBar().choose({"Update to 1.5.0 — Download"});
  EXPECT_EQ(mac.workspace().openedUrls(), Rows{"https://pellar.example/1.5.0"});

  // Friday. The terms change while he works; he reads and accepts them, and goes on.
  goTo(word);
  mac.web().answer(R"({"latest":"1.5.0","eula":{"version":"2","url":"https://pellar.example/terms-2"}})");
  mac.advance(24h);
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
  EXPECT_FALSE(stripShown());
  window(termsTitle).press("Read full terms online");
  EXPECT_EQ(mac.workspace().openedUrls().back(), "https://pellar.example/terms-2");
  window(termsTitle).press("I Agree");
  goTo(word);
  EXPECT_EQ(mac.strip().tabs(), (Rows{"Report", "Roadmap", "Letter"}));
  mac.statusBar().choose({"Start at login"});
  mac.statusBar().choose({"Quit Pellar"});
  ASSERT_TRUE(mac.program().terminated());
  const AppState before = pellar->store().state();
  pellar.reset();
  mac.settle();
  EXPECT_FALSE(mac.strip().visible());
  EXPECT_FALSE(mac.statusBar().hasItem());

  // The weekend: nothing of the program runs.
  const auto turns = mac.mainLoop().turns();
  const auto requests = mac.web().requests().size();
  mac.advance(60h);
  EXPECT_EQ(mac.mainLoop().turns(), turns);
  EXPECT_EQ(mac.web().requests().size(), requests);
  fourTimes.push_back("terms accepted: v2");
  EXPECT_EQ(said(), fourTimes);

  // Monday. It was started at login and everything is as he left it. Which terms are required is known only
  // once the site has answered.
  EXPECT_EQ(savedState(), before);
  EXPECT_TRUE(mac.loginItem().enabled());
  start();
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
  mac.advance(9s);
  EXPECT_TRUE(mac.windows().visible().empty());
  goTo(word);
  EXPECT_EQ(mac.strip().tabs(), (Rows{"Report", "Roadmap", "Letter"}));
  EXPECT_TRUE(mac.strip().tagOf("Roadmap").has_value());
  EXPECT_EQ(menu("Hidden apps"), Rows{"Show org.example.player"});
  SimOffice::edit(*letter, "the letter");
  mac.advance(5min);
  EXPECT_EQ(contentOf(pathOf("Letter.docx")), "the letter");
  EXPECT_EQ(said(),
            (Rows{"tracking started", "update available: 1.5.0 (running 1.4.0), notify=true",
                  "update notification auth granted=true; posting for 1.5.0", "autosave: Word saved 1"}));
}

}  // namespace
}  // namespace pellar
