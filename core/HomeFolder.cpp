#include "core/HomeFolder.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace pellar {
namespace {

// A slash at the end would make another path of it to those who look for it at the start of paths.
std::filesystem::path withoutSlashAtEnd(const char* folder) {
  const auto path = std::filesystem::path(folder).lexically_normal();
  return path.has_filename() ? path : path.parent_path();
}

}  // namespace

std::filesystem::path homeFolder() {
  if (const char* home = std::getenv("HOME"); home != nullptr && home[0] == '/')
    return withoutSlashAtEnd(home);
  std::array<char, 16384> buffer{};
  passwd entry{};
  passwd* found = nullptr;
  if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0) return "/";
  return found != nullptr && entry.pw_dir != nullptr && entry.pw_dir[0] == '/'
             ? withoutSlashAtEnd(entry.pw_dir)
             : "/";
}

}  // namespace pellar
