#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/QuotedList.h"
#include "core/Utf8.h"

namespace pellar {
namespace {

using Texts = std::vector<std::string>;

TEST(QuotedList, WritesTextsBetweenQuotesAndBrackets) {
  EXPECT_EQ(quotedList(Texts{}), "[]");
  EXPECT_EQ(quotedList(Texts{"Plan"}), "[\"Plan\"]");
  EXPECT_EQ(quotedList(Texts{"Plan", "", "Report.docx"}), "[\"Plan\", \"\", \"Report.docx\"]");
}

TEST(QuotedList, KeepsTextOfEveryScript) {
  const std::string text = "caf\u00e9 \u05e9\u05dc\u05d5\u05dd \U0001F600";
  EXPECT_EQ(quotedList(Texts{text}), "[\"" + text + "\"]");
}

TEST(QuotedList, EscapesQuotesAndBackslashes) {
  EXPECT_EQ(quotedList(Texts{"a\"b\\c"}), "[\"a\\\"b\\\\c\"]");
}

TEST(QuotedList, StaysOneLineWhateverATitleHolds) {
  EXPECT_EQ(quotedList(Texts{"a\nb\rc\td"}), "[\"a\\nb\\rc\\td\"]");
  EXPECT_EQ(quotedList(Texts{std::string("\0\x1b", 2)}), "[\"\\u{0}\\u{1B}\"]");
  EXPECT_EQ(quotedList(Texts{"\u0085\u2028\u2029"}), "[\"\\u{85}\\u{2028}\\u{2029}\"]");
}

TEST(QuotedList, IsUtf8AlsoWhenATitleIsNot) {
  EXPECT_EQ(quotedList(Texts{"a\xFF"
                             "b\xC3"}),
            "[\"a\\xFFb\\xC3\"]");
  std::string everyByte;
  for (int byte = 0; byte < 256; ++byte) everyByte += static_cast<char>(byte);
  EXPECT_TRUE(Utf8::isValid(quotedList(Texts{everyByte})));
}

}  // namespace
}  // namespace pellar
