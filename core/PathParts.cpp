#include "core/PathParts.h"

#include <algorithm>
#include <array>

#include "core/Ascii.h"

namespace pellar {
namespace {

// Whether the UTF-8 text has a space or one of the invisible marks that turn the direction of writing, which
// would make an extension read as another one.
bool hasSpaceOrDirection(std::string_view text) {
  using namespace std::string_view_literals;
  constexpr std::array marks{" "sv,      "\u061C"sv, "\u200E"sv, "\u200F"sv, "\u202A"sv,
                             "\u202B"sv, "\u202C"sv, "\u202D"sv, "\u202E"sv, "\u2066"sv,
                             "\u2067"sv, "\u2068"sv, "\u2069"sv};
  return std::ranges::any_of(
      marks, [&](std::string_view mark) { return text.find(mark) != std::string_view::npos; });
}

}  // namespace

std::string_view lastComponent(std::string_view path) {
  const auto end = path.find_last_not_of('/');
  if (end == std::string_view::npos) return path.substr(0, 1);
  path = path.substr(0, end + 1);
  const auto slash = path.rfind('/');
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view withoutLastComponent(std::string_view path) {
  const auto nameEnd = path.find_last_not_of('/');
  if (nameEnd == std::string_view::npos) return path.substr(0, 1);
  const auto slash = path.rfind('/', nameEnd);
  if (slash == std::string_view::npos) return {};
  const auto folderEnd = path.find_last_not_of('/', slash);
  return folderEnd == std::string_view::npos ? path.substr(0, 1) : path.substr(0, folderEnd + 1);
}

std::string_view pathExtension(std::string_view path) {
  const std::string_view name = lastComponent(path);
  const auto dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0 || name.starts_with("..")) return {};
  const auto extension = name.substr(dot + 1);
  return hasSpaceOrDirection(extension) ? std::string_view() : extension;
}

std::string lowerPathExtension(std::string_view path) {
  return Ascii::lowered(pathExtension(path));
}

bool isUsablePath(std::string_view path) {
  return path.find('\0') == std::string_view::npos;
}

}  // namespace pellar
