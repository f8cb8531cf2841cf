#include <gtest/gtest.h>

#include <fstream>
#include <optional>

#include "platform/linux/FolderLock.h"
#include "platform/sim/TemporaryFolder.h"

namespace pellar {
namespace {

class AFolder : public testing::Test {
 protected:
  TemporaryFolder root;
  std::filesystem::path folder = root / "data" / "Pellar";
};

TEST_F(AFolder, BelongsToTheFirstWhoAsks) {
  std::optional<FolderLock> first(folder);
  EXPECT_FALSE(first->isAnothers());
  EXPECT_TRUE(std::filesystem::is_directory(folder));
  EXPECT_TRUE(std::filesystem::is_empty(folder)) << "nothing is left in it";
  EXPECT_TRUE(FolderLock(folder).isAnothers());
  EXPECT_TRUE(FolderLock(folder).isAnothers()) << "who asked in vain took nothing away";
  first.reset();
  EXPECT_FALSE(FolderLock(folder).isAnothers());
}

TEST_F(AFolder, BelongsToWhoCallsItByAnotherName) {
  const FolderLock first(folder);
  std::filesystem::create_directory_symlink(folder, root / "link");
  EXPECT_TRUE(FolderLock(root / "link").isAnothers());
}

TEST_F(AFolder, ThatCannotBeMadeIsNobodys) {
  std::ofstream(root / "data") << "in the way";
  const FolderLock first(folder);
  EXPECT_FALSE(first.isAnothers());
  EXPECT_FALSE(FolderLock(folder).isAnothers());
}

}  // namespace
}  // namespace pellar
