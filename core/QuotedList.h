#pragma once

#include <span>
#include <string>

namespace pellar {

// The texts as ["A", "B"]. Quotes, backslashes, control characters, line breaks and bytes that are not UTF-8
// are escaped, so that the result is one line of valid UTF-8 whatever the texts hold.
[[nodiscard]] std::string quotedList(std::span<const std::string> texts);

}  // namespace pellar
