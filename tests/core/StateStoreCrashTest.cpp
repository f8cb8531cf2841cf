#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <set>

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
using test::names;

AppState stateWith(int paths) {
  AppState state;
  for (int index = 0; index < paths; ++index) state.recent["/" + std::to_string(index)] = index;
  return state;
}

// Saves `after` in another process, which ends without any goodbye just before its step number `last`.
// Returns whether it ended so; false when the save was over before.
bool crashesWhileSaving(const fs::path& file, const AppState& after, int last, std::size_t longestWrite) {
  const pid_t child = ::fork();
  if (child == 0) {
    BrokenFileOperations operations;
    operations.longestWrite = longestWrite;
    StateStore store(file, operations);
    int step = 0;
    operations.before = [&](std::string_view) {
      if (step++ == last) ::_exit(1);
      return std::error_code{};
    };
    store.update([&](AppState& state) { state = after; });
    ::_exit(0);
  }
  int status = 0;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status));
  return WEXITSTATUS(status) == 1;
}

TEST(StateStoreCrash, AtEveryStepTheOldStateOrTheNewIsWhole) {
  const AppState before = stateWith(3);
  const AppState after = stateWith(200);
  const TemporaryFolder folder;
  const LogReader log;
  const fs::path file = folder / "Pellar/state.json";
  int oldSeen = 0;
  int newSeen = 0;
  bool crashed = true;
  for (int step = 0; crashed; ++step) {
    StateStore(file).update([&](AppState& state) { state = before; });
    crashed = crashesWhileSaving(file, after, step, /*longestWrite=*/512);
    const std::string text = content(file);
    EXPECT_TRUE(text == encodeState(before) || text == encodeState(after)) << "crashed before step " << step;
    (text == encodeState(before) ? oldSeen : newSeen) += 1;
  }
  EXPECT_GT(oldSeen, 10) << "several writes, then the flush, the close and the rename";
  EXPECT_EQ(newSeen, 2) << "before the folder is flushed, and after everything";
  StateStore(file).save();
  EXPECT_EQ(names(file.parent_path()), std::vector<std::string>{"state.json"});
}

TEST(StateStoreCrash, TheFirstSaveLeavesNothingOrTheWholeFile) {
  const AppState after = stateWith(50);
  bool crashed = true;
  for (int step = 0; crashed; ++step) {
    const TemporaryFolder folder;
    const LogReader log;
    const fs::path file = folder / "Pellar/state.json";
    crashed = crashesWhileSaving(file, after, step, /*longestWrite=*/512);
    if (fs::exists(file)) {
      EXPECT_EQ(content(file), encodeState(after)) << step;
    } else {
      EXPECT_TRUE(crashed);
    }
  }
}

// A process that saves without pause is killed in the midst of it, again and again.
TEST(StateStoreCrash, KilledAtAnyInstantTheFileIsWhole) {
  const AppState small = stateWith(1);
  const AppState large = stateWith(300);
  const std::set<std::string> whole{encodeState(small), encodeState(large)};
  const TemporaryFolder folder;
  const LogReader log;
  const fs::path file = folder / "Pellar/state.json";
  for (int round = 0; round < 30; ++round) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0) {
      ::close(ends[0]);
      StateStore store(file);
      for (;;) {
        store.update([&](AppState& state) { state = small; });
        store.update([&](AppState& state) { state = large; });
        if (::write(ends[1], "x", 1) != 1) ::_exit(0);
      }
    }
    ::close(ends[1]);
    char saved = 0;
    for (int saves = 0; saves <= round % 4; ++saves) EXPECT_EQ(::read(ends[0], &saved, 1), 1);
    ::kill(child, SIGKILL);
    EXPECT_EQ(::waitpid(child, nullptr, 0), child);
    ::close(ends[0]);
    EXPECT_TRUE(whole.contains(content(file))) << "round " << round;
  }
  StateStore(file).save();
  EXPECT_EQ(names(file.parent_path()), std::vector<std::string>{"state.json"});
}

}  // namespace
}  // namespace pellar
