#pragma once

#include "platform/Platform.h"

namespace pellar {

// The user's Application Support folder and log file. Makes the log's folder where it is missing.
[[nodiscard]] UserFolders macUserFolders();

}  // namespace pellar
