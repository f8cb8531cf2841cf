#pragma once

#include <filesystem>

#include "core/NameMap.h"
#include "platform/PropertyLists.h"

namespace pellar {

// The documents that the Office applications themselves remember in the home folder: POSIX paths and when
// each was last used, in seconds since 1970 (0 when that is not known). Reads the disk each time; what cannot
// be read counts as nothing remembered.
[[nodiscard]] NameMap<double> officeSeeds(PropertyLists& propertyLists, const std::filesystem::path& home);

}  // namespace pellar
