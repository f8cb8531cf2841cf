// package_tests OLDER.deb NEWER.deb ROOTS: installs the packages in clean systems, which it makes in the
// folder ROOTS.
#include <gtest/gtest.h>

#include <iostream>

#include "tests/e2e/Process.h"
#include "tests/package/Packages.h"

namespace {

pellar::e2e::Packages given;

}  // namespace

const pellar::e2e::Packages& pellar::e2e::packages() {
  return given;
}

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (argc != 4 && !GTEST_FLAG_GET(list_tests)) {
    std::cerr << "usage: package_tests OLDER.deb NEWER.deb ROOTS\n";
    return 2;
  }
  if (argc == 4) given = {argv[1], argv[2], argv[3]};
  pellar::e2e::adoptOrphans();
  return RUN_ALL_TESTS();
}
