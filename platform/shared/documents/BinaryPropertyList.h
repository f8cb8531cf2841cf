#pragma once

#include <string_view>

namespace pellar::BinaryPropertyList {

// Whether the text is a binary property list whose values form a finite tree of modest depth and size. In
// that format a value is named by its number, any number of times: a few bytes can stand for a value inside
// itself, for one nested a million deep, or for more copies than there is memory.
[[nodiscard]] bool isSafeToParse(std::string_view text, int deepest);

}  // namespace pellar::BinaryPropertyList
