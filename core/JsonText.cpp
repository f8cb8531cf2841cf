#include "core/JsonText.h"

#include <re2/re2.h>

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>

#include "core/Ascii.h"

namespace pellar::JsonText {
namespace {

constexpr int deepestNesting = 512;

bool isShallow(std::string_view text) {
  int depth = 0;
  bool inString = false;
  for (std::size_t index = 0; index < text.size(); ++index) {
    const char byte = text[index];
    if (inString) {
      if (byte == '\\') ++index;
      if (byte == '"') inString = false;
    } else if (byte == '"') {
      inString = true;
    } else if (byte == '[' || byte == '{') {
      if (++depth > deepestNesting) return false;
    } else if (byte == ']' || byte == '}') {
      --depth;
    }
  }
  return true;
}

constexpr std::string_view ofNumbers = "+-.0123456789eE";

// Whether it is well-formed, and beyond every double.
bool isTooLarge(std::string_view number) {
  static const re2::RE2 wellFormed(R"(-?(?:0|[1-9][0-9]*)(?:\.[0-9]+)?(?:[eE][+-]?[0-9]+)?)");
  constexpr std::size_t mostDigits = 308;  // that are not too many without an exponent
  if (number.size() <= mostDigits && number.find_first_of("eE") == std::string_view::npos) return false;
  return re2::RE2::FullMatch(number, wellFormed) && !nlohmann::json::accept(number);
}

// The parser gives up the whole text for one number that is too large. In the place of each stands a list
// that holds a number, which is as wrong for a key as the number would be.
std::string withoutTooLargeNumbers(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  bool inString = false;
  for (std::size_t index = 0; index < text.size(); ++index) {
    const char byte = text[index];
    const bool begins = !inString && (byte == '-' || Ascii::isDigit(byte));
    if (begins) {
      const std::size_t end = std::min(text.find_first_not_of(ofNumbers, index), text.size());
      const std::string_view number = text.substr(index, end - index);
      result += isTooLarge(number) ? "[0]" : number;
      index = end - 1;
      continue;
    }
    result += byte;
    if (inString && byte == '\\' && index + 1 < text.size()) result += text[++index];
    if (byte == '"') inString = !inString;
  }
  return result;
}

bool isSafe(std::string_view text) {
  return text.find('\0') == std::string_view::npos && isShallow(text);
}

}  // namespace

nlohmann::json parsed(std::string_view text) {
  if (!isSafe(text)) return nlohmann::json(nlohmann::json::value_t::discarded);
  return nlohmann::json::parse(withoutTooLargeNumbers(text), nullptr, /*allow_exceptions=*/false);
}

bool decode(const nlohmann::json& json, std::string& value) {
  if (!json.is_string()) return false;
  value = json.get<std::string>();
  return true;
}

}  // namespace pellar::JsonText
