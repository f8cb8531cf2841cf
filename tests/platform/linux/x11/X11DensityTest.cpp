#include <cmath>
#include <string>

#include "platform/linux/x11/X11Density.h"
#include "tests/platform/linux/X11WorldTest.h"
#include "tests/support/Named.h"

namespace pellar::contract {
namespace {

class X11DensityTest : public X11WorldTest, public ::testing::WithParamInterface<test::Named<double>> {
 protected:
  X11DensityTest() { desktop().setFontDots(dots()); }
  ~X11DensityTest() override { desktop().setFontDots("96"); }

  static double scale() { return GetParam().value; }
  static std::string dots() { return std::to_string(std::lround(96 * scale())); }
  static AxRect points(const AxRect& pixels) {
    return {pixels.x / scale(), pixels.y / scale(), pixels.width / scale(), pixels.height / scale()};
  }
};

INSTANTIATE_TEST_SUITE_P(Scales, X11DensityTest,
                         ::testing::Values(test::Named{"Dots96", 1.0}, test::Named{"Dots120", 1.25},
                                           test::Named{"Dots144", 1.5}, test::Named{"Dots192", 2.0}),
                         test::byName<double>);

TEST_P(X11DensityTest, TheScreenAndItsWindowsAreToldInPoints) {
  const auto screens = x11().platform().screens.screens();
  ASSERT_EQ(screens.size(), 1U);
  EXPECT_EQ(screens[0].frame.size(), (Size{1440 / scale(), 900 / scale()}));
  const auto pid = world().launch("Editor");
  const auto window = world().open(pid, "Report.txt", {201, 151, 601, 403});
  const Element report = elementOf(pid, "Report.txt");
  EXPECT_TRUE(wait([&] { return frameOf(report) == points({201, 151, 601, 403}); }));
  EXPECT_EQ(seenFrame(window), (AxRect{201, 151, 601, 403}));
}

TEST_P(X11DensityTest, AFrameThatIsWrittenAsItWasReadMovesNoPixel) {
  const auto pid = world().launch("Editor");
  const auto window = world().open(pid, "Report.txt", {201, 151, 601, 403});
  const Element report = elementOf(pid, "Report.txt");
  ASSERT_TRUE(wait([&] { return frameOf(report) == points({201, 151, 601, 403}); }));
  for (int i = 0; i < 5; ++i) writeAndRead(report, *frameOf(report));
  EXPECT_EQ(seenFrame(window), (AxRect{201, 151, 601, 403}));
  // A step of a point there and one back.
  AxRect frame = *frameOf(report);
  frame.y += 1;
  writeAndRead(report, frame);
  frame.y -= 1;
  EXPECT_TRUE(wait([&] { return writeAndRead(report, frame) == frame; }));
  EXPECT_EQ(seenFrame(window), (AxRect{201, 151, 601, 403}));
}

}  // namespace
}  // namespace pellar::contract
