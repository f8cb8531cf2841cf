#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/linux/documents/WindowDocuments.h"
#include "platform/linux/system/QtMainLoop.h"
#include "tests/platform/linux/SharedDesktop.h"
#include "tests/platform/linux/ToolkitLoop.h"

namespace pellar::contract {
namespace {

using namespace std::chrono_literals;

// A file system with a document for each title that begins with "/", which can be made to hang.
class Files {
 public:
  std::optional<std::string> lookUp(const std::string& title) {
    std::unique_lock lock(mutex_);
    ++lookUps_;
    changed_.wait(lock, [this] { return !away_; });
    changed_.wait_for(lock, time_, [] { return false; });
    if (const auto saved = saved_.find(title); saved != saved_.end())
      return saved->second.empty() ? std::nullopt : std::optional(saved->second);
    return title.starts_with('/') ? std::optional(title) : std::nullopt;
  }
  // What a program shows under this title is saved there from now on; nowhere if the path is empty.
  void save(const std::string& title, const std::string& path) {
    const std::lock_guard lock(mutex_);
    saved_[title] = path;
  }
  void goAway() {
    const std::lock_guard lock(mutex_);
    away_ = true;
  }
  void comeBack() {
    const std::lock_guard lock(mutex_);
    away_ = false;
    changed_.notify_all();
  }
  int lookUps() {
    const std::lock_guard lock(mutex_);
    return lookUps_;
  }
  void begin() {
    const std::lock_guard lock(mutex_);
    ++goes_;
  }
  // How often it began to look up windows together.
  int goes() {
    const std::lock_guard lock(mutex_);
    return goes_;
  }
  // Each look-up takes that long from now on.
  void becomeSlow(std::chrono::milliseconds time) {
    const std::lock_guard lock(mutex_);
    time_ = time;
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::map<std::string, std::string> saved_;
  bool away_ = false;
  std::chrono::milliseconds time_{};
  int lookUps_ = 0;
  int goes_ = 0;
};

class WindowDocumentsTest : public ::testing::Test {
 protected:
  WindowDocumentsTest() {
    SharedDesktop::get();
    loop = std::make_unique<QtMainLoop>();
    waitIn(std::chrono::milliseconds(8));
  }
  // Has each turn of the loop wait that long for documents.
  void waitIn(std::chrono::milliseconds patience) {
    documents = std::make_unique<WindowDocuments>(
        *loop,
        [files = files] {
          files->begin();
          return [files](const std::string& title, auto) { return files->lookUp(title); };
        },
        [this](xcb_window_t window) { found.push_back(window); }, patience);
  }
  ~WindowDocumentsTest() override { files->comeBack(); }

  static bool wait(const std::function<bool()>& condition) { return test::runToolkitUntil(condition); }
  std::optional<std::string> document(xcb_window_t window, const std::string& title) {
    return documents->document(window, title, 4711);
  }
  std::chrono::nanoseconds timeOf(const std::function<void()>& deed) {
    const auto start = std::chrono::steady_clock::now();
    deed();
    return std::chrono::steady_clock::now() - start;
  }

  std::shared_ptr<Files> files = std::make_shared<Files>();
  std::unique_ptr<QtMainLoop> loop;
  std::unique_ptr<WindowDocuments> documents;
  std::vector<xcb_window_t> found;
};

TEST_F(WindowDocumentsTest, AWindowIsLookedUpOnceForEachTitle) {
  wait([&] { return document(1, "/a").has_value(); });
  const int before = files->lookUps();
  for (int read = 0; read < 100; ++read) EXPECT_EQ(document(1, "/a"), "file:///a");
  EXPECT_EQ(files->lookUps(), before);
  EXPECT_TRUE(wait([&] { return document(1, "/b c") == "file:///b%20c"; }));
  EXPECT_EQ(files->lookUps(), before + 1);
  EXPECT_TRUE(wait([&] { return !document(1, "none").has_value() && files->lookUps() == before + 2; }));
  for (int read = 0; read < 100; ++read) EXPECT_EQ(document(1, "none"), std::nullopt);
  EXPECT_EQ(files->lookUps(), before + 2);
}

TEST_F(WindowDocumentsTest, FilesThatAreAwayHoldUpNobodyAndAreToldWhenTheyAreBack) {
  files->goAway();
  EXPECT_LT(timeOf([&] { EXPECT_EQ(document(1, "/a"), std::nullopt); }), 500ms);
  EXPECT_LT(timeOf([&] {
              for (xcb_window_t window = 2; window < 40; ++window)
                EXPECT_EQ(document(window, "/" + std::to_string(window)), std::nullopt);
            }),
            500ms);
  EXPECT_TRUE(found.empty());
  files->comeBack();
  EXPECT_TRUE(wait([this] { return found.size() == 39; }));
  EXPECT_EQ(document(1, "/a"), "file:///a");
  EXPECT_EQ(document(39, "/39"), "file:///39");
}

TEST_F(WindowDocumentsTest, AHundredWindowsAreWaitedForAtMostOnce) {
  constexpr int many = 100;
  std::vector<WindowDocuments::Shown> shown;
  for (xcb_window_t window = 1; window <= many; ++window)
    shown.push_back({window, "/" + std::to_string(window), 4711});
  // Each would be waited for, and all of them together long.
  files->becomeSlow(4ms);
  EXPECT_LT(timeOf([&] {
              documents->lookUp(shown);
              for (const auto& each : shown) static_cast<void>(document(each.window, each.title));
              // A title that changes in the same turn, and a window that was not announced.
              static_cast<void>(document(1, "/other"));
              static_cast<void>(document(1000, "/1000"));
            }),
            200ms);
  EXPECT_TRUE(wait([&] {
    return std::ranges::all_of(
               shown,
               [&](const auto& each) { return each.window == 1 || document(each.window, each.title); }) &&
           document(1, "/other") == "file:///other";
  }));
  EXPECT_EQ(document(77, "/77"), "file:///77");
  for (const auto& each : shown)
    EXPECT_LE(std::ranges::count(found, each.window), 1) << each.window << " was told more than once";
  EXPECT_EQ(std::ranges::count(found, xcb_window_t{77}), 1) << "the strip hears of what came late";
}

TEST_F(WindowDocumentsTest, WindowsThatComeTogetherAreLookedUpInOneGoAndKnownInTheSameTurn) {
  // As long as a busy machine may need.
  waitIn(10s);
  std::vector<WindowDocuments::Shown> shown;
  for (xcb_window_t window = 1; window <= 20; ++window)
    shown.push_back({window, "/" + std::to_string(window), 4711});
  documents->lookUp(shown);
  for (const auto& each : shown) EXPECT_EQ(document(each.window, each.title), "file://" + each.title);
  EXPECT_EQ(files->goes(), 1);
}

TEST_F(WindowDocumentsTest, WhatWasAskedForIsAnsweredBeforeWhatIsOnlyLookedUpAgain) {
  ASSERT_TRUE(wait([&] { return document(1, "/a").has_value(); }));
  files->save("/a", "/b");
  files->goAway();
  const int before = files->lookUps();
  // After a while it is looked up again, which hangs.
  ASSERT_TRUE(wait([&] { return document(1, "/a") && files->lookUps() > before; }));
  for (xcb_window_t window = 2; window < 40; ++window) static_cast<void>(document(window, "none"));
  EXPECT_LT(timeOf([&] {
              for (xcb_window_t window = 100; window < 200; ++window)
                static_cast<void>(document(window, "/" + std::to_string(window)));
            }),
            500ms);
  files->comeBack();
  EXPECT_TRUE(wait([&] { return document(1, "/a") == "file:///b" && document(199, "/199"); }));
}

TEST_F(WindowDocumentsTest, AnAnswerForAnOldTitleIsNotGiven) {
  document(1, "first");
  files->goAway();
  document(1, "/old");
  EXPECT_TRUE(wait([this] { return files->lookUps() >= 2; }));
  document(1, "none");
  files->comeBack();
  EXPECT_TRUE(wait([this] { return files->lookUps() >= 3; }));
  EXPECT_EQ(document(1, "none"), std::nullopt);
  EXPECT_TRUE(found.empty());
}

TEST_F(WindowDocumentsTest, SavedToAnotherFolderUnderTheSameTitleIsNoticed) {
  files->save("plan", "/first/plan");
  EXPECT_TRUE(wait([&] { return document(1, "plan") == "file:///first/plan"; }));
  found.clear();
  files->save("plan", "/second/plan");
  EXPECT_TRUE(wait([&] { return document(1, "plan") == "file:///second/plan"; }));
  EXPECT_EQ(found, std::vector<xcb_window_t>{1});
  // While the program writes its file anew it has none open.
  files->save("plan", "");
  const int before = files->lookUps();
  EXPECT_TRUE(wait([&] {
    EXPECT_EQ(document(1, "plan"), "file:///second/plan");
    return files->lookUps() > before;
  }));
  files->save("plan", "/second/plan");
  EXPECT_TRUE(wait([&] {
    EXPECT_EQ(document(1, "plan"), "file:///second/plan");
    return files->lookUps() > before + 1;
  }));
  EXPECT_EQ(found.size(), 1U) << "nothing else was found";
}

TEST_F(WindowDocumentsTest, ATitleThatChangesWithoutPauseIsLookedUpNowAndThen) {
  int changes = 0;
  wait([&] {
    document(1, "title " + std::to_string(++changes));
    return changes == 200;
  });
  EXPECT_TRUE(wait([&] { return document(1, "/last") == "file:///last"; }));
  EXPECT_LT(files->lookUps(), 30);
}

TEST_F(WindowDocumentsTest, WindowsThatAreGoneAreForgotten) {
  for (xcb_window_t window = 1; window <= 200; ++window) document(window, "/a");
  documents->tidy([](xcb_window_t window) { return window > 190; });
  EXPECT_TRUE(wait([&] { return document(200, "/a").has_value(); }));
  const int before = files->lookUps();
  document(200, "/a");
  EXPECT_EQ(files->lookUps(), before);
  EXPECT_TRUE(wait([&] { return document(1, "/a").has_value(); }));
  EXPECT_EQ(files->lookUps(), before + 1);
}

TEST_F(WindowDocumentsTest, MayEndWhileFilesAreAway) {
  files->goAway();
  document(1, "/a");
  document(2, "/b");
  documents.reset();
  files->comeBack();
  EXPECT_TRUE(found.empty());
}

}  // namespace
}  // namespace pellar::contract
