#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <csignal>

#include "core/Log.h"
#include "core/StateCoding.h"
#include "core/StateStore.h"
#include "platform/sim/system/TemporaryFolder.h"
#include "tests/support/BrokenFileOperations.h"
#include "tests/support/Files.h"
#include "tests/support/LogReader.h"

namespace pellar {
namespace {

namespace fs = std::filesystem;
using test::BrokenFileOperations;
using test::content;
using test::mode;
using test::names;
using test::put;

class StateStoreTest : public ::testing::Test {
 protected:
  [[nodiscard]] AppState loaded() const { return StateStore(file).state(); }
  static void hideEditor(AppState& state) { state.settings.hiddenApps = {"com.example.editor"}; }

  TemporaryFolder folder;
  fs::path file = folder / "Pellar/state.json";
  LogReader log;
};

TEST_F(StateStoreTest, StartsFromDefaultsWithoutAFileAndCreatesNone) {
  const StateStore store(file);
  EXPECT_EQ(store.state(), AppState{});
  EXPECT_EQ(store.url(), file);
  EXPECT_FALSE(fs::exists(folder / "Pellar"));
  EXPECT_EQ(log.text(), "");
}

TEST_F(StateStoreTest, AChangeIsStillThereAfterARestart) {
  StateStore store(file);
  const AppState& live = store.state();
  store.update([](AppState& state) {
    hideEditor(state);
    state.touchRecent("/a.docx", "word", 1e9);
  });
  EXPECT_EQ(live.recent.size(), 1U) << "the live state is changed in place";
  EXPECT_EQ(loaded(), live);
  EXPECT_EQ(mode(file), 0600U);
  EXPECT_EQ(mode(folder / "Pellar"), 0700U);
  EXPECT_EQ(names(folder / "Pellar"), std::vector<std::string>{"state.json"});
  EXPECT_EQ(log.text(), "");
}

TEST_F(StateStoreTest, ASecondSaveWritesTheSameBytes) {
  StateStore store(file);
  store.update(hideEditor);
  const std::string first = content(file);
  store.save();
  EXPECT_EQ(content(file), first);
  StateStore(file).save();
  EXPECT_EQ(content(file), first);
}

TEST_F(StateStoreTest, EachChangeWritesTheFileOnce) {
  BrokenFileOperations operations;
  StateStore store(file, operations);
  operations.steps.clear();
  store.update(hideEditor);
  EXPECT_EQ(std::count(operations.steps.begin(), operations.steps.end(), "rename"), 1);
}

TEST_F(StateStoreTest, AChangeWithinAChangeIsKept) {
  StateStore store(file);
  store.update([&](AppState& state) {
    state.settings.allApps = false;
    store.update(hideEditor);
    state.settings.launchAtLogin = true;
  });
  EXPECT_FALSE(store.state().settings.allApps);
  EXPECT_EQ(store.state().settings.hiddenApps.size(), 1U);
  EXPECT_EQ(loaded(), store.state());
}

TEST_F(StateStoreTest, TheFileIsRewrittenFromMemoryNotMerged) {
  StateStore store(file);
  put(file, R"({"tags": {"/other.docx": "red"}})");
  store.update(hideEditor);
  EXPECT_TRUE(loaded().tags.empty());
}

TEST_F(StateStoreTest, BadFilesYieldDefaultsSilentlyAndStayUntilTheNextSave) {
  for (const std::string& bad :
       {std::string(), std::string("{\"tags\": {"), std::string("garbage"),
        std::string("{\"settings\": {\"autoSaveMinutes\": \"5\"}}"), std::string(1000, '\0'),
        std::string("{\"tags\": {\"a\": \"\xFF\"}}"), std::string("[]")}) {
    put(file, bad);
    StateStore store(file);
    EXPECT_EQ(store.state(), AppState{}) << bad;
    EXPECT_EQ(content(file), bad);
    EXPECT_EQ(log.text(), "");
    store.save();
    EXPECT_EQ(content(file), encodeState(AppState{}));
  }
}

TEST_F(StateStoreTest, AHundredMegabytesOfGarbageYieldDefaults) {
  for (const char byte : {'[', '\0', ' '}) {
    put(file, std::string(std::size_t{100} << 20, byte));
    EXPECT_EQ(loaded(), AppState{});
  }
}

TEST_F(StateStoreTest, AFolderInPlaceOfTheFileYieldsDefaultsAndALoggedSave) {
  fs::create_directories(file / "inside");
  StateStore store(file);
  EXPECT_EQ(store.state(), AppState{});
  EXPECT_EQ(log.text(), "");
  store.update(hideEditor);
  EXPECT_EQ(store.state().settings.hiddenApps.size(), 1U) << "the change stays in memory";
  EXPECT_EQ(log.messages().size(), 1U);
  EXPECT_NE(log.text().find(" state save failed: "), std::string::npos);
  EXPECT_TRUE(fs::is_directory(file / "inside"));
}

TEST_F(StateStoreTest, APipeInPlaceOfTheFileDoesNotHoldTheStartUp) {
  fs::create_directories(file.parent_path());
  ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
  StateStore store(file);
  EXPECT_EQ(store.state(), AppState{});
  store.save();
  EXPECT_EQ(loaded(), AppState{});
  EXPECT_TRUE(fs::is_regular_file(file));
}

TEST_F(StateStoreTest, AFileThatCannotBeReadYieldsDefaultsAndStays) {
  StateStore(file).update(hideEditor);
  const std::string before = content(file);
  BrokenFileOperations operations;
  operations.before = [](std::string_view step) {
    return step == "read" ? std::make_error_code(std::errc::permission_denied) : std::error_code{};
  };
  EXPECT_EQ(StateStore(file, operations).state(), AppState{});
  EXPECT_EQ(content(file), before);
  EXPECT_EQ(log.text(), "");
}

TEST_F(StateStoreTest, AFileInPlaceOfTheFolderIsLogged) {
  put(folder / "Pellar", "a file");
  StateStore store(file);
  store.update(hideEditor);
  EXPECT_EQ(store.state().settings.hiddenApps.size(), 1U);
  EXPECT_NE(log.text().find(" state save failed: "), std::string::npos);
  EXPECT_EQ(content(folder / "Pellar"), "a file");
}

TEST_F(StateStoreTest, OnAFullOrReadOnlyDiskTheOldFileStaysAndTheNextSaveTriesAgain) {
  for (const auto trouble : {std::errc::no_space_on_device, std::errc::read_only_file_system}) {
    StateStore(file).save();
    const std::string before = content(file);
    BrokenFileOperations operations;
    std::error_code error = std::make_error_code(trouble);
    operations.before = [&](std::string_view step) { return step == "write" ? error : std::error_code{}; };
    StateStore store(file, operations);
    const auto logged = log.messages().size();
    store.update(hideEditor);
    EXPECT_EQ(log.messages().size(), logged + 1);
    EXPECT_NE(log.text().find(error.message()), std::string::npos);
    EXPECT_EQ(content(file), before);
    EXPECT_EQ(store.state().settings.hiddenApps.size(), 1U);
    error = {};
    store.save();
    EXPECT_EQ(loaded(), store.state());
    EXPECT_EQ(log.messages().size(), logged + 1);
  }
}

// The system's own refusal, not a pretended one.
TEST_F(StateStoreTest, AFileThatMayNotGrowKeepsItsOldContent) {
  StateStore store(file);
  store.save();
  const std::string before = content(file);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit whole{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &whole), 0);
  rlimit small = whole;
  small.rlim_cur = 4096;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  store.update([](AppState& state) { state.tags[std::string(100'000, 'x')] = "red"; });
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &whole), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_NE(log.text().find("state save failed: "), std::string::npos);
  EXPECT_NE(log.text().find("File too large"), std::string::npos);
  EXPECT_EQ(content(file), before);
  EXPECT_EQ(names(file.parent_path()), std::vector<std::string>{"state.json"});
  store.save();
  EXPECT_EQ(loaded(), store.state());
}

TEST_F(StateStoreTest, AnInvalidPathDoesNotCostTheRestOfTheRecord) {
  StateStore store(file);
  store.update([](AppState& state) {
    state.touchRecent("/bad\xFF.docx", "word", 1);
    state.touchRecent("/good.docx", "word", 2);
  });
  EXPECT_EQ(log.text(), "");
  EXPECT_EQ(loaded().recent, (std::map<std::string, double>{{"/good.docx", 2}}));
}

class DefaultUrlTest : public ::testing::Test {
 protected:
  TemporaryFolder folder;
  fs::path file = folder / "Pellar/state.json";
  fs::path legacy = folder / "Fennick/state.json";
  LogReader log;
};

TEST_F(DefaultUrlTest, IsUnderTheFolderForApplicationData) {
  EXPECT_EQ(StateStore::defaultURL(folder.path()), file);
  EXPECT_FALSE(fs::exists(folder / "Pellar")) << "asking creates nothing";
}

TEST_F(DefaultUrlTest, TheFirstStartMovesTheFileOfTheFormerName) {
  AppState state;
  state.tags["/a.docx"] = "red";
  put(legacy, encodeState(state));
  EXPECT_EQ(StateStore::defaultURL(folder.path()), file);
  EXPECT_FALSE(fs::exists(legacy));
  EXPECT_EQ(mode(folder / "Pellar"), 0700U);
  EXPECT_EQ(StateStore(file).state(), state);
  EXPECT_EQ(log.text(), "");
}

TEST_F(DefaultUrlTest, ANewFileWinsAndTheOldOneStays) {
  put(file, "{}");
  put(legacy, "old");
  EXPECT_EQ(StateStore::defaultURL(folder.path()), file);
  EXPECT_EQ(content(file), "{}");
  EXPECT_EQ(content(legacy), "old");
}

TEST_F(DefaultUrlTest, AFailedMoveIsLoggedAndLeavesTheOldFile) {
  put(legacy, "old");
  put(folder / "Pellar", "a file where the folder should be");
  EXPECT_EQ(StateStore::defaultURL(folder.path()), file);
  EXPECT_EQ(content(legacy), "old");
  EXPECT_EQ(log.messages().size(), 1U);
  EXPECT_NE(log.text().find(" state migration failed: "), std::string::npos);
  EXPECT_EQ(StateStore(file).state(), AppState{});
}

}  // namespace
}  // namespace pellar
