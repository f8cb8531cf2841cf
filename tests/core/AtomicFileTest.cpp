#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

#include "core/AtomicFile.h"
#include "platform/sim/system/TemporaryFolder.h"
#include "tests/support/BrokenFileOperations.h"
#include "tests/support/Files.h"

namespace pellar {
namespace {

namespace fs = std::filesystem;
using test::BrokenFileOperations;
using test::content;
using test::mode;
using test::names;
using test::put;
using Names = std::vector<std::string>;

// The exit status of `work` done by a user who is not root and owns `inside`: root may do anything.
template <class Work>
int statusAsAnotherUser(const TemporaryFolder& folder, const fs::path& inside, Work work) {
  const pid_t child = ::fork();
  if (child == 0) {
    constexpr id_t other = 65534;
    if (::getuid() == 0) {
      fs::permissions(folder.path(), fs::perms(0711));
      if (::chown(inside.c_str(), other, other) != 0 || ::setgid(other) != 0 || ::setuid(other) != 0)
        ::_exit(2);
    }
    ::_exit(work());
  }
  int status = -1;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return status;
}

TEST(AtomicFile, CreatesTheFileAndItsFoldersForTheOwnerOnly) {
  const TemporaryFolder folder;
  const fs::path file = folder / "a/b/state.json";
  EXPECT_EQ(AtomicFile(file, systemFileOperations()).replace("new"), std::nullopt);
  EXPECT_EQ(content(file), "new");
  EXPECT_EQ(mode(file), 0600U);
  EXPECT_EQ(mode(folder / "a/b"), 0700U);
  EXPECT_EQ(mode(folder / "a"), 0700U);
  EXPECT_EQ(names(folder / "a/b"), Names{"state.json"});
}

TEST(AtomicFile, ReplacesAFileThatOthersCouldRead) {
  const TemporaryFolder folder;
  const fs::path file = folder / "state.json";
  put(file, "old and longer");
  fs::permissions(file, fs::perms(0644));
  EXPECT_EQ(AtomicFile(file, systemFileOperations()).replace("new"), std::nullopt);
  EXPECT_EQ(content(file), "new");
  EXPECT_EQ(mode(file), 0600U);
}

TEST(AtomicFile, LeavesAnExistingFolderAsItIs) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "shared");
  fs::permissions(folder / "shared", fs::perms(0755));
  EXPECT_EQ(AtomicFile(folder / "shared/state.json", systemFileOperations()).replace("new"), std::nullopt);
  EXPECT_EQ(mode(folder / "shared"), 0755U);
}

TEST(AtomicFile, IsOnTheDiskBeforeItTakesThePlaceOfTheOldOne) {
  const TemporaryFolder folder;
  BrokenFileOperations operations;
  EXPECT_EQ(AtomicFile(folder / "state.json", operations).replace("new"), std::nullopt);
  EXPECT_EQ(operations.steps, (Names{"createFolders", "names", "remove", "createFile", "write", "flush",
                                     "close", "rename", "flushFolder"}));
}

TEST(AtomicFile, LooksForLeftoversOnce) {
  const TemporaryFolder folder;
  BrokenFileOperations operations;
  AtomicFile file(folder / "state.json", operations);
  for (int save = 1; save <= 3; ++save) EXPECT_EQ(file.replace("new"), std::nullopt);
  EXPECT_EQ(std::ranges::count(operations.steps, "names"), 1);
}

TEST(AtomicFile, AFileNamedWithoutItsFolderIsInTheCurrentOne) {
  const TemporaryFolder folder;
  const fs::path before = fs::current_path();
  fs::current_path(folder.path());
  EXPECT_EQ(AtomicFile("state.json", systemFileOperations()).replace("new"), std::nullopt);
  fs::current_path(before);
  EXPECT_EQ(content(folder / "state.json"), "new");
}

TEST(AtomicFile, GoesOnWhenTheSystemWritesOnlyAPart) {
  const TemporaryFolder folder;
  BrokenFileOperations operations;
  operations.longestWrite = 7;
  const std::string text(1000, 'x');
  EXPECT_EQ(AtomicFile(folder / "state.json", operations).replace(text), std::nullopt);
  EXPECT_EQ(content(folder / "state.json"), text);
}

TEST(AtomicFile, AnEmptyContentIsAnEmptyFile) {
  const TemporaryFolder folder;
  put(folder / "state.json", "old");
  EXPECT_EQ(AtomicFile(folder / "state.json", systemFileOperations()).replace(""), std::nullopt);
  EXPECT_EQ(content(folder / "state.json"), "");
}

TEST(AtomicFile, AFailureOfAnyStepKeepsTheOldContentAndLeavesNothingBehind) {
  const TemporaryFolder folder;
  const std::string state = (folder / "state.json").string();
  const std::string temporary = state + "." + std::to_string(::getpid()) + ".tmp";
  for (const auto& [step, said] : std::vector<std::pair<std::string, std::string>>{
           {"createFolders", "cannot create " + folder.path().string()},
           {"remove", "cannot remove " + temporary},
           {"createFile", "cannot create " + temporary},
           {"write", "cannot write " + temporary},
           {"flush", "cannot write " + temporary},
           {"close", "cannot write " + temporary},
           {"rename", "cannot replace " + state}}) {
    put(folder / "state.json", "old");
    BrokenFileOperations operations;
    operations.before = [&](std::string_view now) {
      return now == step ? std::make_error_code(std::errc::no_space_on_device) : std::error_code{};
    };
    EXPECT_EQ(AtomicFile(folder / "state.json", operations).replace("new"),
              said + ": No space left on device");
    EXPECT_EQ(content(folder / "state.json"), "old") << step;
    EXPECT_EQ(names(folder.path()), Names{"state.json"}) << step;
  }
}

TEST(AtomicFile, SaysWhenTheFolderCouldNotBeFlushed) {
  const TemporaryFolder folder;
  BrokenFileOperations operations;
  operations.before = [](std::string_view step) {
    return step == "flushFolder" ? std::make_error_code(std::errc::io_error) : std::error_code{};
  };
  EXPECT_EQ(
      AtomicFile(folder / "state.json", operations).replace("new"),
      "cannot flush " + folder.path().string() + ": " + std::make_error_code(std::errc::io_error).message());
  EXPECT_EQ(content(folder / "state.json"), "new");
}

// Others may put files into such a folder and not look into it.
TEST(AtomicFile, AFolderThatMayNotBeOpenedHindersNoSave) {
  const TemporaryFolder folder;
  const fs::path inside = folder / "drop";
  fs::create_directory(inside);
  const int status = statusAsAnotherUser(folder, inside, [&] {
    if (::chmod(inside.c_str(), 0300) != 0) return 3;
    if (!systemFileOperations().flushFolder(inside)) return 4;
    return AtomicFile(inside / "state.json", systemFileOperations()).replace("new") ? 1 : 0;
  });
  EXPECT_EQ(status, 0);
  fs::permissions(inside, fs::perms::owner_all);
  EXPECT_EQ(content(inside / "state.json"), "new");
}

TEST(AtomicFile, SucceedsAgainOnceTheDiskHasRoom) {
  const TemporaryFolder folder;
  BrokenFileOperations operations;
  bool full = true;
  operations.before = [&](std::string_view step) {
    return full && step == "write" ? std::make_error_code(std::errc::no_space_on_device) : std::error_code{};
  };
  AtomicFile file(folder / "state.json", operations);
  EXPECT_TRUE(file.replace("new"));
  full = false;
  EXPECT_EQ(file.replace("new"), std::nullopt);
  EXPECT_EQ(content(folder / "state.json"), "new");
}

// The number of a process that has ended.
std::string endedProcess() {
  const pid_t process = ::fork();
  if (process == 0) ::_exit(0);
  EXPECT_EQ(::waitpid(process, nullptr, 0), process);
  return std::to_string(process);
}

TEST(AtomicFile, ClearsAwayWhatACrashedRunLeft) {
  const TemporaryFolder folder;
  const std::string ended = endedProcess();
  for (const std::string& name :
       {"state.json." + ended + ".tmp", "state.json." + std::to_string(::getpid()) + ".tmp",
        std::string("state.json.tmp"), std::string("state.json.x.tmp"), std::string("state.json..tmp"),
        "other.json." + ended + ".tmp", "state.json." + ended + "x.tmp", "state.json." + ended + ".tmp.txt",
        "state.json." + ended + ".bak", "state.json-" + ended + ".tmp", "state.json.-" + ended + ".tmp",
        "state.json." + std::string(30, '9') + ".tmp"}) {
    put(folder / name, "half");
  }
  EXPECT_EQ(AtomicFile(folder / "state.json", systemFileOperations()).replace("new"), std::nullopt);
  Names left{"other.json." + ended + ".tmp",
             "state.json",
             "state.json..tmp",
             "state.json." + ended + ".tmp.txt",
             "state.json." + ended + "x.tmp",
             "state.json." + ended + ".bak",
             "state.json-" + ended + ".tmp",
             "state.json.-" + ended + ".tmp",
             "state.json." + std::string(30, '9') + ".tmp",
             "state.json.tmp",
             "state.json.x.tmp"};
  std::ranges::sort(left);
  EXPECT_EQ(names(folder.path()), left);
}

TEST(AtomicFile, LeavesWhatALivingProcessIsWritingAndTheProcessAlone) {
  const TemporaryFolder folder;
  const auto before = ::signal(SIGHUP, SIG_DFL);
  const pid_t other = ::fork();
  while (other == 0) ::pause();
  const std::string writing = "state.json." + std::to_string(other) + ".tmp";
  put(folder / writing, "half");
  EXPECT_EQ(AtomicFile(folder / "state.json", systemFileOperations()).replace("new"), std::nullopt);
  EXPECT_EQ(names(folder.path()), (Names{"state.json", writing}));
  // Of several signals the one with the lowest number ends it.
  ::kill(other, SIGTERM);
  int status = 0;
  EXPECT_EQ(::waitpid(other, &status, 0), other);
  EXPECT_EQ(WTERMSIG(status), SIGTERM);
  ::signal(SIGHUP, before);
}

TEST(AtomicFile, LeavesWhatAnotherUsersProcessIsWriting) {
  const TemporaryFolder folder;
  const fs::path inside = folder / "shared";
  put(inside / "state.json.1.tmp", "half");
  const int status = statusAsAnotherUser(folder, inside, [&] {
    return AtomicFile(inside / "state.json", systemFileOperations()).replace("new") ? 1 : 0;
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(names(inside), (Names{"state.json", "state.json.1.tmp"}));
}

// One file system, two programs: the second saves while the first is in the midst of it.
TEST(AtomicFile, ASecondWriterDoesNotCostTheFirstItsSave) {
  const TemporaryFolder folder;
  BrokenFileOperations operations;
  operations.before = [&](std::string_view step) {
    if (step == "flush") {
      const pid_t second = ::fork();
      if (second == 0) {
        ::_exit(AtomicFile(folder / "state.json", systemFileOperations()).replace("second") ? 1 : 0);
      }
      int status = -1;
      EXPECT_EQ(::waitpid(second, &status, 0), second);
      EXPECT_EQ(status, 0);
    }
    return std::error_code{};
  };
  EXPECT_EQ(AtomicFile(folder / "state.json", operations).replace("first"), std::nullopt);
  EXPECT_EQ(content(folder / "state.json"), "first");
  EXPECT_EQ(names(folder.path()), Names{"state.json"});
}

TEST(AtomicFile, AFolderInPlaceOfALeftoverIsNoHindrance) {
  const TemporaryFolder folder;
  fs::create_directory(folder / ("state.json." + endedProcess() + ".tmp"));
  EXPECT_EQ(AtomicFile(folder / "state.json", systemFileOperations()).replace("new"), std::nullopt);
  EXPECT_EQ(content(folder / "state.json"), "new");
}

TEST(AtomicFile, ASymbolicLinkIsKeptAndTheFileItNamesReplaced) {
  const TemporaryFolder folder;
  put(folder / "elsewhere/kept.json", "old");
  fs::create_directory(folder / "here");
  fs::create_symlink("../elsewhere/kept.json", folder / "here/second");
  fs::create_symlink("second", folder / "here/state.json");
  EXPECT_EQ(AtomicFile(folder / "here/state.json", systemFileOperations()).replace("new"), std::nullopt);
  EXPECT_TRUE(fs::is_symlink(folder / "here/state.json"));
  EXPECT_TRUE(fs::is_symlink(folder / "here/second"));
  EXPECT_EQ(content(folder / "elsewhere/kept.json"), "new");
  EXPECT_EQ(names(folder / "elsewhere"), Names{"kept.json"});
}

TEST(AtomicFile, ALinkToNothingYetCreatesWhatItNames) {
  const TemporaryFolder folder;
  fs::create_symlink(folder / "kept.json", folder / "state.json");
  EXPECT_EQ(AtomicFile(folder / "state.json", systemFileOperations()).replace("new"), std::nullopt);
  EXPECT_EQ(content(folder / "kept.json"), "new");
}

TEST(AtomicFile, LinksInACircleAreAFailure) {
  const TemporaryFolder folder;
  fs::create_symlink(folder / "b", folder / "a");
  fs::create_symlink(folder / "a", folder / "b");
  EXPECT_EQ(AtomicFile(folder / "a", systemFileOperations()).replace("new"),
            "cannot follow " + (folder / "a").string() + ": " +
                std::make_error_code(std::errc::too_many_symbolic_link_levels).message());
  EXPECT_EQ(names(folder.path()), (Names{"a", "b"}));
}

TEST(AtomicFile, AsManyLinksAreFollowedAsTheSystemFollows) {
  const TemporaryFolder folder;
  put(folder / "0", "old");
  for (int link = 1; link <= 41; ++link)
    fs::create_symlink(std::to_string(link - 1), folder / std::to_string(link));
  EXPECT_EQ(AtomicFile(folder / "40", systemFileOperations()).replace("new"), std::nullopt);
  EXPECT_EQ(content(folder / "0"), "new");
  EXPECT_TRUE(AtomicFile(folder / "41", systemFileOperations()).replace("newer"));
  EXPECT_EQ(content(folder / "0"), "new");
}

TEST(AtomicFile, ALinkInPlaceOfTheTemporaryFileIsNotFollowed) {
  const TemporaryFolder folder;
  put(folder / "victim", "precious");
  BrokenFileOperations operations;
  // The link appears at the last moment, after everything in the way was removed.
  operations.before = [&](std::string_view step) {
    if (step == "createFile") {
      fs::create_symlink(folder / "victim", folder / ("state.json." + std::to_string(::getpid()) + ".tmp"));
    }
    return std::error_code{};
  };
  EXPECT_TRUE(AtomicFile(folder / "state.json", operations).replace("new"));
  EXPECT_EQ(content(folder / "victim"), "precious");
}

TEST(AtomicFile, AFolderInPlaceOfTheFileIsAFailure) {
  const TemporaryFolder folder;
  fs::create_directories(folder / "state.json/inside");
  EXPECT_TRUE(AtomicFile(folder / "state.json", systemFileOperations()).replace("new"));
  EXPECT_TRUE(fs::is_directory(folder / "state.json/inside"));
  EXPECT_EQ(names(folder.path()), Names{"state.json"});
}

TEST(AtomicFile, AFileInPlaceOfTheFolderIsAFailure) {
  const TemporaryFolder folder;
  put(folder / "folder", "a file");
  const auto failure = AtomicFile(folder / "folder/sub/state.json", systemFileOperations()).replace("new");
  ASSERT_TRUE(failure);
  EXPECT_NE(failure->find("Not a directory"), std::string::npos) << *failure;
}

}  // namespace
}  // namespace pellar
