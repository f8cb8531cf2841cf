#include "platform/sim/drawing/SimTextMeasure.h"

#include <algorithm>
#include <cmath>

#include "core/Utf8.h"

namespace pellar {

namespace {

constexpr double widthPerSize = 0.55;
constexpr std::string_view ellipsis = "\u2026";
constexpr std::string_view replacement = "\uFFFD";

// How many code points fit into a width.
double fitting(double width, const Font& font) {
  return std::floor(width / (widthPerSize * font.size) + 1e-9);
}

}  // namespace

std::size_t SimTextMeasure::codePoints(std::string_view text) {
  std::size_t count = 0;
  while (!text.empty()) {
    text.remove_prefix(std::max<std::size_t>(Utf8::validPrefix(text), 1));
    ++count;
  }
  return count;
}

std::string SimTextMeasure::prefix(std::string_view text, std::size_t count) {
  std::string result;
  for (; count > 0 && !text.empty(); --count) {
    const std::size_t length = Utf8::validPrefix(text);
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
  const double most = fitting(width, font);
  if (static_cast<double>(count) <= most) return prefix(text, count);
  if (most < 1) return {};
  return prefix(text, static_cast<std::size_t>(most) - 1) + std::string(ellipsis);
}

std::string SimTextMeasure::truncatedInMiddle(std::string_view text, double width, const Font& font) const {
  const std::size_t count = codePoints(text);
  const double most = fitting(width, font);
  if (static_cast<double>(count) <= most) return prefix(text, count);
  if (most < 1) return {};
  const std::size_t kept = static_cast<std::size_t>(most) - 1;
  const std::string whole = prefix(text, count);
  const std::string beforeTail = prefix(whole, count - kept / 2);
  return prefix(whole, kept - kept / 2) + std::string(ellipsis) + whole.substr(beforeTail.size());
}

std::vector<std::string> SimTextMeasure::wrapped(std::string_view text, double width, int lines,
                                                 const Font& font) const {
  std::vector<std::string> result;
  std::string rest = prefix(text, codePoints(text));
  while (static_cast<int>(result.size()) + 1 < lines &&
         static_cast<double>(codePoints(rest)) > fitting(width, font)) {
    std::string line = prefix(rest, static_cast<std::size_t>(std::max(fitting(width, font), 1.0)));
    // A blank that does not fit any more ends the line as well.
    const std::size_t blank = rest.rfind(' ', line.size());
    if (blank != std::string::npos && blank > 0) line.resize(blank);
    rest.erase(0, line.size());
    rest.erase(0, std::min(rest.find_first_not_of(' '), rest.size()));
    line.erase(line.find_last_not_of(' ') + 1);
    result.push_back(std::move(line));
  }
  result.push_back(truncated(rest, width, font));
  return result;
}

}  // namespace pellar
