#pragma once

#include <string>
#include <string_view>

namespace pellar {

// A folder's path with the home folder, where it begins with that, written as "~". `home` as below.
[[nodiscard]] std::string folderFromHome(std::string_view path, std::string_view home);

// A folder's path shortened for display: "~" for the home folder, "~/..." below it, else the last two
// components after "…/" where there are more than two. `home` is absolute and ends without a slash.
[[nodiscard]] std::string shortFolder(std::string_view path, std::string_view home);

}  // namespace pellar
