#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Texts of other programs, cut down before a text system lays them out: it does so with all that it is given,
// and their authors set no limit. UTF-8, perhaps not valid; a byte that is part of no character counts as
// one.
namespace pellar::CutText {

// A text of more than `most` code points is cut where a character that the reader sees as one ends, a letter
// with its accents or a family of four, unless that has no end within sight: a letter may have any number of
// marks. An ellipsis stands for what is gone; apart from it at most `most` code points are left.
[[nodiscard]] std::string atTheEnd(std::string_view text, std::size_t most);
// The same with as much of its beginning as of its end left.
[[nodiscard]] std::string inTheMiddle(std::string_view text, std::size_t most);

}  // namespace pellar::CutText
