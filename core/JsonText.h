#pragma once

#include <string_view>

// JSON as it comes from files and servers, before a parser reads it.
namespace pellar::JsonText {

// Whether a parser may read the text: it has no zero byte, which parsers take for the end, and is not nested
// so deep that it costs more memory than its length.
bool isHarmless(std::string_view text);

}  // namespace pellar::JsonText
