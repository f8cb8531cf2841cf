#pragma once

#include <filesystem>
#include <vector>

#include "platform/Platform.h"

namespace pellar {

// The user's folders by the XDG base directory rules; the environment's relative values are ignored, as these
// ask. Makes the log file's folder where it is missing.
[[nodiscard]] UserFolders platformFolders();

// The user's folder of settings, by the same rules.
[[nodiscard]] std::filesystem::path configFolder();

// Where installed programs keep their data, the user's own folder first.
[[nodiscard]] std::vector<std::filesystem::path> dataFolders();

}  // namespace pellar
