#pragma once

#include <QString>
#include <cstddef>
#include <string_view>

namespace pellar {

// Text of another program in the form that is drawn.
struct DrawnText {
  QString text;
  bool cut = false;  // the rest of the text was left out
};

// UTF-8 as one drawable line of at most `maximumCharacters` characters: each bad byte is U+FFFD, each control
// character and line break a blank. Reads no more of `utf8` than it keeps.
DrawnText drawnText(std::string_view utf8, std::size_t maximumCharacters);

}  // namespace pellar
