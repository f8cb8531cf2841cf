#include <gtest/gtest.h>
#include <sys/stat.h>

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

}  // namespace
}  // namespace pellar
