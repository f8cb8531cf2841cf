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

}  // namespace

std::string shortFolder(std::string_view path, std::string_view home) {
  if (!home.empty() && path.starts_with(home)) {
    const auto rest = path.substr(home.size());
    if (rest.empty() || rest.starts_with('/')) return "~" + std::string(rest);
  }
  const auto names = components(path);
  if (names.size() < 3) return std::string(path);
  return "…/" + std::string(names[names.size() - 2]) + "/" + std::string(names.back());
}

}  // namespace pellar
