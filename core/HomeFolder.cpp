#include "core/HomeFolder.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace pellar {

std::filesystem::path homeFolder() {
  if (const char* home = std::getenv("HOME"); home != nullptr && home[0] == '/') return home;
  std::array<char, 16384> buffer{};
  passwd entry{};
  passwd* found = nullptr;
  if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0) return "/";
  return found != nullptr && entry.pw_dir != nullptr && entry.pw_dir[0] == '/' ? entry.pw_dir : "/";
}

}  // namespace pellar
