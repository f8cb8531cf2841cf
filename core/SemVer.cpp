#include "core/SemVer.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <system_error>
#include <vector>

namespace pellar::SemVer {

namespace {

std::int64_t number(std::string_view component) {
  // from_chars knows "-" but not "+".
  if (component.starts_with('+')) {
    component.remove_prefix(1);
    if (component.starts_with('-')) return 0;
  }
  std::int64_t value = 0;
  const char* const end = component.data() + component.size();
  const auto [stop, error] = std::from_chars(component.data(), end, value);
  return error == std::errc{} && stop == end ? value : 0;
}

std::vector<std::int64_t> numbers(std::string_view version) {
  std::vector<std::int64_t> result;
  while (!version.empty()) {
    const auto dot = version.find('.');
    const std::string_view component = version.substr(0, dot);
    if (!component.empty()) result.push_back(number(component));
    version.remove_prefix(dot == std::string_view::npos ? version.size() : dot + 1);
  }
  return result;
}

}  // namespace

bool isNewer(std::string_view candidate, std::string_view current) {
  std::vector<std::int64_t> left = numbers(candidate);
  std::vector<std::int64_t> right = numbers(current);
  const std::size_t count = std::max(left.size(), right.size());
  left.resize(count);
  right.resize(count);
  return left > right;
}

}  // namespace pellar::SemVer
