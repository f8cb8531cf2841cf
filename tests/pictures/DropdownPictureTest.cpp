#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "app/panels/RecentView.h"
#include "platform/sim/SimMac.h"
#include "tests/pictures/PictureTest.h"

namespace pellar {
namespace {

class DropdownPicture : public testing::Test {
 protected:
  DropdownPicture() {
    const std::filesystem::path folder = mac.home() / "Documents" / "Contracts and minutes of the board";
    std::filesystem::create_directories(folder);
    double time = 1'700'000'000;
    for (const char* name :
         {"Plan.docx", "Letter to Ann.docx",
          "Minutes of the meeting of the board in the first quarter of the year.docx", "Report.docx"}) {
      const std::string path = (folder / name).string();
      std::ofstream(path) << name;
      store->update([&](AppState& state) { state.touchRecent(path, std::nullopt, time++); });
    }
    view.reload("");
  }

  SimMac mac;
  std::shared_ptr<StateStore> store =
      std::make_shared<StateStore>(StateStore::defaultURL(mac.platform().folders.applicationSupport));
  PictureStage stage{{480, 300}, PanelBackgroundKind::glass};
  RecentView view{stage, store, mac.platform()};
};

TEST_F(DropdownPicture, OfFourFiles) {
  ASSERT_EQ(view.items().size(), 4U);
  expectLikePicture(stage.pictureOf(view), "dropdown");
}

TEST_F(DropdownPicture, WithARowSelected) {
  ASSERT_TRUE(view.handle("moveDown:"));
  expectLikePicture(stage.pictureOf(view), "dropdown-selected");
}

TEST_F(DropdownPicture, WithARowSelectedAtOneAndAHalf) {
  ASSERT_TRUE(view.handle("moveDown:"));
  stage.setScale(1.5);
  expectLikePicture(stage.pictureOf(view), "dropdown-selected-150");
}

TEST_F(DropdownPicture, WithARowSelectedAtTwice) {
  ASSERT_TRUE(view.handle("moveDown:"));
  stage.setScale(2);
  expectLikePicture(stage.pictureOf(view), "dropdown-selected-200");
}

}  // namespace
}  // namespace pellar
