#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <set>

#include "core/StateCoding.h"
#include "core/StateStore.h"
#include "platform/sim/system/TemporaryFolder.h"
#include "tests/support/EveryStep.h"
#include "tests/support/Files.h"
#include "tests/support/LogReader.h"

namespace pellar {
namespace {

namespace fs = std::filesystem;
using test::BrokenFileOperations;
using test::content;
using test::Mishap;
using test::names;
using test::put;

AppState stateWith(int paths) {
  AppState state;
  for (int index = 0; index < paths; ++index) state.recent["/" + std::to_string(index)] = index;
  return state;
}

// Whatever happens at whatever step, the next start finds the old or the new, whole.
class StateCrash : public testing::TestWithParam<Mishap> {
 protected:
  void startAnew() const {
    for (const char* each : {"Pellar", "Fennick"}) fs::remove_all(folder / each);
  }
  // A program that changed everything and ends.
  void change(BrokenFileOperations& operations) const {
    StateStore(file, operations).update([&](AppState& state) { state = after; });
  }
  // The next start, with nothing in its way, and what it saves.
  void expectRestartSaves(const std::string& where) const {
    StateStore store(file);
    store.update([&](AppState& state) { state = before; });
    EXPECT_EQ(StateStore(file).state(), before) << where;
    for (const std::string& name : names(folder / "Pellar"))
      EXPECT_FALSE(name.ends_with(".tmp") && !name.starts_with("state.json.unreadable."))
          << where << ": " << name;
  }

  const AppState before = stateWith(3);
  const AppState after = stateWith(20);
  TemporaryFolder folder;
  fs::path file = folder / "Pellar/state.json";
  fs::path kept = folder / "Pellar/state.json.unreadable";
  fs::path legacy = folder / "Fennick/state.json";
  LogReader log;
};

TEST_P(StateCrash, OfASave) {
  const std::string old = encodeState(before);
  int oldSeen = 0;
  const int steps = tellWithEveryStepHit(
      GetParam(), {.prepare =
                       [&] {
                         startAnew();
                         put(file, old);
                       },
                   .work = [&](BrokenFileOperations& operations) { change(operations); },
                   .check =
                       [&](const std::string& where) {
                         const std::string text = content(file);
                         EXPECT_TRUE(text == old || text == encodeState(after)) << where << ": " << text;
                         oldSeen += text == old ? 1 : 0;
                         expectRestartSaves(where);
                       }});
  EXPECT_GT(steps, 15) << "the look, several writes, the flushes and the rename";
  EXPECT_GT(oldSeen, 10);
}

TEST_P(StateCrash, OfTheFirstSave) {
  tellWithEveryStepHit(GetParam(),
                       {.prepare = [&] { startAnew(); },
                        .work = [&](BrokenFileOperations& operations) { change(operations); },
                        .check =
                            [&](const std::string& where) {
                              EXPECT_TRUE(!fs::exists(file) || content(file) == encodeState(after)) << where;
                              expectRestartSaves(where);
                            }});
}

TEST_P(StateCrash, OfASaveOverAFileThatWasNotUnderstood) {
  const std::string broken = encodeState(stateWith(10)) + ",";
  tellWithEveryStepHit(GetParam(),
                       {.prepare =
                            [&] {
                              startAnew();
                              put(file, broken);
                            },
                        .work = [&](BrokenFileOperations& operations) { change(operations); },
                        .check =
                            [&](const std::string& where) {
                              EXPECT_TRUE(content(file) == broken || content(kept) == broken)
                                  << where << ": the user's work is gone";
                              if (fs::exists(file)) {
                                EXPECT_TRUE(content(file) == broken || content(file) == encodeState(after))
                                    << where;
                              }
                              expectRestartSaves(where);
                              EXPECT_EQ(content(kept), broken) << where;
                            }});
}

TEST_P(StateCrash, OfAMigration) {
  tellWithEveryStepHit(
      GetParam(),
      {.prepare =
           [&] {
             startAnew();
             put(legacy, encodeState(before));
           },
       .work = [&](BrokenFileOperations& operations) { StateStore::defaultURL(folder.path(), operations); },
       .check =
           [&](const std::string& where) {
             EXPECT_TRUE(content(legacy) == encodeState(before) || content(file) == encodeState(before))
                 << where;
             EXPECT_EQ(StateStore(StateStore::defaultURL(folder.path())).state(), before) << where;
             EXPECT_EQ(test::mode(file), 0600U) << where;
             expectRestartSaves(where);
           }});
}

TEST_P(StateCrash, OfAMigrationFromAnotherDevice) {
  int bothSeen = 0;
  const int steps = tellWithEveryStepHit(
      GetParam(), {.prepare =
                       [&] {
                         startAnew();
                         put(legacy, encodeState(before));
                       },
                   .work =
                       [&](BrokenFileOperations& operations) {
                         operations.crossesDevices = [&](const fs::path& from) { return from == legacy; };
                         StateStore::defaultURL(folder.path(), operations);
                       },
                   .check =
                       [&](const std::string& where) {
                         if (fs::exists(file)) {
                           EXPECT_EQ(content(file), encodeState(before)) << where;
                         }
                         EXPECT_TRUE(fs::exists(file) || content(legacy) == encodeState(before)) << where;
                         bothSeen += fs::exists(file) && fs::exists(legacy) ? 1 : 0;
                         EXPECT_EQ(StateStore(StateStore::defaultURL(folder.path())).state(), before)
                             << where;
                         expectRestartSaves(where);
                       }});
  EXPECT_GT(steps, 10);
  EXPECT_GT(bothSeen, 0) << "the old file goes only when the new one lasts";
}

INSTANTIATE_TEST_SUITE_P(AtEveryStep, StateCrash, testing::ValuesIn(test::everyMishap),
                         [](const auto& mishap) { return nameOf(mishap.param); });

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
