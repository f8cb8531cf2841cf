#include "core/TabLabel.h"

#include <re2/re2.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>

#include "core/PathParts.h"
#include "core/Utf8.h"

namespace pellar::TabLabel {

namespace {

using namespace std::string_view_literals;

constexpr std::array hiddenExtensions{"doc"sv,  "docx"sv, "docm"sv, "dot"sv,  "dotx"sv, "rtf"sv,
                                      "xls"sv,  "xlsx"sv, "xlsm"sv, "xlsb"sv, "csv"sv,  "ppt"sv,
                                      "pptx"sv, "pptm"sv, "pot"sv,  "potx"sv};

constexpr std::array suffixWords{"Saved"sv,      "Word"sv,           "Excel"sv,
                                 "PowerPoint"sv, "Outlook"sv,        "Compatibility Mode"sv,
                                 "Read-Only"sv,  "Protected View"sv, "Repaired"sv,
                                 "Shared"sv,     "Last Modified"sv,  "AutoRecovered"sv,
                                 "Autosaved"sv};

// RE2's own \s and . know ASCII only. White space is everything Unicode calls so, and . stops at every line
// break.
constexpr std::string_view space =
    R"([\x{9}-\x{D}\x{20}\x{85}\x{A0}\x{1680}\x{2000}-\x{200A}\x{2028}\x{2029}\x{202F}\x{205F}\x{3000}])";
constexpr std::string_view notLineBreak = R"([^\x{A}-\x{D}\x{85}\x{2028}\x{2029}])";
constexpr std::string_view separator = R"([-–—•])";

constexpr std::string_view savedTo = "Saved to ";
constexpr std::string_view lastModified = "Last Modified";

// "(\s*[-–—•]\s*(ALT)|\s*\[(ALT)\])\s*$", where the dot stops at every line break.
std::string suffixPattern(const std::string& alternatives) {
  const std::string spaces = std::string(space) + "*";
  return "(?:" + spaces + std::string(separator) + spaces + "(?:" + alternatives + ")|" + spaces +
         R"(\[(?:)" + alternatives + R"()\]))" + spaces + R"(\z)";
}

std::string words() {
  std::string result;
  for (const std::string_view word : suffixWords) {
    if (!result.empty()) result += '|';
    result += RE2::QuoteMeta({word.data(), word.size()});
  }
  return result;
}

std::string openEnded() {
  const std::string any(notLineBreak);
  return std::string(savedTo) + any + "+|" + std::string(lastModified) + any + "*";
}

// The fifteen alternatives in two expressions. One for the words alone stops reading backwards after a few
// characters; the other reads back to the last line break, so it is asked only when its answer may have
// changed.
struct Suffixes {
  RE2 word{suffixPattern(words())};
  RE2 openEnded{suffixPattern(TabLabel::openEnded())};
};

const Suffixes& suffixes() {
  // Never destroyed, since labels are made until the program ends.
  static const auto* const value = [] {
    const auto* made = new Suffixes;
    if (!made->word.ok() || !made->openEnded.ok()) std::abort();
    return made;
  }();
  return *value;
}

// Where the leftmost match starts, or npos. Every match runs to the end of the text.
std::size_t suffixStart(const RE2& pattern, std::string_view text) {
  re2::StringPiece match;
  if (!pattern.Match({text.data(), text.size()}, 0, text.size(), RE2::UNANCHORED, &match, 1)) {
    return std::string_view::npos;
  }
  return static_cast<std::size_t>(match.data() - text.data());
}

// Without any of these bytes there is neither separator nor bracket: the dashes and the bullet all begin with
// E2.
bool mayHaveSuffix(std::string_view text) {
  return text.find_first_of("-[\xE2"sv) != std::string_view::npos;
}

bool hasLineBreak(std::string_view text) {
  constexpr std::array breaks{"\n"sv,       "\v"sv,           "\f"sv,          "\r"sv,
                              "\xC2\x85"sv, "\xE2\x80\xA8"sv, "\xE2\x80\xA9"sv};
  return std::any_of(breaks.begin(), breaks.end(),
                     [&](std::string_view mark) { return text.find(mark) != std::string_view::npos; });
}

// Removes the leftmost match again and again until there is none. Linear in the text: an open-ended
// alternative that did not match matches no shorter text of the same line either, unless a "]" has come to
// its end.
std::string_view withoutSuffixes(std::string_view text) {
  if (!mayHaveSuffix(text)) return text;
  const bool openEndedPossible =
      text.find(savedTo) != std::string_view::npos || text.find(lastModified) != std::string_view::npos;
  bool sameLine = false;
  bool bracketAsked = false;
  for (;;) {
    const std::size_t word = suffixStart(suffixes().word, text);
    std::size_t openEnded = std::string_view::npos;
    const bool bracketed = text.ends_with(']');
    if (openEndedPossible && (!sameLine || (bracketed && !bracketAsked))) {
      openEnded = suffixStart(suffixes().openEnded, text);
      bracketAsked = bracketed;
    }
    const std::size_t start = std::min(word, openEnded);
    if (start == std::string_view::npos) return text;
    sameLine = start != openEnded && !hasLineBreak(text.substr(start));
    text = text.substr(0, start);
  }
}

std::string cleaned(std::string_view title) {
  return stripExtension(documentName(title));
}

bool isHidden(std::string_view extension) {
  return std::find(hiddenExtensions.begin(), hiddenExtensions.end(), extension) != hiddenExtensions.end();
}

}  // namespace

std::string label(std::string_view title, const std::optional<std::string>& path) {
  if (path && !path->empty()) return stripExtension(Utf8::repaired(lastComponent(*path)));
  return cleaned(title);
}

std::string tagKey(std::string_view title, const std::optional<std::string>& path) {
  if (path && !path->empty()) return *path;
  return "title:" + cleaned(title);
}

std::string documentName(std::string_view title) {
  const std::string text = Utf8::repaired(title);
  return std::string(Utf8::trimmed(withoutSuffixes(text)));
}

bool titleNames(std::string_view title, std::string_view path) {
  if (Utf8::areEquivalent(cleaned(title), label({}, std::string(path)))) return true;
  std::string_view name = lastComponent(path);
  if (Utf8::standsIn(title, name)) return true;
  const auto extension = pathExtension(path);
  if (extension.empty()) return false;
  name.remove_suffix(extension.size() + 1);
  return Utf8::standsIn(title, name);
}

std::string stripExtension(std::string_view name) {
  const std::string_view extension = pathExtension(name);
  if (!isHidden(lowerPathExtension(name))) return std::string(name);
  const auto length = static_cast<std::size_t>(extension.data() - name.data());
  return std::string(name.substr(0, length - 1));
}

}  // namespace pellar::TabLabel
