#include "tests/contract/ContractTest.h"

namespace pellar::contract {

class ScreenListContract : public ContractTest {};

TEST_F(ScreenListContract, HasAFirstScreenAtTheOriginOfScreenCoordinates) {
  const auto screens = world().platform().screens.screens();
  ASSERT_FALSE(screens.empty());
  EXPECT_EQ(screens.front().frame.origin(), (ScreenPoint{0, 0}));
  for (const Screen& screen : screens) {
    EXPECT_GT(screen.frame.width, 0);
    EXPECT_GT(screen.frame.height, 0);
  }
}

TEST_F(ScreenListContract, KeepsEveryVisibleFrameInsideItsScreen) {
  for (const Screen& screen : world().platform().screens.screens()) {
    EXPECT_EQ(screen.frame.intersection(screen.visibleFrame), screen.visibleFrame);
  }
}

TEST_F(ScreenListContract, TheMainScreenIsThatOfTheFocusedWindow) {
  const auto screens = world().platform().screens.screens();
  EXPECT_EQ(world().platform().screens.mainScreen(), screens.front());
  const ProcessId pid = world().launch("editor");
  world().open(pid, "Plan.txt", {60, 100, 500, 300});
  elementOf(pid, "Plan.txt");
  ASSERT_TRUE(wait([&] { return isInFront(pid); }));
  EXPECT_EQ(world().platform().screens.mainScreen(), screens.front());
}

TEST_F(ScreenListContract, SaysTheSameWhenNothingChanged) {
  EXPECT_EQ(world().platform().screens.screens(), world().platform().screens.screens());
}

}  // namespace pellar::contract
