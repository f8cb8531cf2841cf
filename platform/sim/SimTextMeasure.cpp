#include "platform/sim/SimTextMeasure.h"

#include <algorithm>
#include <cmath>

namespace pellar {

namespace {

constexpr double widthPerSize = 0.55;
constexpr std::string_view ellipsis = "\u2026";
constexpr std::string_view replacement = "\uFFFD";

bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

// Bytes of the well-formed code point at the start of `text`; 0 when there is none.
std::size_t codePointLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  std::size_t length = 0;
  if (lead < 0x80) {
    length = 1;
  } else if (lead >= 0xC2 && lead < 0xE0) {
    length = 2;
  } else if (lead >= 0xE0 && lead < 0xF0) {
    length = 3;
  } else if (lead >= 0xF0 && lead < 0xF5) {
    length = 4;
  }
  if (length == 0 || length > text.size()) return 0;
  const auto tail = text.substr(1, length - 1);
  return std::all_of(tail.begin(), tail.end(), isContinuation) ? length : 0;
}

}  // namespace

std::size_t SimTextMeasure::codePoints(std::string_view text) {
  std::size_t count = 0;
  while (!text.empty()) {
    text.remove_prefix(std::max<std::size_t>(codePointLength(text), 1));
    ++count;
  }
  return count;
}

std::string SimTextMeasure::prefix(std::string_view text, std::size_t count) {
  std::string result;
  for (; count > 0 && !text.empty(); --count) {
    const std::size_t length = codePointLength(text);
    result += length == 0 ? replacement : text.substr(0, length);
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return result;
}

double SimTextMeasure::width(std::string_view text, const Font& font) const {
  return widthPerSize * font.size * static_cast<double>(codePoints(text));
}

std::string SimTextMeasure::truncated(std::string_view text, double width, const Font& font) const {
  const std::size_t count = codePoints(text);
  const double fitting = std::floor(width / (widthPerSize * font.size) + 1e-9);
  if (static_cast<double>(count) <= fitting) return prefix(text, count);
  if (fitting < 1) return {};
  return prefix(text, static_cast<std::size_t>(fitting) - 1) + std::string(ellipsis);
}

}  // namespace pellar
