#include "platform/linux/system/PlatformFolders.h"

#include <cstdlib>
#include <string_view>

#include "core/FileOperations.h"
#include "core/HomeFolder.h"
#include "platform/linux/x11/ConfigText.h"

namespace pellar {
namespace {

namespace fs = std::filesystem;

fs::path folder(const char* variable, const fs::path& otherwise) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value == '/' ? fs::path(value) : otherwise;
}

fs::path ownDataFolder() {
  return folder("XDG_DATA_HOME", homeFolder() / ".local/share");
}

}  // namespace

UserFolders platformFolders() {
  UserFolders folders;
  folders.home = homeFolder();
  folders.applicationSupport = ownDataFolder();
  folders.logFile = folder("XDG_STATE_HOME", folders.home / ".local/state") / "Pellar/Pellar.log";
  // Without the folder there is no log, which is no reason not to run.
  static_cast<void>(systemFileOperations().createFolders(folders.logFile.parent_path()));
  return folders;
}

fs::path configFolder() {
  return folder("XDG_CONFIG_HOME", homeFolder() / ".config");
}

std::vector<fs::path> dataFolders() {
  std::vector<fs::path> folders{ownDataFolder()};
  const char* value = std::getenv("XDG_DATA_DIRS");
  const bool isSet = value != nullptr && *value != '\0';
  ConfigText::split(isSet ? value : "/usr/local/share:/usr/share", ':', [&folders](std::string_view each) {
    if (each.starts_with('/')) folders.emplace_back(each);
  });
  return folders;
}

}  // namespace pellar
