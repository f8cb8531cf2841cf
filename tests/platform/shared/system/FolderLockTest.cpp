#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <future>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "platform/shared/system/FolderLock.h"
#include "platform/sim/system/TemporaryFolder.h"

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

TEST_F(AFolder, ThatIsMadeForTheStateIsItsOwnersAlone) {
  const FolderLock lock(folder);
  for (const auto& made : {folder, folder.parent_path()})
    EXPECT_EQ(std::filesystem::status(made).permissions(), std::filesystem::perms::owner_all) << made;
}

TEST_F(AFolder, BelongsToExactlyOneOfManyWhoAskTogether) {
  std::vector<std::unique_ptr<FolderLock>> locks(8);
  std::promise<void> start;
  const std::shared_future<void> started = start.get_future().share();
  std::vector<std::thread> copies;
  for (auto& lock : locks) {
    copies.emplace_back([&lock, this, started] {
      started.wait();
      lock = std::make_unique<FolderLock>(folder);
    });
  }
  start.set_value();
  for (auto& copy : copies) copy.join();
  EXPECT_EQ(std::ranges::count_if(locks, [](const auto& lock) { return !lock->isAnothers(); }), 1);
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
