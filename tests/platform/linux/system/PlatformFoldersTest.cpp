#include <gtest/gtest.h>

#include <cstdlib>

#include "core/HomeFolder.h"
#include "platform/linux/system/PlatformFolders.h"
#include "tests/e2e/Folders.h"

namespace pellar {
namespace {

class PlatformFoldersTest : public ::testing::Test {
 protected:
  PlatformFoldersTest() {
    setenv("HOME", folders.home().c_str(), 1);
    for (const char* name : {"XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_DATA_DIRS"}) unsetenv(name);
  }
  ~PlatformFoldersTest() override {
    for (const char* name : {"XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_DATA_DIRS"}) unsetenv(name);
  }
  e2e::Folders folders;
};

TEST_F(PlatformFoldersTest, AreBelowTheHomeFolderByDefault) {
  const UserFolders found = platformFolders();
  EXPECT_EQ(found.home, folders.home());
  EXPECT_EQ(found.applicationSupport, folders.home() / ".local/share");
  EXPECT_EQ(found.logFile, folders.home() / ".local/state/Pellar/Pellar.log");
  EXPECT_TRUE(std::filesystem::is_directory(found.logFile.parent_path()));
}

TEST_F(PlatformFoldersTest, ASlashAtTheEndOfHomeChangesNothing) {
  for (const char* slashes : {"/", "//", "/./"}) {
    setenv("HOME", (folders.home().string() + slashes).c_str(), 1);
    EXPECT_EQ(platformFolders().home.string(), folders.home().string()) << slashes;
    EXPECT_EQ(platformFolders().applicationSupport.string(), (folders.home() / ".local/share").string());
  }
  setenv("HOME", "/", 1);
  EXPECT_EQ(homeFolder().string(), "/");
}

TEST_F(PlatformFoldersTest, AreWhereTheEnvironmentSays) {
  setenv("XDG_DATA_HOME", (folders.root() / "d").c_str(), 1);
  setenv("XDG_STATE_HOME", (folders.root() / "s").c_str(), 1);
  setenv("XDG_DATA_DIRS", "/a:relative::/b", 1);
  EXPECT_EQ(platformFolders().applicationSupport, folders.root() / "d");
  EXPECT_EQ(platformFolders().logFile, folders.root() / "s/Pellar/Pellar.log");
  EXPECT_EQ(dataFolders(), (std::vector<std::filesystem::path>{folders.root() / "d", "/a", "/b"}));
}

TEST_F(PlatformFoldersTest, RelativeValuesAreIgnored) {
  setenv("XDG_DATA_HOME", "data", 1);
  setenv("XDG_STATE_HOME", "", 1);
  EXPECT_EQ(platformFolders().applicationSupport, folders.home() / ".local/share");
  EXPECT_EQ(platformFolders().logFile.parent_path().parent_path(), folders.home() / ".local/state");
}

}  // namespace
}  // namespace pellar
