#pragma once

#include <string_view>

namespace pellar {

// The end-user agreement that the program carries. ASCII, paragraphs apart by a blank line.
[[nodiscard]] std::string_view agreementText();

}  // namespace pellar
