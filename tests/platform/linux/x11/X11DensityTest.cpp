#include <string>

#include "platform/linux/x11/X11Density.h"
#include "tests/platform/linux/X11WorldTest.h"

namespace pellar::contract {
namespace {

class X11DensityTest : public X11WorldTest,
                       public ::testing::WithParamInterface<std::pair<const char*, double>> {
 protected:
  X11DensityTest() { desktop().setFontDots(GetParam().first); }
  ~X11DensityTest() override { desktop().setFontDots("96"); }

  static double scale() { return GetParam().second; }
  static AxRect points(const AxRect& pixels) {
    return {pixels.x / scale(), pixels.y / scale(), pixels.width / scale(), pixels.height / scale()};
  }
};

INSTANTIATE_TEST_SUITE_P(Scales, X11DensityTest,
                         ::testing::Values(std::pair("96", 1.0), std::pair("120", 1.25),
                                           std::pair("144", 1.5), std::pair("192", 2.0)),
                         [](const auto& scale) { return std::string("Dots") + scale.param.first; });

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
