#include <gtest/gtest.h>

#include "app/strip/place/Screens.h"
#include "platform/sim/system/SimScreens.h"

namespace pellar {
namespace {

class ScreenChoice : public testing::Test {
 protected:
  // Left of the first screen and a little lower; and above it.
  static constexpr ScreenRect first{0, 0, 1440, 900};
  static constexpr ScreenRect left{-1920, -200, 1920, 1080};
  static constexpr ScreenRect above{200, 900, 1000, 800};

  ScreenChoice() {
    screens.add(left);
    screens.add(above);
  }
  [[nodiscard]] ScreenRect chosen(const ScreenRect& rect) const {
    return Screens::containing(rect, screens)->frame;
  }

  SimMainLoop loop;
  SimScreens screens{loop};
};

TEST_F(ScreenChoice, ARectangleInsideAScreenBelongsToIt) {
  EXPECT_EQ(chosen({100, 100, 50, 20}), first);
  EXPECT_EQ(chosen({-1900, -190, 50, 20}), left);
  EXPECT_EQ(chosen({300, 1000, 50, 20}), above);
}

TEST_F(ScreenChoice, ARectangleOnTwoScreensBelongsToTheOneWithMoreOfIt) {
  EXPECT_EQ(chosen({-60, 100, 100, 20}), left);
  EXPECT_EQ(chosen({-40, 100, 100, 20}), first);
}

TEST_F(ScreenChoice, OfTwoScreensWithEqualPartsTheEarlierOneWins) {
  EXPECT_EQ(chosen({-50, 100, 100, 20}), first);
  screens.set({SimScreens::screen(left, 0, 0), SimScreens::screen(first, 0, 0)});
  EXPECT_EQ(chosen({-50, 100, 100, 20}), left);
}

TEST_F(ScreenChoice, ARectangleOnNoScreenGoesToTheMainOne) {
  screens.keyWindowFrame = [] { return ScreenRect{-1000, 0, 400, 300}; };
  EXPECT_EQ(chosen({5000, 5000, 50, 20}), left);
  screens.keyWindowFrame = [] { return std::optional<ScreenRect>(); };
  EXPECT_EQ(chosen({5000, 5000, 50, 20}), first);
}

TEST_F(ScreenChoice, AnEmptyRectangleBelongsToTheScreenAroundIt) {
  EXPECT_EQ(chosen({-1000, 100, 0, 0}), left);
  EXPECT_EQ(chosen({700, 1000, 0, 30}), above);
}

TEST_F(ScreenChoice, TheOnlyScreenIsChosenForAnyRectangle) {
  screens.set({SimScreens::screen(left, 25, 0)});
  for (const ScreenRect& rect : {ScreenRect{0, 0, 10, 10}, ScreenRect{-1900, 0, 10, 10}, ScreenRect{}})
    EXPECT_EQ(chosen(rect), left);
}

// While screens are rearranged.
class ScreensWithoutAMainOne final : public ScreenList {
 public:
  explicit ScreensWithoutAMainOne(const ScreenList& sound) : sound_(sound) {}
  [[nodiscard]] std::vector<Screen> screens() const override { return sound_.screens(); }
  [[nodiscard]] std::optional<Screen> mainScreen() const override { return std::nullopt; }
  [[nodiscard]] Subscription onChanged(std::function<void()>) override { return {}; }

 private:
  const ScreenList& sound_;
};

TEST_F(ScreenChoice, WhereThereIsNoMainOneTheFirstTakesWhatIsOnNone) {
  const ScreensWithoutAMainOne without(screens);
  EXPECT_EQ(Screens::containing({5000, 5000, 50, 20}, without)->frame, first);
}

TEST_F(ScreenChoice, WithoutAnyScreenThereIsNone) {
  screens.set({});
  EXPECT_EQ(Screens::containing({0, 0, 10, 10}, screens), std::nullopt);
}

}  // namespace
}  // namespace pellar
