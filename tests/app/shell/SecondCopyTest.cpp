// The user starts the program once more while it runs.

#include "app/shell/AlreadyRunning.h"
#include "tests/support/ShellStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class StartedOnceMore : public ShellStory {
 protected:
  // As the Finder does it: the system brings the running copy to reopen itself.
  void startOnceMore() {
    pellar->showItself();
    mac.settle();
  }
};

TEST_F(StartedOnceMore, OpensTheMenuForAUserWhoDoesNotFindItsItem) {
  editor.open("Plan");
  start();
  bool sawQuit = false;
  mac.statusBar().onOpening = [&](SimOpenMenu& menu) { sawQuit = menu.rows().back() == "Quit Pellar"; };
  startOnceMore();
  EXPECT_TRUE(sawQuit);
  EXPECT_EQ(mac.windows().made(), 0);
  EXPECT_TRUE(stripShown());
}

TEST_F(StartedOnceMore, BringsTheTermsBackThatWereHiddenWithTheOthers) {
  forgetTerms();
  editor.open("Plan");
  start();
  goTo(editor);
  mac.hideOthers(editor);
  ASSERT_EQ(mac.windows().visible(), Rows{});
  startOnceMore();
  EXPECT_EQ(mac.windows().key(), &window(termsTitle));
  EXPECT_EQ(mac.statusBar().openings(), 1);
  window(termsTitle).press("I Agree");
  EXPECT_TRUE(stripShown());
}

TEST_F(StartedOnceMore, BringsTheWayToThePermissionBackThatTheUserClosed) {
  mac.accessibility().setTrusted(false);
  start();
  window(onboardingTitle).clickClose();
  startOnceMore();
  EXPECT_EQ(mac.windows().key(), &window(onboardingTitle));
  goTo(editor);
  startOnceMore();
  EXPECT_EQ(mac.windows().key(), &window(onboardingTitle)) << "one that is open is used again";
  EXPECT_EQ(mac.windows().made(), 2);
  mac.accessibility().setTrusted(true);
  mac.advance(2s);
  EXPECT_EQ(mac.windows().visible(), Rows{});
  startOnceMore();
  EXPECT_EQ(mac.windows().visible(), Rows{});
}

TEST_F(StartedOnceMore, BeforeItHasLookedForThePermissionItAsksForNone) {
  pellar.emplace(mac.platform());
  startOnceMore();
  EXPECT_EQ(mac.windows().made(), 0);
}

// The process of the second copy, on a Mac of its own: all that it sees is that it is not the first.
class SecondCopy : public testing::Test {
 protected:
  static constexpr const char* title = "Pellar is already running";

  SecondCopy() {
    copy.show();
    mac.settle();
  }

  SimMac mac;
  SimApplication finder = mac.launch({.bundleId = "com.apple.finder", .name = "Finder"});
  int asked = 0;
  AlreadyRunning copy{mac.platform(), [this] {
                        ++asked;
                        EXPECT_EQ(mac.windows().visible(), std::vector<std::string>{});
                        EXPECT_FALSE(mac.program().terminated());
                      }};  // depends-on: mac
};

TEST_F(SecondCopy, SaysThatTheFirstIsRunningAndWhereItsMenuIs) {
  EXPECT_EQ(mac.windows().visible(), std::vector<std::string>{title});
  EXPECT_EQ(mac.windows().key(), &mac.windows().titled(title));
  EXPECT_EQ(mac.windows().titled(title).texts(),
            (std::vector<std::string>{"Its menu is in the menu bar. Where there is no room for it, it can be "
                                      "opened from here.",
                                      "[[Open Menu]]"}));
  const auto& description = mac.windows().titled(title).description();
  EXPECT_EQ(description.contentSize, (Size{360, 130}));
  EXPECT_EQ(description.spacing, 16);
  EXPECT_EQ(description.insets, (WindowInsets{.top = 24, .left = 24, .bottom = 20, .right = 24}));
  const auto& text = std::get<WindowLabel>(description.elements[0]);
  EXPECT_TRUE(text.centred);
  EXPECT_EQ(text.wrapWidth, 312);
  EXPECT_EQ(text.maximumLines, 2);
  EXPECT_EQ(asked, 0);
  EXPECT_FALSE(mac.program().terminated());
}

TEST_F(SecondCopy, ReturnHasTheFirstShowItselfAndEndsTheSecond) {
  mac.pressKey("insertNewline:");
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(mac.program().terminated());
  EXPECT_EQ(mac.windows().visible(), std::vector<std::string>{});
}

TEST_F(SecondCopy, ClosedItJustEnds) {
  mac.windows().titled(title).clickClose();
  EXPECT_EQ(asked, 0);
  EXPECT_TRUE(mac.program().terminated());
}

}  // namespace
}  // namespace pellar
