#include "core/Utf8.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "core/Ascii.h"

namespace pellar::Utf8 {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

// Longer than any path of a file system. Beyond it the composed form is not made: ordering a long run of
// combining marks takes time in the square of its length.
constexpr std::size_t longestComposed = 8192;

// Longer than any name of a file. Searching for such a text takes time in the product of both lengths.
constexpr std::size_t longestName = 1024;

unsigned char byteAt(std::string_view text, std::size_t index) {
  return static_cast<unsigned char>(text[index]);
}

bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

bool isContinuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

// Reads one character of valid UTF-8.
std::size_t decode(std::string_view text, utf8proc_int32_t& character) {
  const auto length =
      utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                       static_cast<utf8proc_ssize_t>(std::min<std::size_t>(text.size(), 4)), &character);
  return length < 1 ? 1 : static_cast<std::size_t>(length);
}

constexpr std::string_view iWithDot = "i\xCC\x87";  // as case folding makes it of the Turkish capital I

// Below the first combining mark nothing composes.
constexpr utf8proc_int32_t firstCombiningMark = 0x300;

bool isSpaceOrTab(utf8proc_int32_t character) {
  if (character < 0x80) return character == ' ' || character == '\t';
  return utf8proc_category(character) == UTF8PROC_CATEGORY_ZS;
}

// A letter, a mark upon one, or a number.
bool isOfAWord(utf8proc_int32_t character) {
  const auto category = utf8proc_category(character);
  return category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_NO;
}

bool joinsNames(utf8proc_int32_t character) {
  return character == '-' || character == '_' || character == '.';
}

// The last character of valid UTF-8 that is not empty.
std::size_t decodeLast(std::string_view text, utf8proc_int32_t& character) {
  std::size_t start = text.size() - 1;
  while (start > 0 && isContinuation(byteAt(text, start))) --start;
  decode(text.substr(start), character);
  return text.size() - start;
}

// Whether a name that ends before `after` ends there.
bool endsBefore(std::string_view after) {
  for (bool adjacent = true; !after.empty(); adjacent = false) {
    utf8proc_int32_t character = 0;
    after.remove_prefix(decode(after, character));
    if (isOfAWord(character) || (adjacent && joinsNames(character))) return false;
    if (!isSpaceOrTab(character)) return true;
  }
  return true;
}

bool beginsBehind(std::string_view before) {
  for (bool adjacent = true; !before.empty(); adjacent = false) {
    utf8proc_int32_t character = 0;
    before.remove_suffix(decodeLast(before, character));
    if (isOfAWord(character) || (adjacent && joinsNames(character))) return false;
    if (!isSpaceOrTab(character)) return true;
  }
  return true;
}

std::string composed(const std::string& text) {
  utf8proc_uint8_t* raw = nullptr;
  const auto length = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                   static_cast<utf8proc_ssize_t>(text.size()), &raw,
                                   static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
  const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owned(raw, &std::free);
  // It fails only for want of memory; the text as it is then still finds what is spelt the same.
  if (length < 0) return text;
  return {reinterpret_cast<const char*>(raw), static_cast<std::size_t>(length)};
}

// The first part of a text that is composed by itself: a slash joins with nothing, so a path is taken
// component by component.
std::string_view firstPart(std::string_view text) {
  return text.substr(0, std::min(text.find('/'), text.size() - 1) + 1);
}

// What a part is ordered by; as it is where it has no composed form.
std::string orderedBy(std::string_view part) {
  const std::string text(part);
  return isAscii(part) || part.size() > longestComposed ? text : composed(text);
}

// The case folding of one character, which may be several.
void appendFolded(std::string& result, utf8proc_int32_t character) {
  utf8proc_int32_t folded[8];
  int lastClass = UTF8PROC_BOUNDCLASS_START;
  const auto count = utf8proc_decompose_char(character, folded, 8, UTF8PROC_CASEFOLD, &lastClass);
  for (utf8proc_ssize_t index = 0; index < count; ++index) {
    utf8proc_uint8_t encoded[4];
    const auto length = utf8proc_encode_char(folded[index], encoded);
    result.append(reinterpret_cast<const char*>(encoded), static_cast<std::size_t>(length));
  }
}

// Takes the dots off each small i; whether there was one.
bool removeDots(std::string& text) {
  bool found = false;
  for (auto at = text.find(iWithDot); at != std::string::npos; at = text.find(iWithDot, at)) {
    text.erase(at + 1, iWithDot.size() - 1);
    found = true;
  }
  return found;
}

}  // namespace

std::size_t validPrefix(std::string_view text) {
  if (text.empty()) return 0;
  const unsigned char first = byteAt(text, 0);
  if (first < 0x80) return 1;
  if (first < 0xC2 || first > 0xF4) return 0;
  const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (text.size() < length) return 0;
  const unsigned char second = byteAt(text, 1);
  // The second byte decides what is overlong, a surrogate or beyond the last code point.
  unsigned char least = 0x80;
  unsigned char most = 0xBF;
  if (first == 0xE0) least = 0xA0;
  if (first == 0xED) most = 0x9F;
  if (first == 0xF0) least = 0x90;
  if (first == 0xF4) most = 0x8F;
  if (second < least || second > most) return 0;
  for (std::size_t index = 2; index < length; ++index) {
    if (!isContinuation(byteAt(text, index))) return 0;
  }
  return length;
}

char32_t codePoint(std::string_view character) {
  utf8proc_int32_t decoded = 0;
  decode(character, decoded);
  return static_cast<char32_t>(decoded);
}

bool isControlOrLineBreak(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character <= 0x9F) || character == 0x2028 ||
         character == 0x2029;
}

bool isValid(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = validPrefix(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

std::string repaired(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = validPrefix(text);
    result += length == 0 ? replacement : text.substr(0, length);
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return result;
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty()) {
    utf8proc_int32_t character = 0;
    const std::size_t length = decode(text, character);
    if (!isSpaceOrTab(character)) break;
    text.remove_prefix(length);
  }
  while (!text.empty()) {
    utf8proc_int32_t character = 0;
    const std::size_t length = decodeLast(text, character);
    if (!isSpaceOrTab(character)) break;
    text.remove_suffix(length);
  }
  return text;
}

bool areEquivalent(std::string_view left, std::string_view right) {
  if (left == right) return true;
  if (isAscii(left) && isAscii(right)) return false;
  const std::string first = repaired(left);
  const std::string second = repaired(right);
  if (first.size() > longestComposed || second.size() > longestComposed) return first == second;
  return composed(first) == composed(second);
}

bool standsIn(std::string_view text, std::string_view name) {
  if (name.empty() || name.size() > longestName) return false;
  std::string where = repaired(text);
  std::string what = repaired(name);
  if (where.size() <= longestComposed) {
    where = composed(where);
    what = composed(what);
  }
  const std::string_view whole = where;
  for (auto at = whole.find(what); at != std::string_view::npos; at = whole.find(what, at + 1))
    if (beginsBehind(whole.substr(0, at)) && endsBefore(whole.substr(at + what.size()))) return true;
  return false;
}

std::string folded(std::string_view text) {
  if (isAscii(text)) return Ascii::lowered(text);
  std::string result;
  result.reserve(text.size());
  const std::string valid = repaired(text);
  bool isComposed = true;
  for (std::string_view rest = valid; !rest.empty();) {
    utf8proc_int32_t character = 0;
    rest.remove_prefix(decode(rest, character));
    // Below the marks one folds to a letter with a mark: the capital I with a dot.
    isComposed = isComposed && character < firstCombiningMark;
    appendFolded(result, character);
  }
  const bool isLong = result.size() > longestComposed;
  if (!isComposed && !isLong) result = composed(result);
  return removeDots(result) && !isLong ? composed(result) : result;
}

bool NameOrder::operator()(std::string_view left, std::string_view right) const {
  for (;;) {
    const auto differ =
        std::mismatch(left.begin(), left.end(), right.begin(), right.end()).first - left.begin();
    // The part in which they differ begins behind the last slash that they have in common.
    const auto slash = left.substr(0, static_cast<std::size_t>(differ)).rfind('/');
    const std::size_t start = slash == std::string_view::npos ? 0 : slash + 1;
    left.remove_prefix(start);
    right.remove_prefix(start);
    if (left.empty() || right.empty()) return left.size() < right.size();
    const auto ours = firstPart(left);
    const auto theirs = firstPart(right);
    if (const int order = orderedBy(ours).compare(orderedBy(theirs)); order != 0) return order < 0;
    left.remove_prefix(ours.size());
    right.remove_prefix(theirs.size());
  }
}

}  // namespace pellar::Utf8
