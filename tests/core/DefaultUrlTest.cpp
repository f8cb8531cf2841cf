#include <gtest/gtest.h>

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
using test::put;

// Where the state file is, and how it comes there from the folder of the program's former name.
class DefaultUrlTest : public ::testing::Test {
 protected:
  TemporaryFolder folder;
  fs::path file = folder / "Pellar/state.json";
  fs::path legacy = folder / "Fennick/state.json";
  LogReader log;
};

TEST_F(DefaultUrlTest, IsUnderTheFolderForApplicationData) {
  EXPECT_EQ(StateStore::defaultURL(folder.path()), file);
  EXPECT_FALSE(fs::exists(folder / "Pellar")) << "asking creates nothing";
}

TEST_F(DefaultUrlTest, TheFirstStartMovesTheFileOfTheFormerName) {
  AppState state;
  state.tags["/a.docx"] = "red";
  put(legacy, encodeState(state));
  EXPECT_EQ(StateStore::defaultURL(folder.path()), file);
  EXPECT_FALSE(fs::exists(legacy));
  EXPECT_EQ(mode(folder / "Pellar"), 0700U);
  EXPECT_EQ(mode(file), 0600U) << "others could read the old one";
  EXPECT_EQ(StateStore(file).state(), state);
  EXPECT_EQ(log.text(), "");
}

TEST_F(DefaultUrlTest, AFileOnAnotherDeviceIsMovedToo) {
  put(legacy, "{}");
  BrokenFileOperations operations;
  operations.crossesDevices = [&](const fs::path& from) { return from == legacy; };
  EXPECT_EQ(StateStore::defaultURL(folder.path(), operations), file);
  EXPECT_EQ(content(file), "{}");
  EXPECT_EQ(mode(file), 0600U);
  EXPECT_FALSE(fs::exists(legacy));
  EXPECT_EQ(log.text(), "");
}

TEST_F(DefaultUrlTest, AFileThatMayOnlyBeReadIsCopied) {
  put(legacy, "{}");
  BrokenFileOperations operations;
  operations.before = [&](std::string_view step) {
    return step == "restrictToOwner" ? std::make_error_code(std::errc::operation_not_permitted)
                                     : std::error_code{};
  };
  EXPECT_EQ(StateStore::defaultURL(folder.path(), operations), file);
  EXPECT_EQ(content(file), "{}");
  EXPECT_EQ(mode(file), 0600U);
  EXPECT_EQ(log.text(), "");
}

TEST_F(DefaultUrlTest, ANewFileWinsAndTheOldOneStays) {
  put(file, "{}");
  put(legacy, "old");
  EXPECT_EQ(StateStore::defaultURL(folder.path()), file);
  EXPECT_EQ(content(file), "{}");
  EXPECT_EQ(content(legacy), "old");
}

TEST_F(DefaultUrlTest, AFailedMoveIsLoggedAndLeavesTheOldFile) {
  put(legacy, "old");
  put(folder / "Pellar", "a file where the folder should be");
  EXPECT_EQ(StateStore::defaultURL(folder.path()), file);
  EXPECT_EQ(content(legacy), "old");
  EXPECT_EQ(log.messages().size(), 1U);
  EXPECT_NE(log.text().find(" state migration failed: "), std::string::npos);
  EXPECT_EQ(StateStore(file).state(), AppState{});
}

TEST_F(DefaultUrlTest, TheLogSaysWhatHinderedTheMove) {
  const auto trouble = std::make_error_code(std::errc::io_error);
  std::size_t failures = 0;
  for (const std::string step : {"createFolders", "rename", "remove"}) {
    fs::remove_all(file.parent_path());
    put(legacy, "{}");
    BrokenFileOperations operations;
    operations.crossesDevices = [&](const fs::path& from) { return from == legacy; };
    operations.before = [&](std::string_view now) {
      // The old file is removed once the new one is there.
      return now == step && (step != "remove" || fs::exists(file)) ? trouble : std::error_code{};
    };
    StateStore::defaultURL(folder.path(), operations);
    ++failures;
    EXPECT_EQ(log.messages(), std::vector(failures, "state migration failed: " + trouble.message())) << step;
    EXPECT_EQ(content(legacy), "{}") << step;
  }
}

TEST_F(DefaultUrlTest, AFileOnTheSameDeviceIsMovedWithoutACopy) {
  put(legacy, "{}");
  BrokenFileOperations operations;
  EXPECT_EQ(StateStore::defaultURL(folder.path(), operations), file);
  EXPECT_EQ(operations.steps, (std::vector<std::string>{"createFolders", "restrictToOwner", "rename"}));
  EXPECT_EQ(content(file), "{}");
}

}  // namespace
}  // namespace pellar
