#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

// The letters and digits of ASCII, whatever the locale says. Other bytes, parts of UTF-8 among them, are
// neither and stay as they are. Any thread.
namespace pellar::Ascii {

[[nodiscard]] constexpr bool isDigit(char each) {
  return each >= '0' && each <= '9';
}

[[nodiscard]] constexpr bool isLetter(char each) {
  return (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z');
}

[[nodiscard]] constexpr char lowered(char each) {
  return each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
}

[[nodiscard]] inline std::string lowered(std::string_view text) {
  std::string result(text);
  std::ranges::transform(result, result.begin(), [](char each) { return lowered(each); });
  return result;
}

// The value of a hexadecimal digit of either case; absent for anything else.
[[nodiscard]] constexpr std::optional<int> hexDigit(char each) {
  if (isDigit(each)) return each - '0';
  const char letter = lowered(each);
  if (letter >= 'a' && letter <= 'f') return letter - 'a' + 10;
  return std::nullopt;
}

// Whether the text begins with `start`, which is in lower case, in whatever case.
[[nodiscard]] constexpr bool startsWith(std::string_view text, std::string_view start) {
  return text.size() >= start.size() &&
         std::equal(start.begin(), start.end(), text.begin(),
                    [](char expected, char found) { return lowered(found) == expected; });
}

}  // namespace pellar::Ascii
