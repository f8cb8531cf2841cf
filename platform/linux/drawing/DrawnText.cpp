#include "platform/linux/drawing/DrawnText.h"

#include <algorithm>

#include "core/Utf8.h"

namespace pellar {

DrawnText drawnText(std::string_view utf8, std::size_t maximumCharacters) {
  DrawnText result;
  result.text.reserve(static_cast<qsizetype>(std::min(utf8.size(), maximumCharacters)));
  for (std::size_t count = 0; !utf8.empty(); ++count) {
    if (count == maximumCharacters) {
      result.cut = true;
      break;
    }
    const std::size_t length = Utf8::validPrefix(utf8);
    char32_t character = length == 0 ? U'\ufffd' : Utf8::codePoint(utf8.substr(0, length));
    if (Utf8::isControlOrLineBreak(character)) character = U' ';
    if (QChar::requiresSurrogates(character)) {
      result.text.append(QChar(QChar::highSurrogate(character)));
      result.text.append(QChar(QChar::lowSurrogate(character)));
    } else {
      result.text.append(QChar(static_cast<char16_t>(character)));
    }
    utf8.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return result;
}

}  // namespace pellar
