#include <gtest/gtest.h>

#include "tests/support/StripStory.h"

namespace pellar {
namespace {

constexpr std::uint16_t tabKey = 48;

// The user goes on typing while this program waits for somebody else.
class TypingMeanwhile : public StripStory {
 protected:
  // Word with one document, in front and with a strip.
  void startWithWord() {
    word.emplace(launchWord());
    word->quirks().answerTime = std::chrono::milliseconds(200);
    mac.office().openInWindow(*word, {.path = (mac.home() / "Plan.docx").string()});
    start();
    ASSERT_TRUE(stripShown());
  }
  // Which file is behind its window is asked with the strip on the screen.
  SimDocumentPointer openAnother() {
    auto opened = mac.office().openInWindow(*word, {.path = (mac.home() / "Report.docx").string()});
    mac.settle();
    return opened;
  }

  std::optional<SimApplication> word;
};

TEST_F(TypingMeanwhile, WhileWordIsAskedItsUsersWordsArriveAtOnce) {
  startWithWord();
  int asked = 0;
  mac.office().whileWorking = [&](const std::string&) {
    const std::string before = word->typed();
    mac.type("a");
    EXPECT_EQ(word->typed(), before + "a");
    ++asked;
  };
  openAnother();
  EXPECT_GT(asked, 0);
}

TEST_F(TypingMeanwhile, WhileWordIsAskedTheShortcutIsWords) {
  startWithWord();
  std::vector<SimKey> received;
  mac.office().whileWorking = [&](const std::string&) {
    mac.office().whileWorking = nullptr;
    mac.pressKey(tabKey, KeyFlags::control);
    received = word->keysDown();
  };
  openAnother();
  EXPECT_EQ(received, (std::vector<SimKey>{{tabKey, KeyFlags::control}}));
}

TEST_F(TypingMeanwhile, TheShortcutWorksAgainOnceWordHasAnswered) {
  startWithWord();
  const auto second = openAnother();
  ASSERT_EQ(mac.frontWindow(), *second->window);
  mac.pressKey(tabKey, KeyFlags::control);
  EXPECT_EQ(mac.frontWindow()->title(), "Plan.docx");
  EXPECT_TRUE(word->keysDown().empty());
}

TEST_F(TypingMeanwhile, WhileTheUserIsAskedWhetherOfficesListsMayBeReadHisAnswerArrivesAtOnce) {
  startWithWord();
  openAnother()->window->resizeTo({1300, 600});
  ASSERT_TRUE(stripShown()) << "with room for the search field beside two tabs";
  int read = 0;
  mac.propertyLists().whileReading = [&](const std::filesystem::path&) {
    EXPECT_FALSE(mac.eventTaps().holdKeys());
    ++read;
  };
  strip().clickSearchField();
  EXPECT_GT(read, 0);
  mac.pressKey("cancelOperation:");
  EXPECT_TRUE(mac.eventTaps().holdKeys()) << "the shortcut works again";
}

TEST_F(TypingMeanwhile, WithoutAStripNoKeyWaitsForThisProgram) {
  start();
  EXPECT_FALSE(stripShown());
  EXPECT_FALSE(mac.eventTaps().holdKeys());
  open("Report");
  auto plan = open("Plan");
  ASSERT_TRUE(stripShown());
  EXPECT_TRUE(mac.eventTaps().holdKeys());
  plan.enterFullScreen();
  ASSERT_FALSE(stripShown());
  EXPECT_FALSE(mac.eventTaps().holdKeys());
  plan.leaveFullScreen();
  ASSERT_TRUE(stripShown());
  EXPECT_TRUE(mac.eventTaps().holdKeys());
}

// A script that runs nested in another one ends first; the tap rests until the outer one has its answer.
TEST_F(TypingMeanwhile, TheShortcutRestsUntilTheLastAnswerIsThere) {
  HotkeyTap tap{mac.eventTaps(), mac.mainLoop()};
  tap.isActive = [] { return true; };
  tap.start();
  EXPECT_TRUE(mac.eventTaps().holdKeys());
  auto outer = tap.rest();
  auto inner = tap.rest();
  mac.settle();
  inner.cancel();
  EXPECT_FALSE(mac.eventTaps().holdKeys());
  outer.cancel();
  EXPECT_TRUE(mac.eventTaps().holdKeys());
}

// The program ends while Word is asked. What still wants an answer then asks through ports that are there.
TEST(QuittingMeanwhile, WhileWordIsAskedNothingIsTouchedThatIsGone) {
  SimMac mac;
  std::optional<AppDelegate> pellar(mac.platform());
  acceptTerms(*pellar);
  const auto word = mac.launch({.bundleId = "com.microsoft.Word", .name = "Microsoft Word"});
  mac.office().openInWindow(word, {.path = (mac.home() / "Plan.docx").string()});
  int events = 0;
  mac.office().beforeEvent = [&](const std::string&) {
    if (++events == 2) mac.mainLoop().post([&] { pellar.reset(); });
  };
  pellar->applicationDidFinishLaunching();
  mac.settle();
  EXPECT_GT(events, 2);
  EXPECT_FALSE(pellar.has_value());
  EXPECT_EQ(mac.eventTaps().count(), 0U);
}

}  // namespace
}  // namespace pellar
