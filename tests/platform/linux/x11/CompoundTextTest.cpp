#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

#include "core/Utf8.h"
#include "platform/linux/x11/CompoundText.h"

namespace pellar {
namespace {

using namespace std::string_literals;

TEST(CompoundText, IsLatin1UntilItSaysOtherwise) {
  EXPECT_EQ(utf8OfCompoundText(""), "");
  EXPECT_EQ(utf8OfCompoundText("Caf\xe9"), "Café");
  EXPECT_EQ(utf8OfCompoundText("a\nb\tc"), "a\nb\tc");
}

TEST(CompoundText, TheUpperHalfIsOfTheAlphabetThatWasNamedLast) {
  EXPECT_EQ(utf8OfCompoundText("\x1b-F\xc3\xe5\xe9\xdc - plan"), "Γειά - plan");
  EXPECT_EQ(utf8OfCompoundText("\x1b-L\xbf\xdb\xd0\xdd"), "План");
  EXPECT_EQ(utf8OfCompoundText("\x1b-B\xb9\xb1 \x1b-A\xb1\x1b-H\xf9"), "šą ±ש");
  EXPECT_EQ(utf8OfCompoundText("\x1b-b\xa4"), "€");
}

TEST(CompoundText, EastAsianCharactersAreTwoBytesOfEitherHalf) {
  EXPECT_EQ(utf8OfCompoundText("\x1b$(BF|K\\\x1b(B.txt"), "日本.txt");
  EXPECT_EQ(utf8OfCompoundText("\x1b$)B\xc6\xfc\xcb\xdc.txt"), "日本.txt");
  EXPECT_EQ(utf8OfCompoundText("\x1b$)C\xc7\xd1\xb1\xdb"), "한글");
  EXPECT_EQ(utf8OfCompoundText("\x1b$(AVPND"), "中文");
  EXPECT_EQ(utf8OfCompoundText("\x1b)I\xb1"), "ｱ");
}

TEST(CompoundText, AStretchMayBeUtf8) {
  EXPECT_EQ(utf8OfCompoundText("a\x1b%G\xe2\x82\xac\xf0\x9f\x98\x80\x1b%@\xe9"), "a€😀é");
  EXPECT_EQ(utf8OfCompoundText("\x1b%G\xe2\x82\xac"), "€");
}

TEST(CompoundText, TheDirectionOfWritingIsNoText) {
  EXPECT_EQ(utf8OfCompoundText("\x9b"
                               "2]\x1b-H\xf9\x9b]a"),
            "שa");
}

TEST(CompoundText, WhatCannotBeReadIsAMarkAndTheRestIsRead) {
  EXPECT_EQ(utf8OfCompoundText("a\x1b%/1\x80\x86"
                               "x\x02yyyy"
                               "b"),
            "a\xef\xbf\xbd"
            "b");
  EXPECT_EQ(utf8OfCompoundText("\x1b$)B\xc6"), "\xef\xbf\xbd");
  EXPECT_EQ(utf8OfCompoundText("a\x85"
                               "b"),
            "a\xef\xbf\xbd"
            "b");
  EXPECT_EQ(utf8OfCompoundText("a\x1b(0b"), "ab") << "a set that this text may not name";
}

TEST(CompoundText, EndsWhereverItIsCut) {
  const auto whole =
      "\x1b-F\xc3\x1b$(BF|\x1b(B\x1b%G\xe2\x82\xac\x1b%@\x9b"
      "2]\x1b%/1\x80\x86xxxxxx"s;
  for (std::size_t length = 0; length <= whole.size(); ++length)
    EXPECT_TRUE(Utf8::isValid(utf8OfCompoundText(whole.substr(0, length)))) << length;
}

// Pieces of sequences, characters of all sets and bytes that mean nothing, in any order.
RC_GTEST_PROP(CompoundTextProperty, AnyBytesGiveUtf8OfNoUndueLength, ()) {
  const auto piece =
      rc::gen::oneOf(rc::gen::elementOf(std::vector<std::string>{
                         "\x1b",   "%",       "G",    "@",  "/",    "$",       "(",        ")",      "-",
                         "A",      "B",       "C",    "F",  "I",    "\x1b$(B", "\x1b$)C",  "\x1b-L", "\x1b%G",
                         "\x1b%@", "\x1b%/1", "\x9b", "1]", "\x80", "\xff",    "\xc6\xfc", " ",      "F|"}),
                     rc::gen::container<std::string>(1, rc::gen::arbitrary<char>()));
  std::string text;
  for (const auto& each : *rc::gen::container<std::vector<std::string>>(piece)) text += each;
  const auto read = utf8OfCompoundText(text);
  RC_ASSERT(Utf8::isValid(read));
  RC_ASSERT(read.size() <= 3 * text.size());
}

RC_GTEST_PROP(CompoundTextProperty, AsciiReadsAsItIs, ()) {
  const auto text = *rc::gen::container<std::string>(rc::gen::inRange<char>(' ', '\x7f'));
  RC_ASSERT(utf8OfCompoundText(text) == text);
}

}  // namespace
}  // namespace pellar
