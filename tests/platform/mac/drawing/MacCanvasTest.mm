#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>

#include "platform/mac/drawing/MacCanvas.h"
#include "platform/mac/drawing/MacTextMeasure.h"

namespace pellar::contract {

constexpr Font font{13, FontWeight::regular};
constexpr Color red{1, 0, 0, 1, std::nullopt};

// A picture of 100 x 40 points and pixels, in the coordinates of a flipped view.
class MacCanvasTest : public ::testing::Test {
 protected:
  static constexpr int width = 100;
  static constexpr int height = 40;

  void draw(const std::function<void(Canvas&)>& paint) {
    bitmap = [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                     pixelsWide:width
                                                     pixelsHigh:height
                                                  bitsPerSample:8
                                                samplesPerPixel:4
                                                       hasAlpha:YES
                                                       isPlanar:NO
                                                 colorSpaceName:NSDeviceRGBColorSpace
                                                    bytesPerRow:0
                                                   bitsPerPixel:0];
    NSGraphicsContext* plain = [NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap];
    ASSERT_TRUE(plain != nil);
    CGContextTranslateCTM(plain.CGContext, 0, height);
    CGContextScaleCTM(plain.CGContext, 1, -1);
    [NSGraphicsContext saveGraphicsState];
    NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithCGContext:plain.CGContext
                                                                               flipped:YES];
    MacCanvas canvas;
    paint(canvas);
    [NSGraphicsContext restoreGraphicsState];
  }
  // Red, green, blue, alpha of a pixel, from the upper left corner.
  [[nodiscard]] std::array<NSUInteger, 4> pixel(NSInteger x, NSInteger y) const {
    std::array<NSUInteger, 4> components{};
    [bitmap getPixel:components.data() atX:x y:y];
    return components;
  }
  [[nodiscard]] bool isPainted(NSInteger x, NSInteger y) const { return pixel(x, y)[3] > 0; }
  // Whether anything is painted in a rectangle of pixels.
  [[nodiscard]] bool hasPaint(NSInteger left, NSInteger top, NSInteger right, NSInteger bottom) const {
    for (NSInteger y = top; y < bottom; ++y) {
      for (NSInteger x = left; x < right; ++x) {
        if (isPainted(x, y)) return true;
      }
    }
    return false;
  }

  NSBitmapImageRep* bitmap = nil;
};

TEST_F(MacCanvasTest, ARectangleIsWhereAFlippedViewHasIt) {
  draw([](Canvas& canvas) { canvas.fillRoundedRect({10, 5, 20, 10}, 0, red); });
  EXPECT_TRUE(isPainted(11, 6));
  EXPECT_TRUE(isPainted(29, 14));
  EXPECT_FALSE(isPainted(11, 34)) << "upside down";
  EXPECT_FALSE(isPainted(31, 10));
  const auto seen = pixel(20, 10);
  EXPECT_GT(seen[0], 200U);
  EXPECT_LT(seen[2], 60U);
}

TEST_F(MacCanvasTest, CornersAreRound) {
  draw([](Canvas& canvas) { canvas.fillRoundedRect({10, 5, 40, 30}, 12, red); });
  EXPECT_FALSE(isPainted(10, 5));
  EXPECT_TRUE(isPainted(30, 5));
  EXPECT_TRUE(isPainted(30, 20));
}

TEST_F(MacCanvasTest, TextStandsBelowItsOriginAndUpright) {
  draw([](Canvas& canvas) { canvas.drawText("L", {10, 4}, {24, FontWeight::bold}, red); });
  EXPECT_TRUE(hasPaint(8, 4, 40, 40));
  EXPECT_FALSE(hasPaint(0, 0, 100, 4));
  // An L has its bar at the bottom.
  NSInteger lowest = 0;
  for (NSInteger y = 0; y < height; ++y) {
    if (hasPaint(0, y, width, y + 1)) lowest = y;
  }
  EXPECT_TRUE(hasPaint(18, lowest - 2, 40, lowest + 1));
}

TEST_F(MacCanvasTest, ATruncatedTextStaysInItsRectangle) {
  draw([](Canvas& canvas) {
    canvas.drawTruncatedText("A title far too long for its tab", {10, 4, 50, 16}, font, red);
  });
  EXPECT_TRUE(hasPaint(10, 4, 60, 24));
  EXPECT_FALSE(hasPaint(62, 0, 100, 40));
}

TEST_F(MacCanvasTest, AMiddleTruncatedTextShowsBothEnds) {
  draw([](Canvas& canvas) {
    canvas.drawMiddleTruncatedText("/Users/ann/a/very/long/folder/Plan.docx", {10, 4, 60, 16}, font, red);
  });
  EXPECT_TRUE(hasPaint(10, 4, 25, 24));
  EXPECT_TRUE(hasPaint(55, 4, 70, 24));
  EXPECT_FALSE(hasPaint(72, 0, 100, 40));
}

TEST_F(MacCanvasTest, AWrappedTextTakesItsLinesAndNoMore) {
  const std::string text = "one two three four five six seven eight nine ten";
  draw([&](Canvas& canvas) { canvas.drawWrappedText(text, {10, 4, 50, 32}, 2, {11}, red); });
  EXPECT_TRUE(hasPaint(10, 4, 60, 20));
  EXPECT_TRUE(hasPaint(10, 20, 60, 36));
  EXPECT_FALSE(hasPaint(0, 38, 100, 40));
  draw([&](Canvas& canvas) { canvas.drawWrappedText(text, {10, 4, 50, 16}, 1, {11}, red); });
  EXPECT_FALSE(hasPaint(0, 24, 100, 40));
}

TEST_F(MacCanvasTest, ACenteredTextHasAsMuchRoomOnBothSides) {
  draw([](Canvas& canvas) { canvas.drawCenteredText("HHHH", {0, 0, 100, 40}, font, red); });
  NSInteger first = width;
  NSInteger last = 0;
  for (NSInteger x = 0; x < width; ++x) {
    if (!hasPaint(x, 0, x + 1, height)) continue;
    first = std::min(first, x);
    last = std::max(last, x);
  }
  EXPECT_NEAR(static_cast<double>(first), static_cast<double>(width - 1 - last), 3);
}

TEST_F(MacCanvasTest, TheMagnifierHasTheColourItIsGiven) {
  draw([](Canvas& canvas) { canvas.drawSymbol(Symbol::magnifyingGlass, {10, 5, 30, 30}, red); });
  bool painted = false;
  for (NSInteger y = 5; y < 35; ++y) {
    for (NSInteger x = 10; x < 40; ++x) {
      const auto seen = pixel(x, y);
      if (seen[3] < 250) continue;
      painted = true;
      EXPECT_GT(seen[0], 200U) << x << "," << y;
      EXPECT_LT(seen[2], 60U) << x << "," << y;
    }
  }
  EXPECT_TRUE(painted);
  EXPECT_FALSE(hasPaint(0, 0, 9, 40));
}

TEST(MacTextMeasureTest, GrowsWithTheTextAndTheFont) {
  const MacTextMeasure measure;
  EXPECT_EQ(measure.width("", font), 0);
  EXPECT_GT(measure.width("a", font), 0);
  EXPECT_GT(measure.width("Save all files", font), measure.width("Save all", font));
  EXPECT_GT(measure.width("Save all", {26}), measure.width("Save all", {13}) * 1.5);
  EXPECT_GT(measure.width("Save all", {13, FontWeight::bold}), measure.width("Save all", {13}));
}

TEST(MacTextMeasureTest, TakesAnyBytes) {
  const MacTextMeasure measure;
  EXPECT_GT(measure.width("\xff\xfe", font), 0);
  EXPECT_GT(measure.width("caf\xc3", font), measure.width("caf", font));
  EXPECT_EQ(measure.width("one\ntwo", font), measure.width("one two", font)) << "one line";
  EXPECT_GT(measure.width(std::string(100'000, 'x'), font), 10'000);
}

TEST(MacTextMeasureTest, TakesNoTimeForWhatIsWiderThanAnyScreen) {
  const MacTextMeasure measure;
  EXPECT_EQ(measure.width(std::string(10'000'000, 'x'), font), measure.width(std::string(10'000, 'x'), font));
  std::string emoji;
  while (emoji.size() < 100'000) emoji += "\U0001F600";
  EXPECT_GT(measure.width(emoji, font), 10'000);
  EXPECT_GT(measure.width("x" + emoji, font), 10'000) << "cut in the middle of a character";
}

}  // namespace pellar::contract
