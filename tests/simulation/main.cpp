#include <gtest/gtest.h>

#include <cstdio>
#include <string_view>

#include "tests/simulation/RandomDays.h"

namespace pellar {

RandomDays& randomDays() {
  static RandomDays days;
  return days;
}

}  // namespace pellar

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  for (int i = 1; i < argc; ++i) {
    auto& days = pellar::randomDays();
    if (std::sscanf(argv[i], "--days=%u-%u", &days.first, &days.last) == 2) continue;
    std::fprintf(stderr, "%s: --days=FIRST-LAST expected\n", argv[i]);
    return 2;
  }
  return RUN_ALL_TESTS();
}
