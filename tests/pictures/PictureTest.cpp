#include "tests/pictures/PictureTest.h"

#include <cstdlib>
#include <filesystem>

#include "tests/pictures/Likeness.h"

namespace pellar {

void expectLikePicture(const PanelPicture& picture, const std::string& name) {
  const std::filesystem::path reference = std::filesystem::path(PELLAR_PICTURES) / (name + ".png");
  const std::filesystem::path drawn = std::filesystem::path(PELLAR_DRAWN_PICTURES) / (name + ".png");
  std::filesystem::create_directories(drawn.parent_path());
  ASSERT_TRUE(picture.image.save(QString::fromStdString(drawn.string()))) << drawn;
  if (std::getenv("PELLAR_KEEP_PICTURES") != nullptr) {
    ASSERT_TRUE(picture.image.save(QString::fromStdString(reference.string()))) << reference;
    FAIL() << "kept, not compared: look at " << reference;
  }
  EXPECT_EQ(difference(picture.image, QImage(QString::fromStdString(reference.string())), picture.texts), "")
      << "drawn: " << drawn << "\nkept: " << reference;
}

}  // namespace pellar
