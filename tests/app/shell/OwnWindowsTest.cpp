// Who has the keyboard after a window or a question of ours. A program without a Dock icon stays in front
// when its last window closes, and nobody has the keyboard.

#include "tests/support/ShellStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class KeyboardAfterOurs : public ShellStory {
 protected:
  KeyboardAfterOurs() { editor.open("Plan"); }

  void openAbout() { mac.statusBar().choose({"About Pellar"}); }
  // What the user types next goes to this application, and to nothing else.
  void expectKeyboardOf(const SimApplication& application) {
    const std::string before = application.typed();
    mac.type("x");
    EXPECT_EQ(application.typed(), before + "x");
  }
  void expectNoWindowOfOurs() { EXPECT_EQ(mac.windows().visible(), Rows{}); }
};

TEST_F(KeyboardAfterOurs, AgreeingToTheTermsGivesItBackAndTheStripIsThereAtOnce) {
  forgetTerms();
  start();
  window(termsTitle).press("I Agree");
  EXPECT_TRUE(stripShown());
  expectKeyboardOf(editor);
}

TEST_F(KeyboardAfterOurs, SoDoesReturnInTheTerms) {
  forgetTerms();
  start();
  mac.pressKey("insertNewline:");
  EXPECT_TRUE(stripShown());
  expectKeyboardOf(editor);
}

TEST_F(KeyboardAfterOurs, ClosingAboutGivesItBack) {
  start();
  openAbout();
  mac.type("x");
  EXPECT_EQ(editor.typed(), "") << "About has it";
  window(aboutTitle).clickClose();
  EXPECT_TRUE(stripShown());
  expectKeyboardOf(editor);
  openAbout();
  window(aboutTitle).clickClose();
  expectKeyboardOf(editor);
}

TEST_F(KeyboardAfterOurs, ClosingTheOnboardingWindowGivesItBack) {
  mac.accessibility().setTrusted(false);
  start();
  window(onboardingTitle).clickClose();
  expectKeyboardOf(editor);
}

TEST_F(KeyboardAfterOurs, OnboardingThatClosesByItselfGivesItBackToTheStripsWindow) {
  mac.accessibility().setTrusted(false);
  start();
  mac.accessibility().setTrusted(true);
  mac.advance(2s);
  expectNoWindowOfOurs();
  EXPECT_TRUE(stripShown());
  expectKeyboardOf(editor);
}

TEST_F(KeyboardAfterOurs, TermsThatFollowTheOnboardingHaveIt) {
  forgetTerms();
  mac.accessibility().setTrusted(false);
  start();
  mac.accessibility().setTrusted(true);
  const auto asked = mac.workspace().requestedActivations().size();
  mac.advance(2s);
  EXPECT_EQ(mac.windows().key(), &window(termsTitle));
  EXPECT_EQ(mac.workspace().requestedActivations().size(), asked)
      << "the editor does not flash up in between";
  window(termsTitle).press("I Agree");
  EXPECT_TRUE(stripShown());
  expectKeyboardOf(editor);
}

TEST_F(KeyboardAfterOurs, TermsThatGoByANewerAnswerGiveItBack) {
  start();
  announceTerms(R"({"version":"2"})");
  ASSERT_EQ(mac.windows().key(), &window(termsTitle));
  announceTerms(R"({"version":"1"})");
  expectNoWindowOfOurs();
  EXPECT_TRUE(stripShown());
  expectKeyboardOf(editor);
}

TEST_F(KeyboardAfterOurs, NotWhileAnotherOfOurWindowsIsOpen) {
  start();
  openAbout();
  announceTerms(R"({"version":"2"})");
  window(termsTitle).press("I Agree");
  EXPECT_EQ(mac.windows().key(), &window(aboutTitle));
  mac.type("x");
  EXPECT_EQ(editor.typed(), "");
  window(aboutTitle).clickClose();
  expectKeyboardOf(editor);
}

TEST_F(KeyboardAfterOurs, NotToTheEditorWhenTheUserHasGoneToAnotherApplication) {
  forgetTerms();
  start();
  const auto viewer = mac.launch({.bundleId = "org.example.viewer", .name = "Viewer"});
  mac.settle();
  announceTerms(R"({"version":"2"})");
  goTo(viewer);
  change([](Settings& settings) { settings.acceptedEulaVersion = "2"; });
  window(termsTitle).press("I Agree");
  expectKeyboardOf(viewer);
}

TEST_F(KeyboardAfterOurs, ItGoesToTheApplicationThatHadItLast) {
  start();
  openAbout();
  const auto viewer = mac.launch({.bundleId = "org.example.viewer", .name = "Viewer"});
  mac.settle();
  mac.activatePellar();
  mac.settle();
  window(aboutTitle).clickClose();
  expectKeyboardOf(viewer);
}

TEST_F(KeyboardAfterOurs, WhereThatOneHasEndedItGoesToTheOneBefore) {
  start();
  const auto viewer = mac.launch({.bundleId = "org.example.viewer", .name = "Viewer"});
  mac.settle();
  openAbout();
  mac.terminate(viewer);
  mac.settle();
  window(aboutTitle).clickClose();
  EXPECT_TRUE(stripShown());
  expectKeyboardOf(editor);
}

TEST_F(KeyboardAfterOurs, AWindowClosedBeforeTheSystemBroughtUsToTheFrontLeavesNobodyWithoutIt) {
  start();
  mac.workspace().activationTime = 100ms;
  openAbout();
  window(aboutTitle).clickClose();
  mac.advance(1s);
  EXPECT_TRUE(stripShown());
  expectKeyboardOf(editor);
}

TEST_F(KeyboardAfterOurs, AWindowThatTheProgramClosesAndKeepsGivesItBack) {
  const auto place = PlaceInFront::create(mac.workspace());
  const auto windows = OwnWindows::create(mac.windows(), mac.mainLoop(), place);
  const auto kept = windows->makeWindow({.title = "Kept", .contentSize = {360, 130}, .elements = {}});
  kept->makeKeyAndOrderFront();
  mac.settle();
  ASSERT_EQ(mac.windows().key(), &window("Kept"));
  kept->close();
  mac.settle();
  expectKeyboardOf(editor);
}

TEST_F(KeyboardAfterOurs, ASlowSystemGivesItBackAllTheSame) {
  mac.workspace().activationTime = 100ms;
  forgetTerms();
  start();
  mac.advance(100ms);
  window(termsTitle).press("I Agree");
  mac.advance(100ms);
  EXPECT_TRUE(stripShown());
  expectKeyboardOf(editor);
}

}  // namespace
}  // namespace pellar
