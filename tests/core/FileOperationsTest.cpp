#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <thread>

#include "core/FileOperations.h"
#include "platform/sim/system/TemporaryFolder.h"
#include "tests/support/Files.h"

namespace pellar {
namespace {

using test::put;

TEST(FileOperations, FlushesAFileThatSomebodyElseWrote) {
  const TemporaryFolder folder;
  put(folder / "Plan.docx", "a plan");
  EXPECT_EQ(systemFileOperations().flushFile(folder / "Plan.docx"), std::error_code{});
}

TEST(FileOperations, CannotFlushAFileThatIsNotThere) {
  const TemporaryFolder folder;
  EXPECT_EQ(systemFileOperations().flushFile(folder / "Plan.docx"), std::errc::no_such_file_or_directory);
}

TEST(FileOperations, APipeThatNobodyWritesHoldsNoFlushUp) {
  const TemporaryFolder folder;
  const auto pipe = folder / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(systemFileOperations().flushFile(pipe), std::error_code{}) << "it keeps nothing to be flushed";
  std::string text;
  EXPECT_EQ(systemFileOperations().read(pipe, 5, text), std::errc::not_supported);
}

TEST(FileOperations, FlushesAFolderButNoFileInItsPlace) {
  const TemporaryFolder folder;
  put(folder / "Plan.docx", "a plan");
  EXPECT_EQ(systemFileOperations().flushFolder(folder.path()), std::error_code{});
  EXPECT_EQ(systemFileOperations().flushFolder(folder / "Plan.docx"), std::errc::not_a_directory);
}

TEST(FileOperations, AFileInPlaceOfAFolderIsNoFolder) {
  const TemporaryFolder folder;
  put(folder / "Pellar", "a file");
  EXPECT_EQ(systemFileOperations().createFolders(folder / "Pellar"), std::errc::not_a_directory);
  EXPECT_EQ(systemFileOperations().createFolders(folder / "new" / "inside/"), std::error_code{});
  EXPECT_TRUE(std::filesystem::is_directory(folder / "new/inside"));
}

TEST(FileOperations, SaysWhyAFolderCannotBeCreated) {
  const TemporaryFolder folder;
  EXPECT_EQ(systemFileOperations().createFolders(folder / std::string(300, 'x')),
            std::errc::filename_too_long);
  std::filesystem::create_symlink(folder / "nowhere", folder / "link");
  EXPECT_EQ(systemFileOperations().createFolders(folder / "link/inside"), std::errc::not_a_directory);
}

TEST(FileOperations, AFileCreatedWhileStandardInputIsClosedIsAFileLikeAnother) {
  const TemporaryFolder folder;
  const int input = ::dup(0);
  ::close(0);
  errno = EINTR;  // of an earlier call
  int descriptor = -1;
  const auto error = systemFileOperations().createFile(folder / "state.json", descriptor);
  EXPECT_EQ(descriptor, 0);
  EXPECT_EQ(error, std::error_code{});
  ::dup2(input, 0);
  ::close(input);
}

TEST(FileOperations, LeavesNothingOpenAlsoWhereStandardInputIsClosed) {
  const TemporaryFolder folder;
  put(folder / "state.json", "12345");
  const int input = ::dup(0);
  for (const bool closed : {false, true}) {
    if (closed) ::close(0);
    const int lowest = ::dup(input);
    ::close(lowest);
    std::string text;
    EXPECT_EQ(systemFileOperations().read(folder / "state.json", 5, text), std::error_code{});
    EXPECT_EQ(text, "12345");
    EXPECT_EQ(systemFileOperations().flushFile(folder / "state.json"), std::error_code{});
    EXPECT_EQ(systemFileOperations().flushFolder(folder.path()), std::error_code{});
    EXPECT_TRUE(systemFileOperations().read(folder / "absent", 5, text));
    const int afterwards = ::dup(input);
    EXPECT_EQ(afterwards, lowest);
    ::close(afterwards);
  }
  ::dup2(input, 0);
  ::close(input);
}

// A test's own signal; the call that it interrupts is made again.
volatile std::sig_atomic_t interruptions = 0;

TEST(FileOperations, AWriteThatASignalInterruptsGoesOn) {
  struct sigaction counting {};
  counting.sa_handler = [](int) { interruptions = interruptions + 1; };
  struct sigaction before {};
  ::sigaction(SIGUSR1, &counting, &before);
  int pipe[2];
  ASSERT_EQ(::pipe(pipe), 0);
  const int flags = ::fcntl(pipe[1], F_GETFL);
  ::fcntl(pipe[1], F_SETFL, flags | O_NONBLOCK);
  while (::write(pipe[1], "0123456789", 10) > 0) continue;
  while (::write(pipe[1], "0", 1) > 0) continue;
  ::fcntl(pipe[1], F_SETFL, flags);

  std::error_code error = std::make_error_code(std::errc::io_error);
  std::size_t written = 0;
  std::thread writer([&] { error = systemFileOperations().write(pipe[1], "x", written); });
  while (interruptions < 1000) ::pthread_kill(writer.native_handle(), SIGUSR1);
  std::array<char, 1 << 20> taken;
  EXPECT_GT(::read(pipe[0], taken.data(), taken.size()), 0);
  writer.join();
  EXPECT_EQ(error, std::error_code{});
  EXPECT_EQ(written, 1U);
  for (const int end : pipe) ::close(end);
  ::sigaction(SIGUSR1, &before, nullptr);
}

TEST(FileOperations, SaysHowMuchWasWrittenAndWhatWentWrong) {
  const TemporaryFolder folder;
  auto& files = systemFileOperations();
  int descriptor = -1;
  ASSERT_EQ(files.createFile(folder / "state.json", descriptor), std::error_code{});
  std::size_t written = 7;
  errno = EIO;  // of an earlier call
  EXPECT_EQ(files.write(descriptor, "", written), std::error_code{});
  EXPECT_EQ(written, 0U);
  EXPECT_EQ(files.write(descriptor, "1234", written), std::error_code{});
  EXPECT_EQ(written, 4U);
  EXPECT_EQ(files.close(descriptor), std::error_code{});
  EXPECT_EQ(files.close(-1), std::errc::bad_file_descriptor);
  EXPECT_EQ(files.flush(-1), std::errc::bad_file_descriptor);
  EXPECT_EQ(files.write(-1, "1234", written), std::errc::bad_file_descriptor);
  EXPECT_EQ(written, 0U);
  EXPECT_EQ(files.createFile(folder / "state.json", descriptor), std::errc::file_exists);
}

TEST(FileOperations, RemovesAFileThatMayBeGoneButNoFolder) {
  const TemporaryFolder folder;
  put(folder / "state.json", "{}");
  errno = EIO;  // of an earlier call
  EXPECT_EQ(systemFileOperations().remove(folder / "state.json"), std::error_code{});
  EXPECT_FALSE(std::filesystem::exists(folder / "state.json"));
  EXPECT_EQ(systemFileOperations().remove(folder / "state.json"), std::error_code{});
  EXPECT_TRUE(systemFileOperations().remove(folder.path()));
}

TEST(FileOperations, SaysWhetherAFileIsTheOwnersAloneNow) {
  const TemporaryFolder folder;
  put(folder / "state.json", "{}");
  std::filesystem::permissions(folder / "state.json", std::filesystem::perms(0644));
  errno = EIO;  // of an earlier call
  EXPECT_EQ(systemFileOperations().restrictToOwner(folder / "state.json"), std::error_code{});
  EXPECT_EQ(std::filesystem::status(folder / "state.json").permissions(), std::filesystem::perms(0600));
  EXPECT_EQ(systemFileOperations().restrictToOwner(folder / "absent"), std::errc::no_such_file_or_directory);
}

TEST(FileOperations, ReadsAFileOfJustAsManyBytesAsItMayHaveInPlaceOfWhatTheTextHeld) {
  const TemporaryFolder folder;
  put(folder / "state.json", "12345");
  std::string text = "before";
  EXPECT_EQ(systemFileOperations().read(folder / "state.json", 5, text), std::error_code{});
  EXPECT_EQ(text, "12345");
  EXPECT_EQ(systemFileOperations().read(folder / "state.json", 4, text), std::errc::file_too_large);
  EXPECT_EQ(systemFileOperations().read(folder.path(), 5, text), std::errc::is_a_directory);
}

#ifdef __linux__
TEST(FileOperations, SaysThatAFileCannotBeRead) {
  std::string text;
  EXPECT_EQ(systemFileOperations().read("/proc/self/mem", 5, text), std::errc::io_error);
}
#endif

}  // namespace
}  // namespace pellar
