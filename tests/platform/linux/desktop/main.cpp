#include <gtest/gtest.h>

#include <QCoreApplication>

#include "tests/support/OwnSurroundings.h"

int main(int argc, char** argv) {
  pellar::test::leaveTheUsersSurroundings();
  testing::InitGoogleTest(&argc, argv);
  const QCoreApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
