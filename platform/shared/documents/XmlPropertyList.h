#pragma once

#include <cstddef>
#include <string_view>

namespace pellar::XmlPropertyList {

// Whether the text, an XML property list in an encoding that keeps ASCII, opens at most that many arrays and
// dictionaries, closed or not: their number bounds how deep a parser that recurses can go.
[[nodiscard]] bool isSafeToParse(std::string_view text, std::size_t mostContainers);

}  // namespace pellar::XmlPropertyList
