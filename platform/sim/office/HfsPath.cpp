#include "platform/sim/office/HfsPath.h"

#include <algorithm>

namespace pellar::HfsPath {

namespace {

constexpr std::string_view startUpDisk = "Macintosh HD";

std::string exchanged(std::string_view path) {
  std::string result(path);
  std::transform(result.begin(), result.end(), result.begin(), [](char letter) {
    return letter == '/' ? ':' : letter == ':' ? '/' : letter;
  });
  return result;
}

}  // namespace

std::string fromPosix(std::string_view path) {
  return std::string(startUpDisk) + exchanged(path);
}

std::string toPosix(std::string_view path) {
  if (path.starts_with('/')) return std::string(path);
  const auto colon = path.find(':');
  if (colon == std::string_view::npos) return "/" + exchanged(path);
  const std::string_view disk = path.substr(0, colon);
  const std::string rest = exchanged(path.substr(colon));
  return disk == startUpDisk ? rest : "/Volumes/" + exchanged(disk) + rest;
}

}  // namespace pellar::HfsPath
