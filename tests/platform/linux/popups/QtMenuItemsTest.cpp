#include <gtest/gtest.h>

#include <QAction>
#include <QImage>
#include <QMenu>
#include <QPalette>
#include <QPixmap>
#include <string>

#include "platform/linux/popups/QtMenuItems.h"
#include "tests/platform/linux/SharedDesktop.h"

namespace pellar::contract {
namespace {

class QtMenuItemsTest : public ::testing::Test {
 protected:
  QtMenuItemsTest() { SharedDesktop::get(); }

  // What stands in the row of an item with this title.
  static QString shown(const std::string& title, QtMenuItems::Reader reader = QtMenuItems::Reader::toolkit) {
    QMenu menu;
    QtMenuItems::fill(
        menu, {ClosureItem{title, {}}}, [](const auto& /*handler*/) {}, reader);
    return menu.actions().first()->text();
  }
};

TEST_F(QtMenuItemsTest, ALongTitleShowsItsBeginningAndItsEnd) {
  const QString text = shown("Report " + std::string(10000, 'x') + " of Monday");
  EXPECT_TRUE(text.startsWith(QLatin1String("Report xxx"))) << text.toStdString();
  EXPECT_TRUE(text.endsWith(QLatin1String("xxx of Monday"))) << text.toStdString();
  EXPECT_EQ(text.count(QChar(0x2026)), 1);
  EXPECT_LT(text.size(), 200);
}

TEST_F(QtMenuItemsTest, ATitleIsOneRowWithoutMarksOfKeys) {
  EXPECT_EQ(shown("A\nB\tC"), QLatin1String("A B C"));
  EXPECT_EQ(shown("R&D"), QLatin1String("R&&D"));
  EXPECT_EQ(shown("my_editor"), QLatin1String("my_editor"));
  EXPECT_EQ(shown("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d"), QString::fromUtf8("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d"));
  EXPECT_EQ(shown(""), QString());
}

TEST_F(QtMenuItemsTest, AProminentItemIsBoldAndHasTheAccentColour) {
  const QColor accent(200, 0, 120);
  const auto accentedDots = [&](bool prominent) {
    QMenu menu;
    QPalette colours = menu.palette();
    colours.setColor(QPalette::Highlight, accent);
    menu.setPalette(colours);
    QtMenuItems::fill(menu, {ClosureItem{.title = "Update to 2.0", .handler = {}, .prominent = prominent}},
                      [](const auto& /*handler*/) {});
    EXPECT_EQ(menu.actions().first()->font().bold(), prominent);
    const QImage picture = menu.grab().toImage().convertToFormat(QImage::Format_RGB32);
    int dots = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) dots += picture.pixel(x, y) == accent.rgb() ? 1 : 0;
    return dots;
  };
  EXPECT_GT(accentedDots(true), 20);
  EXPECT_EQ(accentedDots(false), 0);
}

TEST_F(QtMenuItemsTest, ATraysTitleHasNoMarksOfKeysEither) {
  const auto told = [](const std::string& title) { return shown(title, QtMenuItems::Reader::sessionBus); };
  EXPECT_EQ(told("my_editor"), QLatin1String("my__editor"));
  EXPECT_EQ(told("_a__b_"), QLatin1String("__a____b__"));
  EXPECT_EQ(told("R&D & Co&"), QLatin1String("R&&D & Co&"));
}

}  // namespace
}  // namespace pellar::contract
