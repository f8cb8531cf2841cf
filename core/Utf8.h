#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// UTF-8 as text from other programs comes: perhaps not valid.
namespace pellar::Utf8 {

// The length in bytes of the valid character at the start of `text`, or 0 when there is none. Overlong forms,
// surrogates and code points above U+10FFFF are not valid.
std::size_t validPrefix(std::string_view text);

// The code point of one character. Needs exactly the bytes that `validPrefix` counts.
char32_t codePoint(std::string_view character);

// Controls, which include the line breaks of ASCII, and the line and the paragraph separator.
bool isControlOrLineBreak(char32_t character);

bool isValid(std::string_view text);

// The same text with each byte that is part of no valid character replaced by U+FFFD.
std::string repaired(std::string_view text);

// The text without spaces of Unicode's space class and tabs at both ends; line breaks stay. Needs valid
// UTF-8.
std::string_view trimmed(std::string_view text);

// The one meaning of "the same name". Whether two texts read the same: letters may be composed in one and not
// in the other, and a byte that is part of no valid character reads as U+FFFD.
bool areEquivalent(std::string_view left, std::string_view right);

// Whether `name` stands in `text` as a whole: neither beside a letter, a number, "-", "_" or ".", nor with
// only blanks between it and a letter or a number. So "Plan" stands in "* Plan: edited" and not in "Old
// Plan". Spelt as in areEquivalent(); an empty name stands nowhere.
bool standsIn(std::string_view text, std::string_view name);

// Orders names by their composed form, so that those that read the same count as one. Unlike
// areEquivalent(), it takes bytes that are no valid character for what they are: they name different files.
struct NameOrder {
  bool operator()(std::string_view left, std::string_view right) const;
};

// The one meaning of "found in": a text is found in another when its folded form is a part of the other's.
// The text without regard to case and in composed form. All forms of a letter are one, as the Greek sigma's
// at the end of a word and elsewhere, and so are i and the Turkish capital I with a dot. Repairs text that is
// not valid UTF-8.
std::string folded(std::string_view text);

}  // namespace pellar::Utf8
