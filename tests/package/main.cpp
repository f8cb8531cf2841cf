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
  if (argc != 4) {
    std::cerr << "usage: package_tests OLDER.deb NEWER.deb ROOTS\n";
    return 2;
  }
  given = {std::filesystem::absolute(argv[1]), std::filesystem::absolute(argv[2]),
           std::filesystem::absolute(argv[3])};
  pellar::e2e::adoptOrphans();
  return RUN_ALL_TESTS();
}
