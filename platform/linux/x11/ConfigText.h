#pragma once

#include <string_view>

// Lines and lists of the configuration that desktops keep: resources, entries, variables.
namespace pellar::ConfigText {

// Without blanks, tabs and line ends around it.
[[nodiscard]] constexpr std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r\n";
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Calls `take` with every part, empty ones too.
template <class Take>
void split(std::string_view text, char separator, const Take& take) {
  while (true) {
    const auto end = text.find(separator);
    take(text.substr(0, end));
    if (end == std::string_view::npos) return;
    text.remove_prefix(end + 1);
  }
}

}  // namespace pellar::ConfigText
