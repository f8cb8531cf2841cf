// In which order things happen, where the order is part of what is promised.

#include "tests/support/RecordedPlatform.h"
#include "tests/support/ShellStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class Order : public ShellStory {
 protected:
  // Starts on the platform that notes its calls.
  void startRecorded() {
    pellar.emplace(recorded.platform());
    pellar->applicationDidFinishLaunching();
    mac.settle();
  }
  void TearDown() override { pellar.reset(); }

  RecordedPlatform recorded{mac};
};

TEST_F(Order, OfAStartWithPermission) {
  change([](Settings& settings) { settings.autoSaveMinutes = 5; });
  editor.open("Plan");
  startRecorded();
  EXPECT_EQ(recorded.calls(), (Rows{"status item", "every 300000 ms", "after 8000 ms", "every 21600000 ms",
                                    "trusted?", "hotkey tap", "observe the application in front"}));
  EXPECT_TRUE(stripShown());
}

TEST_F(Order, OfAStartWithoutAutoSaveAndWithTermsToAccept) {
  forgetTerms();
  editor.open("Plan");
  startRecorded();
  EXPECT_EQ(Rows(recorded.calls().begin(), recorded.calls().begin() + 6),
            (Rows{"status item", "after 8000 ms", "every 21600000 ms", "trusted?",
                  "window \"Pellar End User Agreement\"", "hotkey tap beside a window"}));
}

TEST_F(Order, OfAStartWithoutPermission) {
  mac.accessibility().setTrusted(false);
  editor.open("Plan");
  startRecorded();
  EXPECT_EQ(recorded.calls(),
            (Rows{"status item", "after 8000 ms", "every 21600000 ms", "trusted?", "ask the user for trust",
                  "window \"Pellar needs Accessibility access\"", "every 2000 ms"}));
  recorded.forget();
  mac.advance(4s);
  EXPECT_EQ(recorded.calls(), (Rows{"trusted?", "trusted?"}));
  mac.accessibility().setTrusted(true);
  goTo(editor);
  recorded.forget();
  mac.advance(2s);
  EXPECT_EQ(recorded.calls(), (Rows{"trusted?", "hotkey tap", "observe the application in front"}))
      << "the window is closed before";
  recorded.forget();
  mac.advance(1min);
  EXPECT_EQ(std::ranges::count(recorded.calls(), "trusted?"), 0) << "nobody asks any more";
}

TEST_F(Order, TheStripIsGoneBeforeOtherTermsAreShown) {
  editor.open("Plan");
  startRecorded();
  ASSERT_TRUE(stripShown());
  pellar->strip()->openRecent();
  recorded.forget();
  mac.web().answer(R"({"latest":"1.4.0","eula":{"version":"2"}})");
  mac.advance(9s);
  EXPECT_EQ(recorded.calls(),
            (Rows{"activate " + std::to_string(editor.pid()), "window \"Pellar End User Agreement\""}))
      << "the search has given the keyboard back before";
  recorded.forget();
  mac.statusBar().choose({"About Pellar"});
  EXPECT_EQ(recorded.calls(), Rows{"window \"About Pellar\""});
}

TEST_F(Order, AWindowIsMadeTheMainOneBeforeItsSaveIsPressed) {
  change([](Settings& settings) { settings.autoSaveMinutes = 1; });
  editor.setMenuBar({{"Apple", {}}, {"File", {{"Save", [] {}}}}});
  editor.open("Plan.txt").setDocument("file:///Users/ann/Plan.txt");
  startRecorded();
  recorded.forget();
  mac.advance(60s);
  auto calls = recorded.calls();
  std::erase(calls, "after 8000 ms");
  EXPECT_EQ(calls, (Rows{"write AXMain true: Plan.txt", "AXPress: Save"}));
  EXPECT_EQ(log.count("autosave: Editor saved Plan.txt"), 1);
}

TEST_F(Order, AnotherAutoSaveIntervalAlwaysReplacesTheTimer) {
  startRecorded();
  const auto timers = mac.mainLoop().activeTimers();
  for (const char* choice : {"Every 1 min", "Every 10 min", "Every 5 min", "Every 5 min"}) {
    mac.statusBar().choose({"Auto-save changed files", choice});
    EXPECT_EQ(mac.mainLoop().activeTimers(), timers + 1) << choice;
  }
  mac.statusBar().choose({"Auto-save changed files", "Off"});
  EXPECT_EQ(mac.mainLoop().activeTimers(), timers);
}

}  // namespace
}  // namespace pellar
