#include "platform/linux/system/PlatformFolders.h"

#include <cstdlib>
#include <string_view>

#include "core/FileOperations.h"
#include "core/HomeFolder.h"

namespace pellar {
namespace {

namespace fs = std::filesystem;

fs::path folder(const char* variable, const fs::path& otherwise) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value == '/' ? fs::path(value) : otherwise;
}

}  // namespace

UserFolders platformFolders() {
  UserFolders folders;
  folders.home = homeFolder();
  folders.applicationSupport = folder("XDG_DATA_HOME", folders.home / ".local/share");
  folders.logFile = folder("XDG_STATE_HOME", folders.home / ".local/state") / "Pellar/Pellar.log";
  // Without the folder there is no log, which is no reason not to run.
  static_cast<void>(systemFileOperations().createFolders(folders.logFile.parent_path()));
  return folders;
}

fs::path configFolder() {
  return folder("XDG_CONFIG_HOME", homeFolder() / ".config");
}

std::vector<fs::path> dataFolders() {
  std::vector<fs::path> folders{folder("XDG_DATA_HOME", homeFolder() / ".local/share")};
  const char* value = std::getenv("XDG_DATA_DIRS");
  std::string_view rest = value != nullptr && *value != '\0' ? value : "/usr/local/share:/usr/share";
  while (!rest.empty()) {
    const auto end = rest.find(':');
    const std::string_view each = rest.substr(0, end);
    if (each.starts_with('/')) folders.emplace_back(each);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  }
  return folders;
}

}  // namespace pellar
