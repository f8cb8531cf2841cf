#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pellar {

// The "file:" URL of an absolute path. A path is bytes, valid UTF-8 or not; what is not a plain character is
// percent-encoded.
[[nodiscard]] std::string fileUrlOf(std::string_view path);

// The POSIX path that a "file:" URL names, percent-decoded, without a trailing slash. Absent for text that is
// no URL, for other schemes and for URLs without an absolute path. A host is passed over: programs name their
// own.
[[nodiscard]] std::optional<std::string> pathOfFileUrl(std::string_view url);

// The bytes that a percent-encoded text means. Absent where a percent sign does not begin a byte, and for
// control characters, which stand in no such text; a byte of zero means nothing either.
[[nodiscard]] std::optional<std::string> percentDecoded(std::string_view text);

}  // namespace pellar
