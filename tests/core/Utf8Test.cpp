#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <utf8proc.h>

#include <cstdint>
#include <string>

#include "core/Utf8.h"

namespace pellar {
namespace {

using namespace std::string_view_literals;

TEST(Utf8, TakesEveryCharacterOfUnicodeAndNoSurrogate) {
  for (utf8proc_int32_t character = 0; character <= 0x10FFFF; ++character) {
    utf8proc_uint8_t encoded[4];
    const auto length = static_cast<std::size_t>(utf8proc_encode_char(character, encoded));
    const std::string_view text(reinterpret_cast<const char*>(encoded), length);
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    ASSERT_EQ(Utf8::validPrefix(text), surrogate ? 0 : length) << std::hex << character;
  }
}

TEST(Utf8, RefusesWhatIsCutShortOverlongOrTooHigh) {
  for (const std::string_view bad :
       {"\x80"sv, "\xBF"sv, "\xC0\x80"sv, "\xC1\xBF"sv, "\xC3"sv, "\xE2\x80"sv, "\xE0\x9F\xBF"sv,
        "\xED\xA0\x80"sv, "\xF0\x8F\xBF\xBF"sv, "\xF0\x9F\x98"sv, "\xF4\x90\x80\x80"sv, "\xF5\x80\x80\x80"sv,
        "\xFE"sv, "\xFF"sv, "\xC3\x28"sv, "\xE2\x28\xA1"sv, "\xE2\x82\x28"sv, "\xF0\x9F\x28\x80"sv}) {
    EXPECT_FALSE(Utf8::isValid(bad));
    EXPECT_EQ(Utf8::validPrefix(bad), 0U);
  }
  EXPECT_EQ(Utf8::validPrefix(""), 0U);
  EXPECT_TRUE(Utf8::isValid(""));
  EXPECT_TRUE(Utf8::isValid("a\0b"sv));
}

TEST(Utf8, EachBadByteBecomesOneReplacement) {
  EXPECT_EQ(Utf8::repaired("Plan\xFF.docx"), "Plan\uFFFD.docx");
  EXPECT_EQ(Utf8::repaired("\xE2\x80"), "\uFFFD\uFFFD");
  EXPECT_EQ(Utf8::repaired("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(Utf8::repaired("\xC3\xC3\xA9"), "\uFFFDé");
  EXPECT_EQ(Utf8::repaired("naïve 😀"), "naïve 😀");
  EXPECT_EQ(Utf8::repaired("a\0\xFF"sv), "a\0\uFFFD"sv);
}

TEST(Utf8, TrimsSpacesAndTabsButNoLineBreaks) {
  EXPECT_EQ(Utf8::trimmed(" \t\u00A0\u3000Plan\u2003\u202F \t"), "Plan");
  EXPECT_EQ(Utf8::trimmed("\n Plan \n"), "\n Plan \n");
  EXPECT_EQ(Utf8::trimmed(" \n Plan \u2028 "), "\n Plan \u2028");
  EXPECT_EQ(Utf8::trimmed(" \t "), "");
  EXPECT_EQ(Utf8::trimmed(""), "");
  EXPECT_EQ(Utf8::trimmed("é"), "é");
}

TEST(Utf8, FoldsCaseAndComposition) {
  EXPECT_EQ(Utf8::folded("RÉSUMÉ"), "résumé");
  EXPECT_EQ(Utf8::folded("Re\u0301sume\u0301"), "résumé");
  EXPECT_EQ(Utf8::folded("ÜBER"), Utf8::folded("U\u0308ber"));
  EXPECT_EQ(Utf8::folded("ΑΒΓ"), "αβγ");
  EXPECT_EQ(Utf8::folded("Plan"), "plan");
  EXPECT_EQ(Utf8::folded("PLAN\xFF"), "plan\uFFFD");
}

TEST(Utf8, FoldsEveryFormOfALetterAlike) {
  EXPECT_EQ(Utf8::folded("ΟΔΟΣ"), Utf8::folded("οδος")) << "the sigma at the end of a word";
  EXPECT_EQ(Utf8::folded("İstanbul"), "istanbul");
  EXPECT_EQ(Utf8::folded("I\u0307stanbul"), "istanbul");
  EXPECT_EQ(Utf8::folded("I\u0307\u0301"), Utf8::folded("\u00ED"));
  EXPECT_EQ(Utf8::folded("STRASSE"), Utf8::folded("Straße"));
  EXPECT_EQ(Utf8::folded("ПЛАН"), "план");
  EXPECT_EQ(Utf8::folded("ΐ"), Utf8::folded("ι\u0308\u0301"));
  EXPECT_NE(Utf8::folded("ısı"), Utf8::folded("isi")) << "two letters to who reads Turkish";
  EXPECT_NE(Utf8::folded("e"), Utf8::folded("é"));
}

class NameOrder : public testing::Test {
 protected:
  [[nodiscard]] bool isSame(std::string_view left, std::string_view right) const {
    return !isBefore(left, right) && !isBefore(right, left);
  }
  Utf8::NameOrder isBefore;
};

TEST_F(NameOrder, TakesEverySpellingOfANameForOne) {
  EXPECT_TRUE(isSame("/Ann/Résumé.docx", "/Ann/Re\u0301sume\u0301.docx"));
  EXPECT_TRUE(isSame("e\u0323\u0307", "e\u0307\u0323")) << "marks above and below in any order";
  EXPECT_TRUE(isSame("\u212Bngström", "A\u030Angstro\u0308m"));
  EXPECT_FALSE(isSame("e", "é"));
  EXPECT_FALSE(isSame("e", "e\u0301"));
  EXPECT_FALSE(isSame("Plan", "plan"));
  EXPECT_FALSE(isSame("é", "éé"));
}

TEST_F(NameOrder, IsThatOfTheComposedNames) {
  EXPECT_TRUE(isBefore("Zoe", "Zoe\u0301"));
  EXPECT_TRUE(isBefore("Zoe\u0301", "Zoé 2"));
  EXPECT_TRUE(isBefore("a!b", "a/b"));
  EXPECT_TRUE(isBefore("ez", "e\u0301a")) << "as é stands behind z";
  EXPECT_TRUE(isBefore("", "a"));
  EXPECT_FALSE(isBefore("", ""));
}

TEST_F(NameOrder, TellsBytesThatAreNoCharacterApart) {
  EXPECT_FALSE(isSame("/\xFF", "/\xFE"));
  EXPECT_FALSE(isSame("/\xFF", "/\uFFFD"));
}

RC_GTEST_PROP(Utf8Property, NamesHaveOneOrder, ()) {
  // Few letters and marks, so that names are often the same.
  const auto name = rc::gen::map(rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
                                     "a", "e", "/", "\u00E9", "\u0301", "\u0323", "\u0307", "\u1EB9", "\xFF",
                                     "\u1112", "\u1161", "\u11AB")),
                                 [](const std::vector<std::string>& parts) {
                                   std::string joined;
                                   for (const auto& part : parts) joined += part;
                                   return joined;
                                 });
  const Utf8::NameOrder isBefore;
  const auto a = *name;
  const auto b = *name;
  const auto c = *name;
  RC_ASSERT(!isBefore(a, a));
  RC_ASSERT(!(isBefore(a, b) && isBefore(b, a)));
  RC_ASSERT(!(isBefore(a, b) && isBefore(b, c)) || isBefore(a, c));
  const auto isSame = [&](const std::string& left, const std::string& right) {
    return !isBefore(left, right) && !isBefore(right, left);
  };
  RC_ASSERT(!(isSame(a, b) && isSame(b, c)) || isSame(a, c));
  if (Utf8::isValid(a) && Utf8::isValid(b)) RC_ASSERT(isSame(a, b) == Utf8::areEquivalent(a, b));
}

TEST(Utf8, FoldsEverySpellingOfALetterAlike) {
  // Composed, decomposed, and the sign that once had a place of its own.
  EXPECT_EQ(Utf8::folded("\u00C5ngstr\u00F6m"), Utf8::folded("A\u030Angstro\u0308m"));
  EXPECT_EQ(Utf8::folded("\u212Bngstr\u00F6m"), Utf8::folded("\u00E5ngstr\u00F6m"));
  EXPECT_EQ(Utf8::folded("\u1112\u1161\u11AB"), Utf8::folded("\uD55C"));
}

TEST(Utf8, TextsAreEquivalentHoweverTheirLettersAreComposed) {
  EXPECT_TRUE(Utf8::areEquivalent("", ""));
  EXPECT_TRUE(Utf8::areEquivalent("\u00DCber", "U\u0308ber"));
  EXPECT_TRUE(Utf8::areEquivalent("\u212B", "A\u030A"));
  EXPECT_TRUE(
      Utf8::areEquivalent("pl\xFF"
                          "an",
                          "pl\uFFFDan"));
  EXPECT_FALSE(Utf8::areEquivalent("\u00DCber", "\u00FCber")) << "case counts";
  EXPECT_FALSE(Utf8::areEquivalent("\u00DCber", "Uber"));
  EXPECT_FALSE(Utf8::areEquivalent("Plan", "Plan "));
  EXPECT_FALSE(Utf8::areEquivalent("", "a"));
}

// Composing takes time that grows faster than the text.
TEST(Utf8, BeyondTwoPagesOfTextOnlyTheSameBytesAreEquivalent) {
  const auto times = [](std::string_view letter, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += letter;
    return text;
  };
  const std::string composed = "\u00e9";
  const std::string decomposed = "e\u0301";
  EXPECT_TRUE(Utf8::areEquivalent(times(composed, 2730), times(decomposed, 2730))) << "8,190 bytes";
  EXPECT_FALSE(Utf8::areEquivalent(times(composed, 2731), times(decomposed, 2731))) << "8,193 bytes";
  EXPECT_FALSE(Utf8::areEquivalent(times(decomposed, 2731), times(composed, 2731)));
  EXPECT_TRUE(Utf8::areEquivalent(times(composed, 5000), times(composed, 5000)));
}

TEST(Utf8, ANameStandsInATextOnlyAsAWhole) {
  for (const auto* text :
       {"Plan.txt", "*Plan.txt", "\u25CF Plan.txt \u2014 Editor", "Editor: Plan.txt (~/Documents)",
        "/home/ann/Plan.txt", "Old Plan.txt, Plan.txt", "[Plan.txt]"})
    EXPECT_TRUE(Utf8::standsIn(text, "Plan.txt")) << text;
  for (const auto* text :
       {"", "Plan", "plan.txt", "Old Plan.txt", "Plan.txt 2", "MyPlan.txt", "Plan.txt.bak", "my-Plan.txt",
        "_Plan.txt", "Plan.txt\u0301", "\u00E9Plan.txt", "Plan.txt  \u00C9"})
    EXPECT_FALSE(Utf8::standsIn(text, "Plan.txt")) << text;
  EXPECT_TRUE(Utf8::standsIn("R\u00E9sum\u00E9 - Word", "Re\u0301sume\u0301"));
  EXPECT_TRUE(Utf8::standsIn("\xFF - Word", "\uFFFD"));
  EXPECT_FALSE(Utf8::standsIn("anything", ""));
  EXPECT_FALSE(Utf8::standsIn(std::string(300'000, 'a'), std::string(100'000, 'a'))) << "at once";
}

TEST(Utf8, ALongRunOfCombiningMarksDoesNotHoldTheProgramUp) {
  std::string marks = "a";
  for (int index = 0; index < 200'000; ++index) marks += index % 2 == 0 ? "\u0301" : "\u0323";
  EXPECT_EQ(Utf8::folded(marks).size(), marks.size());
  EXPECT_FALSE(Utf8::areEquivalent(marks, marks + "a"));
}

RC_GTEST_PROP(Utf8Property, RepairedTextIsValidAndValidTextStays, (const std::string& bytes)) {
  const std::string repaired = Utf8::repaired(bytes);
  RC_ASSERT(Utf8::isValid(repaired));
  RC_ASSERT(Utf8::repaired(repaired) == repaired);
  if (Utf8::isValid(bytes)) RC_ASSERT(repaired == bytes);
}

RC_GTEST_PROP(Utf8Property, FoldingTwiceIsFoldingOnce, (const std::string& bytes)) {
  const std::string folded = Utf8::folded(bytes);
  RC_ASSERT(Utf8::isValid(folded));
  RC_ASSERT(Utf8::folded(folded) == folded);
}

}  // namespace
}  // namespace pellar
