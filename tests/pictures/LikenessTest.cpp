#include <gtest/gtest.h>

#include <QFont>
#include <QPainter>

#include "tests/pictures/Likeness.h"

namespace pellar {
namespace {

struct Scene {
  QRect shape{20, 10, 60, 30};
  QColor shapeColor{80, 90, 100};
  QString text = QStringLiteral("Report.docx");
  QString family = QStringLiteral("DejaVu Sans");
  int pixelSize = 13;
  QColor textColor = Qt::white;
  int textLeft = 12;
  int textTop = 60;
};

constexpr QRect textPlace(10, 60, 120, 18);

QImage painted(const Scene& scene) {
  QImage image(140, 90, QImage::Format_ARGB32_Premultiplied);
  image.fill(QColor(30, 30, 34));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(scene.shapeColor);
  painter.drawRoundedRect(scene.shape, 6, 6);
  QFont font(scene.family);
  font.setPixelSize(scene.pixelSize);
  painter.setFont(font);
  painter.setPen(scene.textColor);
  painter.drawText(QRect(scene.textLeft, scene.textTop, 120, 18), Qt::AlignLeft | Qt::AlignTop, scene.text);
  return image;
}

std::string differenceOf(const Scene& scene) {
  return difference(painted(scene), painted({}), {{textPlace}});
}

// The same for a single sign, drawn at first in the usual font.
std::string differenceOfSign(const Scene& scene) {
  constexpr QRect place(10, 60, 30, 18);
  return difference(painted(scene), painted({.text = QStringLiteral("\u22ef")}), {{place, 0, 3, true}});
}

TEST(Likeness, APictureIsLikeItself) {
  EXPECT_EQ(differenceOf({}), "");
}

TEST(Likeness, ATextInAnotherFontIsLike) {
  EXPECT_EQ(differenceOf({.family = "DejaVu Serif"}), "");
  EXPECT_EQ(differenceOf({.family = "DejaVu Sans Mono"}), "");
}

TEST(Likeness, ASignInAnotherFontIsLike) {
  for (const char* family : {"DejaVu Serif", "DejaVu Sans Mono"})
    EXPECT_EQ(differenceOfSign({.text = QStringLiteral("\u22ef"), .family = family}), "") << family;
}

TEST(Likeness, AMissingSignOneElsewhereAndOneOfAnotherColourAreNot) {
  EXPECT_NE(differenceOfSign({.text = ""}), "");
  EXPECT_NE(differenceOfSign({.text = QStringLiteral("\u22ef"), .textTop = 68}), "");
  EXPECT_NE(differenceOfSign({.text = QStringLiteral("\u22ef"), .textColor = {255, 90, 90}}), "");
  EXPECT_NE(differenceOfSign({.text = QStringLiteral("\u2588\u2588")}), "");
}

TEST(Likeness, AShapeOnePixelAsideIsNot) {
  EXPECT_NE(differenceOf({.shape = {21, 10, 60, 30}}), "");
  EXPECT_NE(differenceOf({.shape = {20, 10, 60, 31}}), "");
}

TEST(Likeness, AShapeOfAnotherColourIsNot) {
  EXPECT_NE(differenceOf({.shapeColor = {80, 90, 104}}), "");
}

TEST(Likeness, AMissingTextIsNot) {
  EXPECT_NE(differenceOf({.text = ""}), "");
}

TEST(Likeness, ATextThatIsMuchLongerOrShorterIsNot) {
  EXPECT_NE(differenceOf({.text = "Rep"}), "");
  EXPECT_NE(differenceOf({.text = "WWWWWWWWWWWW"}), "");
}

TEST(Likeness, ATextOfAnotherColourIsNot) {
  EXPECT_NE(differenceOf({.textColor = {255, 90, 90}}), "");
  EXPECT_NE(differenceOf({.textColor = {140, 140, 140}}), "");
}

TEST(Likeness, ATextElsewhereIsNot) {
  EXPECT_NE(differenceOf({.textTop = 40}), "");
  EXPECT_NE(differenceOf({.textLeft = 24}), "");
}

TEST(Likeness, APictureOfAnotherSizeOrNoneIsNot) {
  EXPECT_NE(difference(painted({}), painted({}).copy(0, 0, 139, 90), {}), "");
  EXPECT_NE(difference(painted({}), QImage(), {}), "");
}

}  // namespace
}  // namespace pellar
