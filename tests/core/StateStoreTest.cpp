#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <stdexcept>

#include "core/FileSizeLimit.h"
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
    const auto logged = log.messages().size();
    StateStore store(file);
    EXPECT_EQ(store.state(), AppState{}) << bad;
    EXPECT_EQ(content(file), bad);
    EXPECT_EQ(log.messages().size(), logged);
    store.save();
    EXPECT_EQ(content(file), encodeState(AppState{}));
  }
}

class UnreadStateTest : public StateStoreTest {
 protected:
  using Names = std::vector<std::string>;
  // The first save of a program that found what is in the file.
  void save() const { StateStore(file).update(hideEditor); }

  fs::path kept = folder / "Pellar/state.json.unreadable";
  // Once a hand slipped in an editor.
  std::string broken = R"({"tags": {"/a.docx": "red",}})";
};

TEST_F(UnreadStateTest, AFileThatWasNotUnderstoodIsKeptBesideTheNewOne) {
  put(file, broken);
  StateStore store(file);
  EXPECT_FALSE(fs::exists(kept)) << "nothing is touched before the first save";
  store.update(hideEditor);
  EXPECT_EQ(content(kept), broken);
  EXPECT_EQ(mode(kept), 0600U);
  EXPECT_EQ(loaded(), store.state());
  EXPECT_EQ(log.messages(), Names{"state file not understood, kept as " + kept.string()});
  store.save();
  EXPECT_EQ(content(kept), broken) << "only the first save keeps it";
  EXPECT_EQ(log.messages().size(), 1U);
}

TEST_F(UnreadStateTest, OnlyTheLastFileThatWasNotUnderstoodIsKept) {
  for (const std::string& text : {std::string("first"), broken}) {
    put(file, text);
    save();
  }
  EXPECT_EQ(content(kept), broken);
  EXPECT_EQ(names(file.parent_path()), (Names{"state.json", "state.json.unreadable"}));
}

TEST_F(UnreadStateTest, NothingIsKeptOfAFileThatWasUnderstoodOrIsEmptyOrMissing) {
  save();
  save();
  put(file, "");
  save();
  EXPECT_EQ(names(file.parent_path()), Names{"state.json"});
  EXPECT_EQ(log.text(), "");
}

// With the reason gone, the user has his colours and groups back from there.
TEST_F(UnreadStateTest, AFileThatCouldNotBeReadForAMomentIsKept) {
  StateStore(file).update(hideEditor);
  const std::string before = content(file);
  for (const auto trouble :
       {std::errc::io_error, std::errc::permission_denied, std::errc::too_many_files_open}) {
    put(file, before);
    fs::remove(kept);
    BrokenFileOperations operations;
    operations.before = [&](std::string_view step) {
      return step == "read" ? std::make_error_code(trouble) : std::error_code{};
    };
    StateStore(file, operations).save();
    EXPECT_EQ(content(kept), before);
    EXPECT_EQ(content(file), encodeState(AppState{}));
  }
}

TEST_F(UnreadStateTest, AFileTooLargeToReadIsMovedAside) {
  put(file, "{}");
  fs::resize_file(file, StateStore::largestFile + 1);
  save();
  EXPECT_EQ(fs::file_size(kept), StateStore::largestFile + 1);
  EXPECT_EQ(loaded().settings.hiddenApps.size(), 1U);
}

TEST_F(UnreadStateTest, WhatCannotBeKeptIsNotOverwritten) {
  put(file, broken);
  fs::create_directories(kept / "in the way");
  save();
  EXPECT_EQ(content(file), broken);
  EXPECT_EQ(log.messages(), Names{"state save failed: cannot keep the old file as " + kept.string() + ": " +
                                  std::make_error_code(std::errc::is_a_directory).message()});
}

TEST_F(UnreadStateTest, AFileThatWasTakenAwayMeanwhileHindersNoSave) {
  put(file, broken);
  StateStore store(file);
  fs::remove(file);
  store.update(hideEditor);
  EXPECT_EQ(loaded(), store.state());
  EXPECT_EQ(log.text(), "");
}

TEST_F(UnreadStateTest, ALinkStaysALink) {
  put(folder / "elsewhere.json", broken);
  fs::create_directories(file.parent_path());
  fs::create_symlink(folder / "elsewhere.json", file);
  save();
  EXPECT_TRUE(fs::is_symlink(file));
  EXPECT_EQ(content(kept), broken);
}

// A newer version may write anything under keys of its own.
TEST_F(UnreadStateTest, ANumberTooLargeUnderAnUnknownKeyCostsNothing) {
  put(file, R"({"later": {"limit": 1e999, "least": [-1e999]}, "tags": {"/a.docx": "red"}})");
  EXPECT_EQ(loaded().tags.size(), 1U);
  save();
  EXPECT_FALSE(fs::exists(kept));
}

class LargestStateTest : public StateStoreTest {
 protected:
  // A state whose file has so many bytes.
  static AppState stateOf(std::size_t bytes) {
    AppState state;
    state.tags[""] = "red";
    const std::size_t rest = bytes - encodeState(state).size();
    state.tags.clear();
    state.tags[std::string(rest, 'x')] = "red";
    return state;
  }
};

TEST_F(LargestStateTest, WhatIsSavedCanBeLoadedAgain) {
  const AppState largest = stateOf(StateStore::largestFile);
  StateStore(file).update([&](AppState& state) { state = largest; });
  EXPECT_EQ(fs::file_size(file), StateStore::largestFile);
  EXPECT_TRUE(loaded() == largest);
  EXPECT_EQ(log.text(), "");
}

TEST_F(LargestStateTest, WhatCouldNotBeLoadedAgainIsNotSaved) {
  StateStore store(file);
  store.update(hideEditor);
  const AppState before = store.state();
  store.update([&](AppState& state) { state = stateOf(StateStore::largestFile + 1); });
  EXPECT_TRUE(loaded() == before);
  EXPECT_EQ(log.messages(), std::vector<std::string>{"state save failed: " + file.string() +
                                                     ": 16777217 bytes are too many"});
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
  EXPECT_EQ(names(file.parent_path()), std::vector<std::string>{"state.json"});
  EXPECT_EQ(log.text(), "") << "no file was lost";
}

TEST_F(StateStoreTest, ALinkToItselfIsLeftAloneAndLogged) {
  fs::create_directories(file.parent_path());
  fs::create_symlink("state.json", file);
  StateStore(file).save();
  EXPECT_EQ(names(file.parent_path()), std::vector<std::string>{"state.json"});
  EXPECT_EQ(log.messages(), std::vector<std::string>{
                                "state save failed: cannot follow " + file.string() + ": " +
                                std::make_error_code(std::errc::too_many_symbolic_link_levels).message()});
}

TEST_F(StateStoreTest, ASaveForWhichThereIsNoMemoryIsLogged) {
  BrokenFileOperations operations;
  StateStore store(file, operations);
  operations.before = [](std::string_view) -> std::error_code { throw std::runtime_error("no memory"); };
  store.update(hideEditor);
  EXPECT_EQ(log.messages(), std::vector<std::string>{"state save failed: no memory"});
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
  EXPECT_EQ(log.messages(),
            std::vector<std::string>{"state save failed: cannot create " + (folder / "Pellar").string() +
                                     ": " + std::make_error_code(std::errc::not_a_directory).message()});
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
  FileSizeLimit::makeAnError();
  rlimit whole{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &whole), 0);
  rlimit small = whole;
  small.rlim_cur = 4096;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  store.update([](AppState& state) { state.tags[std::string(100'000, 'x')] = "red"; });
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &whole), 0);
  EXPECT_NE(log.text().find("state save failed: "), std::string::npos);
  EXPECT_NE(log.text().find("File too large"), std::string::npos);
  EXPECT_EQ(content(file), before);
  EXPECT_EQ(names(file.parent_path()), std::vector<std::string>{"state.json"});
  store.save();
  EXPECT_EQ(loaded(), store.state());
}

TEST_F(StateStoreTest, AnInvalidPathDoesNotCostTheRestOfTheRecordAndIsLoggedOnce) {
  StateStore store(file);
  store.update([](AppState& state) {
    state.touchRecent("/bad\xFF.docx", "word", 1);
    state.touchRecent("/good.docx", "word", 2);
  });
  store.save();
  EXPECT_EQ(log.messages(),
            std::vector<std::string>{"state save left out a name that is not UTF-8: /bad\xEF\xBF\xBD.docx"});
  EXPECT_EQ(loaded().recent, (NameMap<double>{{"/good.docx", 2}}));
}

}  // namespace
}  // namespace pellar
