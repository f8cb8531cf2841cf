#include <gtest/gtest.h>

#include <string>

#include "platform/mac/system/Conversions.h"

namespace pellar::contract {

TEST(MacConversionsTest, TextGoesThereAndBack) {
  for (const std::string text : {"", "Plan.docx", "\u00dcbersicht \U0001F4C4", "\u05d3\u05d5\u05d7"}) {
    EXPECT_EQ(fromNSString(toNSString(text)), text);
  }
  const std::string withNull("a\0b", 3);
  EXPECT_EQ(fromNSString(toNSString(withNull)), withNull);
}

TEST(MacConversionsTest, ABadByteBecomesTheReplacementCharacter) {
  EXPECT_EQ(fromNSString(toNSString("caf\xc3")), "caf\uFFFD");
  EXPECT_EQ(fromNSString(toNSString("\xff"
                                    "a\xfe")),
            "\uFFFD"
            "a\uFFFD");
}

TEST(MacConversionsTest, HalfASurrogatePairBecomesTheReplacementCharacter) {
  const unichar half[] = {'a', 0xD83D, 'b'};
  EXPECT_EQ(fromNSString([NSString stringWithCharacters:half length:3]), "a\uFFFDb");
}

TEST(MacConversionsTest, NoTextIsTheEmptyOne) {
  EXPECT_EQ(fromNSString(nil), "");
}

TEST(MacConversionsTest, WhatIsDrawnIsOneLine) {
  EXPECT_EQ(fromNSString(drawnText("one\ntwo\r\tthree\u2028")), "one two  three ");
}

TEST(MacConversionsTest, RectanglesKeepTheirNumbers) {
  const ScreenRect rect{-10, 20.5, 300, 40};
  EXPECT_EQ(fromNSRect<ScreenSpace>(toNSRect(rect)), rect);
}

}  // namespace pellar::contract
