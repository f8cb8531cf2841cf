#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pellar {

// The "file:" URL of an absolute path. A path is bytes, valid UTF-8 or not; what is not a plain character is
// percent-encoded.
[[nodiscard]] std::string fileUrlOf(std::string_view path);

// The path of a "file:" URL of this machine; absent for everything else.
[[nodiscard]] std::optional<std::string> pathOfUrl(std::string_view url);

}  // namespace pellar
