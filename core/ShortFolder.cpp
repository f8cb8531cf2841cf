#include "core/ShortFolder.h"

#include <vector>

namespace pellar {
namespace {

std::vector<std::string_view> components(std::string_view path) {
  std::vector<std::string_view> found;
  while (!path.empty()) {
    const auto slash = path.find('/');
    const auto name = path.substr(0, slash);
    if (!name.empty()) found.push_back(name);
    path.remove_prefix(slash == std::string_view::npos ? path.size() : slash + 1);
  }
  return found;
}

bool isWithin(std::string_view path, std::string_view home) {
  return !home.empty() && path.starts_with(home) && (path.size() == home.size() || path[home.size()] == '/');
}

}  // namespace

std::string folderFromHome(std::string_view path, std::string_view home) {
  return isWithin(path, home) ? "~" + std::string(path.substr(home.size())) : std::string(path);
}

std::string shortFolder(std::string_view path, std::string_view home) {
  if (isWithin(path, home)) return folderFromHome(path, home);
  const auto names = components(path);
  if (names.size() < 3) return std::string(path);
  return "…/" + std::string(names[names.size() - 2]) + "/" + std::string(names.back());
}

}  // namespace pellar
