#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

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
  // Whatever it says, it comes back.
  static_cast<void>(systemFileOperations().flushFile(pipe));
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

TEST(FileOperations, AFileCreatedWhileStandardInputIsClosedIsAFileLikeAnother) {
  const TemporaryFolder folder;
  const int input = ::dup(0);
  ::close(0);
  errno = EIO;  // of an earlier call
  int descriptor = -1;
  const auto error = systemFileOperations().createFile(folder / "state.json", descriptor);
  EXPECT_EQ(descriptor, 0);
  EXPECT_EQ(error, std::error_code{});
  ::dup2(input, 0);
  ::close(input);
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
}

}  // namespace
}  // namespace pellar
