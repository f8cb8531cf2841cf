// The program from its start to its end, watched for every use of memory that it does not own and for what it
// never gives back.

#include <gtest/gtest.h>

#include <chrono>

#include "tests/e2e/DesktopTest.h"

namespace pellar::e2e {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds slowly = 120s;

class UnderValgrind : public DesktopTest {
 protected:
  void startPellarUnderValgrind() {
    desktop.folders().settleIn();
    pellar =
        desktop.start({"valgrind", "--quiet", "--error-exitcode=99", "--leak-check=full",
                       "--show-leak-kinds=definite,indirect", "--errors-for-leak-kinds=definite,indirect",
                       "--num-callers=30", "--suppressions=" PELLAR_SUPPRESSIONS, builtProgram("pellar")},
                      "pellar");
  }
};

TEST_F(UnderValgrind, StartAndStopAreClean) {
  editor().open("Report", {60, 160, 700, 400});
  const auto plan = editor().open("Plan", {200, 260, 700, 400});
  startPellarUnderValgrind();
  desktop.observer().waitUntil(
      "the strip is over the window", [&] { return strip.isOver(plan); }, slowly);
  const auto ending = pellar->end(slowly);
  EXPECT_TRUE(ending.exitCode == 0 && pellar->errors().empty()) << pellar->errors();
  pellar.reset();
}

}  // namespace

}  // namespace pellar::e2e
