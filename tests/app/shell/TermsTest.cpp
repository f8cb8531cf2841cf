#include <fstream>

#include "app/info/Agreement.h"
#include "app/info/EulaWindowController.h"
#include "tests/support/ShellStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class Terms : public ShellStory {
 protected:
  Terms() {
    forgetTerms();
    editor.open("Plan");
  }
  void accept(const std::string& version) {
    change([&](Settings& settings) { settings.acceptedEulaVersion = version; });
  }
  SimApplication launchWord() {
    return mac.launch({.bundleId = "com.microsoft.Word", .name = "Microsoft Word"});
  }
  SimDocumentPointer openInWord(const SimApplication& word, const std::string& name) {
    return mac.office().openInWindow(word, {.path = (mac.home() / "Documents" / name).string()});
  }
  // Something happens while the program waits for Word's answer, the first time it asks.
  void whileWordIsAsked(const std::function<void()>& happening) {
    mac.office().beforeEvent = [this, happening](const std::string&) {
      if (!std::exchange(wordWasAsked, true)) happening();
    };
  }

  bool wordWasAsked = false;
};

TEST_F(Terms, AFirstStartShowsThemAndNoStrip) {
  start();
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
  EXPECT_FALSE(stripShown());
  EXPECT_EQ(mac.windows().key(), &window(termsTitle));
  goTo(editor);
  EXPECT_FALSE(stripShown());
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle}) << "they float above the editor";
}

TEST_F(Terms, TheWindowReadsToTheLetter) {
  start();
  EXPECT_EQ(window(termsTitle).texts(), (Rows{"End User Agreement (v1)", std::string(agreementText()),
                                              "[Read full terms online]", "[Quit]", "[[I Agree]]"}));
  const auto& description = window(termsTitle).description();
  EXPECT_EQ(description.contentSize, (Size{440, 360}));
  EXPECT_FALSE(description.closable);
  EXPECT_EQ(description.level, WindowLevel::modalPanel);
  EXPECT_EQ(static_cast<int>(description.level), 8);
  EXPECT_EQ(description.alignment, StackAlignment::trailing);
  EXPECT_EQ(description.spacing, 10);
  EXPECT_TRUE(description.columnReachesBottom);
  const auto& box = std::get<WindowTextBox>(description.elements[1]);
  EXPECT_EQ(box.height, 210);
  EXPECT_EQ(box.inset, 6);
  const auto& heading = std::get<WindowLabel>(description.elements[0]);
  EXPECT_EQ(heading.fontSize, 16);
  EXPECT_EQ(heading.weight, LabelWeight::semibold);
  EXPECT_EQ(description.insets, (WindowInsets{.top = 18, .left = 20, .bottom = 18, .right = 20}));
  EXPECT_EQ(std::get<WindowButton>(description.elements[2]).bezel, ButtonBezel::inlined);
  const auto& choice = std::get<WindowButtonRow>(description.elements[3]);
  EXPECT_EQ(choice.spacing, 10);
  for (const auto& each : choice.buttons) EXPECT_EQ(each.bezel, ButtonBezel::rounded);
}

// A user who agreed has agreed to these words: others are another version of the terms.
TEST_F(Terms, TheAgreementReadsToTheLetter) {
  EXPECT_EQ(
      agreementText(),
      R"(This is an agreement between you and the makers of Pellar. It is short on purpose; please read it.

1. You may use Pellar on every computer you work with, for any lawful purpose, at home or at work.

2. Pellar reads the titles, positions and files of your windows to draw its tabs. None of this leaves your computer. The only thing it asks its web site for is the newest version, and you can switch that off.

3. Pellar saves, renames and closes files only when you tell it to or switch auto-save on. Please keep copies of what matters to you.

4. Pellar comes as it is, without warranty, as far as the law allows. Every right that the law gives you stays untouched.

5. You may end this agreement at any time by deleting Pellar. If these terms change, you will be asked again.
)");
}

TEST_F(Terms, ReturnAcceptsAndTheStripComesWithTheNextFollowedApplication) {
  start();
  mac.pressKey("insertNewline:");
  EXPECT_FALSE(mac.windows().exists(termsTitle));
  EXPECT_EQ(mac.windows().closed(), 1);
  EXPECT_EQ(saved().acceptedEulaVersion, "1");
  EXPECT_EQ(log.messages(), (Rows{"tracking started", "terms accepted: v1"}));
  goTo(editor);
  EXPECT_TRUE(stripShown());

  pellar.reset();
  start();
  EXPECT_TRUE(mac.windows().visible().empty());
  EXPECT_TRUE(stripShown());
}

TEST_F(Terms, AReturnThatWasMeantForTheEditorDoesNotAgreeToThem) {
  accept("1");
  start();
  mac.web().answer(R"({"latest":"1.4.0","eula":{"version":"2"}})");
  mac.statusBar().choose({"Check for updates now"});
  while (!mac.windows().exists(termsTitle)) mac.advance(1ms);
  ASSERT_EQ(mac.windows().key(), &window(termsTitle));
  mac.advance(498ms);
  mac.pressKey("insertNewline:");
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
  EXPECT_EQ(saved().acceptedEulaVersion, "1");
  mac.advance(2ms);
  mac.pressKey("insertNewline:");
  EXPECT_EQ(saved().acceptedEulaVersion, "2");
}

TEST_F(Terms, AReturnInSystemSettingsDoesNotAgreeToThem) {
  mac.accessibility().setTrusted(false);
  start();
  mac.accessibility().setTrusted(true);
  mac.advance(2s);
  ASSERT_EQ(mac.windows().key(), &window(termsTitle));
  mac.pressKey("insertNewline:");
  EXPECT_EQ(saved().acceptedEulaVersion, "");
  mac.advance(500ms);
  mac.pressKey("insertNewline:");
  EXPECT_EQ(saved().acceptedEulaVersion, "1");
}

TEST_F(Terms, AskedForTheyAnswerAtOnce) {
  start();
  goTo(editor);
  pellar->showItself();
  mac.settle();
  mac.pressKey("insertNewline:");
  EXPECT_EQ(saved().acceptedEulaVersion, "1");
}

TEST_F(Terms, ReturnOnQuitQuits) {
  start();
  window(termsTitle).tabTo("Quit");
  mac.pressKey("insertNewline:");
  EXPECT_TRUE(mac.program().terminated());
  EXPECT_EQ(saved().acceptedEulaVersion, "");
}

TEST_F(Terms, ReturnOnTheLinkAgrees) {
  start();
  window(termsTitle).tabTo("Read full terms online");
  mac.pressKey("insertNewline:");
  EXPECT_EQ(saved().acceptedEulaVersion, "1");
  EXPECT_TRUE(mac.workspace().openedUrls().empty());
}

TEST_F(Terms, OtherKeysDoNotAcceptAndTheWindowCannotBeClosed) {
  start();
  mac.pressKey("cancelOperation:");
  mac.type("y");
  EXPECT_THROW(window(termsTitle).clickClose(), std::logic_error);
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
  EXPECT_EQ(saved().acceptedEulaVersion, "");
}

TEST_F(Terms, QuitRecordsNothing) {
  start();
  window(termsTitle).press("Quit");
  EXPECT_TRUE(mac.program().terminated());
  EXPECT_EQ(saved().acceptedEulaVersion, "");
  pellar.reset();
  start();
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
}

TEST_F(Terms, AcceptedOnADiskThatIsFullTheyHoldForTheRun) {
  const auto folder = mac.platform().folders.applicationSupport / "Pellar";
  std::filesystem::remove_all(folder);
  start();
  std::ofstream(folder) << "in the way";
  window(termsTitle).press("I Agree");
  const auto lines = log.messages();
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_TRUE(lines[1].starts_with("state save failed: ")) << lines[1];
  EXPECT_EQ(lines[2], "terms accepted: v1");
  goTo(editor);
  EXPECT_TRUE(stripShown());
  pellar.reset();
  start();
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
}

TEST_F(Terms, TheFullTermsAreOnTheWebSite) {
  start();
  window(termsTitle).press("Read full terms online");
  EXPECT_EQ(mac.workspace().openedUrls(), Rows{"https://pellar.example/terms.html"});
}

TEST_F(Terms, AcceptingAnotherVersionThanTheRequiredOneIsNotEnough) {
  for (const auto* other : {"0", "2", "1.0", " 1", "v1"}) {
    pellar.reset();
    accept(other);
    start();
    EXPECT_EQ(mac.windows().visible(), Rows{termsTitle}) << other;
    goTo(editor);
    EXPECT_FALSE(stripShown()) << other;
  }
}

TEST_F(Terms, NewerOnesComeUpAtOnceAndHideTheStrip) {
  accept("1");
  start();
  ASSERT_TRUE(stripShown());
  pellar->strip()->openRecent();
  announceTerms(R"({"version":"2","url":"https://pellar.example/terms-2.html"})");
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
  EXPECT_EQ(window(termsTitle).texts().front(), "End User Agreement (v2)");
  for (const auto* panel : mac.panels().all()) EXPECT_FALSE(panel->isVisible());
  window(termsTitle).press("Read full terms online");
  EXPECT_EQ(mac.workspace().openedUrls(), Rows{"https://pellar.example/terms-2.html"});
  window(termsTitle).press("I Agree");
  EXPECT_EQ(saved().acceptedEulaVersion, "2");
  EXPECT_EQ(log.count("terms accepted: v2"), 1);
  goTo(editor);
  EXPECT_TRUE(stripShown());
}

TEST_F(Terms, NewerOnesThatComeWhileWordIsAskedLeaveNoStripBesideThem) {
  accept("1");
  start();
  const auto word = launchWord();
  mac.settle();
  whileWordIsAsked([&] { announceTerms(R"({"version":"2"})"); });
  const auto plan = openInWord(word, "Plan.docx");
  const AxRect underTheMenuBar{100, 30, 1300, 600};
  plan->window->setFrame(underTheMenuBar);
  mac.settle();
  ASSERT_TRUE(wordWasAsked);
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
  EXPECT_FALSE(stripShown());
  EXPECT_EQ(plan->window->frame(), underTheMenuBar) << "nothing makes room for it";
  window(termsTitle).press("I Agree");
  goTo(word);
  EXPECT_TRUE(stripShown());
}

TEST_F(Terms, AClickIntoTheSearchThatArrivesAfterThemOpensNothing) {
  start();
  goTo(editor);
  pellar->strip()->openRecent();
  for (const auto* panel : mac.panels().all()) EXPECT_FALSE(panel->isVisible());
}

TEST_F(Terms, AcceptedWhileTheEditorIsInFrontBringsTheStripAtOnce) {
  start();
  goTo(editor);
  window(termsTitle).press("I Agree");
  EXPECT_TRUE(stripShown());
}

TEST_F(Terms, AgreeingASecondTimeWhileWordIsAskedChangesNothing) {
  const auto word = launchWord();
  openInWord(word, "Plan.docx");
  start();
  goTo(word);
  whileWordIsAsked([&] {
    EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
    window(termsTitle).press("I Agree");
  });
  window(termsTitle).press("I Agree");
  ASSERT_TRUE(wordWasAsked);
  EXPECT_EQ(log.count("terms accepted: v1"), 1);
  EXPECT_FALSE(mac.windows().exists(termsTitle));
  EXPECT_TRUE(stripShown());
}

TEST_F(Terms, AnnouncedAgainTheyComeBackBeforeTheEditor) {
  start();
  goTo(editor);
  ASSERT_EQ(mac.windows().key(), nullptr);
  announceTerms(R"({"version":"2"})");
  EXPECT_EQ(mac.windows().key(), &window(termsTitle));
  EXPECT_EQ(mac.windows().made(), 1);
}

TEST_F(Terms, AnAnnouncementWithoutAnAddressKeepsTheOneKnown) {
  accept("1");
  start();
  announceTerms(R"({"version":"1","url":"https://pellar.example/other.html"})");
  EXPECT_TRUE(mac.windows().visible().empty());
  announceTerms(R"({"version":"2"})");
  window(termsTitle).press("Read full terms online");
  EXPECT_EQ(mac.workspace().openedUrls(), Rows{"https://pellar.example/other.html"});
}

TEST_F(Terms, AnAddressThatIsNotOfTheWebOpensNothing) {
  accept("1");
  start();
  announceTerms(R"({"version":"2","url":"file:///Applications/Calculator.app"})");
  window(termsTitle).press("Read full terms online");
  EXPECT_TRUE(mac.workspace().openedUrls().empty());
}

TEST_F(Terms, AcceptingInAWindowThatIsLeftOpenRecordsTheNewerVersion) {
  start();
  announceTerms(R"({"version":"2"})");
  EXPECT_EQ(window(termsTitle).texts().front(), "End User Agreement (v1)") << "it stays as it is";
  EXPECT_EQ(mac.windows().made(), 1);
  window(termsTitle).press("I Agree");
  EXPECT_EQ(saved().acceptedEulaVersion, "2");
  EXPECT_TRUE(mac.windows().visible().empty());
}

TEST_F(Terms, TheSameAnnouncementTwiceChangesNothing) {
  accept("1");
  start();
  announceTerms(R"({"version":"2"})");
  announceTerms(R"({"version":"2"})");
  EXPECT_EQ(mac.windows().made(), 1);
  window(termsTitle).press("I Agree");
  announceTerms(R"({"version":"2"})");
  EXPECT_TRUE(mac.windows().visible().empty());
  goTo(editor);
  EXPECT_TRUE(stripShown());
}

TEST_F(Terms, AnnouncedAgainAsTheAcceptedOnesTheOpenWindowCloses) {
  accept("1");
  start();
  announceTerms(R"({"version":"2"})");
  ASSERT_EQ(mac.windows().visible(), Rows{termsTitle});
  announceTerms(R"({"version":"1"})");
  EXPECT_FALSE(mac.windows().exists(termsTitle));
  EXPECT_TRUE(stripShown()) << "the editor has its place again";
}

TEST_F(Terms, AnnouncedAgainAsTheAcceptedOnesTheStripIsThereAtOnce) {
  accept("1");
  start();
  announceTerms(R"({"version":"2"})");
  goTo(editor);
  ASSERT_EQ(mac.windows().visible(), Rows{termsTitle});
  ASSERT_FALSE(stripShown());
  announceTerms(R"({"version":"1"})");
  EXPECT_TRUE(mac.windows().visible().empty());
  EXPECT_TRUE(stripShown());
}

TEST_F(Terms, TheRequirementLivesForTheRun) {
  accept("1");
  start();
  announceTerms(R"({"version":"2"})");
  pellar.reset();
  start();
  EXPECT_TRUE(mac.windows().visible().empty());
}

TEST_F(Terms, AnEmptyRequirementCannotBeAccepted) {
  accept("1");
  start();
  announceTerms(R"({"version":""})");
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
  window(termsTitle).press("I Agree");
  EXPECT_EQ(mac.windows().visible(), Rows{termsTitle}) << "they are back";
  EXPECT_EQ(mac.windows().made(), 2);
  goTo(editor);
  EXPECT_FALSE(stripShown());
}

TEST_F(Terms, AnAnnouncementWhileThePermissionIsAwaitedShowsThem) {
  accept("1");
  mac.accessibility().setTrusted(false);
  start();
  announceTerms(R"({"version":"2"})");
  EXPECT_EQ(mac.windows().visible(), (Rows{onboardingTitle, termsTitle}));
}

TEST_F(Terms, TheWindowIsClosedOnceThoughAcceptingDropsItsController) {
  std::unique_ptr<EulaWindowController> terms;
  std::vector<std::string> order;
  terms = std::make_unique<EulaWindowController>(mac.windows(), mac.workspace(), mac.program(), "1", "", [&] {
    order.push_back(mac.windows().visible().empty() ? "accepted unseen" : "accepted in sight");
    terms.reset();
    EXPECT_EQ(mac.windows().visible(), Rows{termsTitle});
  });
  terms->window().makeKeyAndOrderFront();
  window(termsTitle).press("I Agree");
  EXPECT_EQ(order, Rows{"accepted in sight"});
  EXPECT_FALSE(mac.windows().exists(termsTitle));
  EXPECT_EQ(mac.windows().closed(), 1);
}

TEST_F(Terms, APressThatArrivesOnceTheirWindowIsGoneAgreesToNothing) {
  int accepted = 0;
  auto terms = std::make_unique<EulaWindowController>(mac.windows(), mac.workspace(), mac.program(), "1", "",
                                                      [&] { ++accepted; });
  const auto choice =
      std::get<WindowButtonRow>(window(termsTitle).description().elements.back());  // as the system keeps it
  terms.reset();
  ASSERT_FALSE(mac.windows().exists(termsTitle));
  choice.buttons.back().handler();
  EXPECT_EQ(accepted, 0);
}

}  // namespace
}  // namespace pellar
