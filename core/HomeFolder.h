#pragma once

#include <filesystem>

namespace pellar {

// The user's home folder: what HOME names where that is an absolute path, else the account's, else the root.
// Any thread.
[[nodiscard]] std::filesystem::path homeFolder();

}  // namespace pellar
