#include "core/CutText.h"

#include <utf8proc.h>

#include <algorithm>

#include "core/Utf8.h"

namespace pellar::CutText {
namespace {

constexpr std::string_view ellipsis = "\xE2\x80\xA6";

// In code points. More than any writing puts together in one character.
constexpr std::size_t longestCharacter = 64;

std::size_t lengthOfFirst(std::string_view text) {
  return std::max<std::size_t>(Utf8::validPrefix(text), 1);
}

utf8proc_int32_t firstOf(std::string_view text) {
  return Utf8::validPrefix(text) == 0 ? 0xFFFD : static_cast<utf8proc_int32_t>(Utf8::codePoint(text));
}

// Where the last code point of a text that is not empty begins.
std::size_t startOfLast(std::string_view text) {
  for (std::size_t length = 2; length <= std::min<std::size_t>(text.size(), 4); ++length) {
    const std::size_t start = text.size() - length;
    if (Utf8::validPrefix(text.substr(start)) == length) return start;
  }
  return text.size() - 1;
}

// How many bytes of the text its first `most` code points have, none of them with a part of what is seen as
// one. All of the text when it has no more.
std::size_t lengthOfBeginning(std::string_view text, std::size_t most) {
  std::size_t at = 0;
  std::size_t whole = 0;  // up to where the last character seen as one began
  std::size_t sinceWhole = 0;
  utf8proc_int32_t state = 0;
  utf8proc_int32_t before = 0;
  for (std::size_t count = 0; at < text.size(); ++count) {
    const std::string_view rest = text.substr(at);
    const utf8proc_int32_t here = firstOf(rest);
    if (count == 0 || utf8proc_grapheme_break_stateful(before, here, &state)) {
      whole = at;
      sinceWhole = 0;
    }
    if (count == most) return sinceWhole > longestCharacter ? at : whole;
    ++sinceWhole;
    before = here;
    at += lengthOfFirst(rest);
  }
  return text.size();
}

// Where the last `most` code points of the text, which has more, begin, after the end of what is seen as one.
std::size_t startOfEnd(std::string_view text, std::size_t most) {
  std::size_t start = text.size();
  for (std::size_t count = 0; count < most; ++count) start = startOfLast(text.substr(0, start));
  utf8proc_int32_t state = 0;
  utf8proc_int32_t before = firstOf(text.substr(startOfLast(text.substr(0, start))));
  std::size_t at = start;
  for (std::size_t count = 0; at < text.size() && count <= longestCharacter; ++count) {
    const utf8proc_int32_t here = firstOf(text.substr(at));
    if (utf8proc_grapheme_break_stateful(before, here, &state)) return at;
    before = here;
    at += lengthOfFirst(text.substr(at));
  }
  return start;
}

}  // namespace

std::string atTheEnd(std::string_view text, std::size_t most) {
  const std::size_t length = lengthOfBeginning(text, most);
  std::string cut(text.substr(0, length));
  if (length < text.size()) cut += ellipsis;
  return cut;
}

std::string inTheMiddle(std::string_view text, std::size_t most) {
  // Short enough, it is whole; no more of a long one is looked at than is left.
  std::size_t counted = 0;
  for (std::string_view rest = text; !rest.empty() && counted <= most; ++counted)
    rest.remove_prefix(lengthOfFirst(rest));
  if (counted <= most) return std::string(text);
  const std::size_t length = lengthOfBeginning(text, most / 2);
  const std::size_t start = startOfEnd(text, most / 2);
  std::string cut(text.substr(0, length));
  cut += ellipsis;
  cut += text.substr(start);
  return cut;
}

}  // namespace pellar::CutText
