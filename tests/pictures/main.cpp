#include <gtest/gtest.h>

#include <QGuiApplication>

#include "tests/support/OwnSurroundings.h"

// Texts are drawn with the fonts of the machine, on no display.
int main(int argc, char** argv) {
  pellar::test::leaveTheUsersSurroundings();
  testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
  const QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
