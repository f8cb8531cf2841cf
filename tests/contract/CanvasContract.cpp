#include <string>

#include "tests/contract/PanelTest.h"

namespace pellar::contract {

class TextMeasureContract : public PanelTest {
 protected:
  double width(std::string_view text, Font font = {13, FontWeight::regular}) {
    return panel->host().textMeasure().width(text, font);
  }
};

TEST_F(TextMeasureContract, GrowsWithTheTextAndTheFont) {
  EXPECT_EQ(width(""), 0);
  EXPECT_GT(width("a"), 0);
  EXPECT_GT(width("Save all files"), width("Save all"));
  EXPECT_GT(width("Save all", {26, FontWeight::regular}), width("Save all", {13, FontWeight::regular}) * 1.5);
  EXPECT_EQ(width("Save all"), width("Save all"));
}

TEST_F(TextMeasureContract, TakesAnyBytes) {
  EXPECT_GT(width("\xff\xfe"), 0);
  EXPECT_GT(width("caf\xc3"), width("caf"));
  EXPECT_GE(width(std::string("a\0b", 3)), 0);
  EXPECT_GE(width("one\ntwo\r\n\t"), 0);
  EXPECT_GT(width("\u05d3\u05d5\u05d7"), 0);
  EXPECT_GT(width(std::string(100'000, 'x')), 10'000);
}

class CanvasContract : public PanelTest {
 protected:
  bool looks(ScreenPoint point, const Color& color) {
    return wait([&] {
      const Color seen = world().colorAt(point);
      return near(seen.red, color.red, 0.02) && near(seen.green, color.green, 0.02) &&
             near(seen.blue, color.blue, 0.02);
    });
  }
  bool differs(ScreenPoint a, ScreenPoint b) {
    const Color one = world().colorAt(a);
    const Color other = world().colorAt(b);
    return !near(one.red, other.red, 0.1) || !near(one.green, other.green, 0.1) ||
           !near(one.blue, other.blue, 0.1);
  }
  static constexpr Color red{1, 0, 0, 1, std::nullopt};
  static constexpr Color green{0, 1, 0, 1, std::nullopt};
};

TEST_F(CanvasContract, FillsARectangleWithItsColourAndLeavesTheRest) {
  view.paint = [](Canvas& canvas) { canvas.fillRoundedRect({50, 6, 100, 20}, 0, red); };
  world().movePointer({5, 5});
  show();
  EXPECT_TRUE(looks(at(100, 16), red));
  EXPECT_TRUE(looks(at(51.5, 7.5), red));
  EXPECT_TRUE(differs(at(100, 16), at(40, 16)));
  EXPECT_TRUE(differs(at(100, 16), at(160, 16)));
}

TEST_F(CanvasContract, RoundsTheCorners) {
  view.paint = [](Canvas& canvas) { canvas.fillRoundedRect({50, 6, 100, 20}, 8, red); };
  world().movePointer({5, 5});
  show();
  EXPECT_TRUE(looks(at(100, 7.5), red));
  EXPECT_TRUE(differs(at(100, 16), at(50.5, 6.5)));
}

TEST_F(CanvasContract, MixesATransparentColourWithWhatIsUnderIt) {
  view.paint = [](Canvas& canvas) {
    canvas.fillRoundedRect({50, 6, 100, 20}, 0, red);
    canvas.fillRoundedRect({50, 6, 100, 20}, 0, Color{0, 0, 1, 0.5, std::nullopt});
  };
  world().movePointer({5, 5});
  show();
  EXPECT_TRUE(looks(at(100, 16), Color{0.5, 0, 0.5, 1, std::nullopt}));
}

TEST_F(CanvasContract, ReplacesAnEarlierPictureOnARepaint) {
  Color current = red;
  view.paint = [&current](Canvas& canvas) { canvas.fillRoundedRect({50, 6, 100, 20}, 0, current); };
  world().movePointer({5, 5});
  show();
  ASSERT_TRUE(looks(at(100, 16), red));
  current = green;
  panel->host().setNeedsDisplay({50, 6, 100, 20});
  EXPECT_TRUE(looks(at(100, 16), green));
}

TEST_F(CanvasContract, DrawsAnyTextWithoutHarm) {
  view.paint = [](Canvas& canvas) {
    const Font font{13, FontWeight::bold};
    for (const std::string& text :
         {std::string("\xff\xc3"), std::string("a\0b\n\t", 5), std::string(100'000, 'w'),
          std::string("\u05d3\u05d5\u05d7"), std::string()}) {
      canvas.drawText(text, {10, 4}, font, Color::white());
      canvas.drawTruncatedText(text, {10, 4, 30, 16}, font, Color::white());
      canvas.drawTruncatedText(text, {10, 4, 0, 16}, font, Color::white());
      canvas.drawMiddleTruncatedText(text, {10, 4, 30, 16}, font, Color::white());
      canvas.drawMiddleTruncatedText(text, {10, 4, 0, 16}, font, Color::white());
      canvas.drawWrappedText(text, {10, 0, 30, 32}, 2, font, Color::white());
      canvas.drawWrappedText(text, {10, 0, 0, 32}, 2, font, Color::white());
      canvas.drawCenteredText(text, {10, 4, 30, 16}, font, Color::white());
    }
    canvas.drawSymbol(Symbol::magnifyingGlass, {370, 9, 14, 14}, Color::white());
    canvas.fillRoundedRect({300, 6, 40, 20}, 0, red);
  };
  world().movePointer({5, 5});
  show();
  EXPECT_TRUE(looks(at(320, 16), red));
}

}  // namespace pellar::contract
