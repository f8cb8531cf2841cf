#include <gtest/gtest.h>

#include <cstdio>

#include "tests/e2e/Process.h"
#include "tests/platform/linux/SharedDesktop.h"
#include "tests/support/OwnSurroundings.h"

int main(int argc, char** argv) {
  pellar::test::leaveTheUsersSurroundings();
  ::testing::InitGoogleTest(&argc, argv);
  pellar::e2e::adoptOrphans();
  ::testing::AddGlobalTestEnvironment(new pellar::contract::SharedDesktop);
  const int result = RUN_ALL_TESTS();
  if (const auto left = pellar::e2e::childrenLeft(); !left.empty()) {
    std::fprintf(stderr, "left running: %s\n", ::testing::PrintToString(left).c_str());
    pellar::e2e::killChildrenLeft();
    return 1;
  }
  return result;
}
