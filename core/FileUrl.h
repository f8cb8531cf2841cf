#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pellar {

// The POSIX path that a "file:" URL names, percent-decoded, without a trailing slash. Absent for text that is
// no URL, for other schemes and for URLs without an absolute path.
[[nodiscard]] std::optional<std::string> pathOfFileUrl(std::string_view url);

}  // namespace pellar
