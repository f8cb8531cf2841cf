#pragma once

#include <string>
#include <string_view>

// The paths with colons that scripts speak of. A colon in a POSIX name is a slash there, and the other way
// round.
namespace pellar::HfsPath {

// "/Users/ann/Plan.docx" is "Macintosh HD:Users:ann:Plan.docx". Needs an absolute path.
[[nodiscard]] std::string fromPosix(std::string_view path);

// What `POSIX path of` gives for a text; one that is a POSIX path already stays.
[[nodiscard]] std::string toPosix(std::string_view path);

}  // namespace pellar::HfsPath
