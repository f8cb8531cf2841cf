#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

#include "core/CutText.h"
#include "core/Utf8.h"

namespace pellar {
namespace {

constexpr std::string_view ellipsis = "\xE2\x80\xA6";

std::size_t codePoints(std::string_view text) {
  std::size_t count = 0;
  for (; !text.empty(); ++count) text.remove_prefix(std::max<std::size_t>(Utf8::validPrefix(text), 1));
  return count;
}

std::string repeated(std::string_view text, std::size_t times) {
  std::string result;
  for (std::size_t time = 0; time < times; ++time) result += text;
  return result;
}

// Letters, accents, emoji and what joins them, flags, Hangul, and bytes that are part of no character.
rc::Gen<std::string> anyText() {
  const auto piece = rc::gen::elementOf(std::vector<std::string>{
      "a", " ", "e\xCC\x81", "\xCC\x81", "\xC3\xA9", "\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7",
      "\xF0\x9F\x87\xA9\xF0\x9F\x87\xAA", "\xE1\x84\x92\xE1\x85\xA1\xE1\x86\xAB", "\xFF", "\xC3", "\r\n"});
  return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece), [](const auto& pieces) {
    std::string text;
    for (const auto& each : pieces) text += each;
    return text;
  });
}

TEST(CutText, AnEndOfNothingButMarksIsLeftAsFarAsItFits) {
  const std::string accent = "\xCC\x81";
  EXPECT_EQ(CutText::inTheMiddle(repeated("a", 20) + repeated(accent, 10), 10),
            repeated("a", 5) + std::string(ellipsis) + repeated(accent, 5));
}

RC_GTEST_PROP(CutTextProperty, NoMoreIsLeftThanAskedForAndItIsTheBeginning, ()) {
  const auto text = *anyText();
  const auto most = *rc::gen::inRange<std::size_t>(0, 40);
  std::string cut = CutText::atTheEnd(text, most);
  if (codePoints(text) <= most) {
    RC_ASSERT(cut == text);
    return;
  }
  RC_ASSERT(cut.ends_with(ellipsis));
  cut.resize(cut.size() - ellipsis.size());
  RC_ASSERT(text.starts_with(cut));
  RC_ASSERT(codePoints(cut) <= most);
  RC_ASSERT(!Utf8::isValid(text) || Utf8::isValid(cut));
}

RC_GTEST_PROP(CutTextProperty, FromTheMiddleBothEndsAreLeft, ()) {
  const auto text = *anyText();
  const auto most = *rc::gen::inRange<std::size_t>(0, 40);
  const std::string cut = CutText::inTheMiddle(text, most);
  if (codePoints(text) <= most) {
    RC_ASSERT(cut == text);
    return;
  }
  RC_ASSERT(codePoints(cut) <= most + 1);
  const auto middle = cut.find(ellipsis);
  RC_ASSERT(middle != std::string::npos);
  RC_ASSERT(text.starts_with(cut.substr(0, middle)));
  RC_ASSERT(text.ends_with(cut.substr(middle + ellipsis.size())));
  RC_ASSERT(!Utf8::isValid(text) || Utf8::isValid(cut));
}

TEST(CutText, CutsBetweenWhatIsSeenAsOne) {
  EXPECT_EQ(CutText::atTheEnd("cafe\xCC\x81 au lait", 4), "caf\xE2\x80\xA6");
  EXPECT_EQ(CutText::atTheEnd("cafe\xCC\x81 au lait", 5), "cafe\xCC\x81\xE2\x80\xA6");
  const std::string family = "\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7";
  EXPECT_EQ(CutText::atTheEnd("a" + family + "b", 3), "a\xE2\x80\xA6");
  EXPECT_EQ(CutText::inTheMiddle("ab" + family + "cd", 4),
            "ab\xE2\x80\xA6"
            "cd");
  EXPECT_EQ(CutText::inTheMiddle("one" + std::string(100, '-') +
                                     "e\xCC\x81"
                                     "x",
                                 4),
            "on\xE2\x80\xA6"
            "x");
}

TEST(CutText, ACharacterIsWholeWhereverItStands) {
  const std::string flag = "\xF0\x9F\x87\xA9\xF0\x9F\x87\xAA";
  const std::string accented = "e\xCC\x81";
  EXPECT_EQ(CutText::atTheEnd(accented + "x", 1), ellipsis);
  EXPECT_EQ(CutText::atTheEnd(flag + "x", 1), ellipsis);
  EXPECT_EQ(CutText::atTheEnd("a\r\nb", 2), "a" + std::string(ellipsis));
  EXPECT_EQ(CutText::atTheEnd(repeated("x", 100) + accented + "y", 101),
            repeated("x", 100) + std::string(ellipsis));
  EXPECT_EQ(CutText::inTheMiddle(repeated("a", 10) + flag + "b", 4), "aa" + std::string(ellipsis) + "b");
}

TEST(CutText, AByteThatIsPartOfNoCharacterJoinsNothing) {
  // Were it taken with the letter behind it, they would be an accent.
  EXPECT_EQ(CutText::atTheEnd("x\xCC"
                              "abc",
                              1),
            "x" + std::string(ellipsis));
}

TEST(CutText, MoreThanSixtyFourCodePointsAreNoCharacterToBeKeptWhole) {
  const std::string accent = "\xCC\x81";
  const std::string dots(ellipsis);
  const std::string endless = "xa" + repeated(accent, 1000);
  EXPECT_EQ(CutText::atTheEnd(endless, 1 + 64), "x" + dots);
  EXPECT_EQ(CutText::atTheEnd(endless, 1 + 65), "xa" + repeated(accent, 64) + dots);
  const std::string endingEndlessly = repeated("a", 200) + repeated(accent, 100) + "y";
  EXPECT_EQ(CutText::inTheMiddle(endingEndlessly, 2 * (64 + 1)), repeated("a", 65) + dots + "y");
  EXPECT_EQ(CutText::inTheMiddle(endingEndlessly, 2 * (65 + 1)),
            repeated("a", 66) + dots + repeated(accent, 65) + "y");
}

TEST(CutText, AnEndlessCharacterIsCutAllTheSame) {
  const std::string endless = "a" + repeated("\xCC\x81", 100'000);
  EXPECT_EQ(codePoints(CutText::atTheEnd(endless, 1000)), 1001U);
  EXPECT_EQ(codePoints(CutText::atTheEnd("Plan " + endless, 1000)), 1001U);
  EXPECT_LE(codePoints(CutText::inTheMiddle(endless, 1000)), 1001U);
  EXPECT_GE(codePoints(CutText::inTheMiddle(endless, 1000)), 900U);
}

}  // namespace
}  // namespace pellar
