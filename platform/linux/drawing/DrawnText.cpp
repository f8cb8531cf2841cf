#include "platform/linux/drawing/DrawnText.h"

#include <algorithm>

#include "core/Utf8.h"

namespace pellar {
namespace {

bool breaksOrControls(char32_t character) {
  return character < 0x20 || (character >= 0x7f && character < 0xa0) || character == 0x2028 ||
         character == 0x2029;
}

char32_t decoded(std::string_view character) {
  const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(character[index]); };
  switch (character.size()) {
    case 1:
      return byte(0);
    case 2:
      return (byte(0) & 0x1fU) << 6 | (byte(1) & 0x3fU);
    case 3:
      return (byte(0) & 0x0fU) << 12 | (byte(1) & 0x3fU) << 6 | (byte(2) & 0x3fU);
    default:
      return (byte(0) & 0x07U) << 18 | (byte(1) & 0x3fU) << 12 | (byte(2) & 0x3fU) << 6 | (byte(3) & 0x3fU);
  }
}

}  // namespace

DrawnText drawnText(std::string_view utf8, std::size_t maximumCharacters) {
  DrawnText result;
  result.text.reserve(static_cast<qsizetype>(std::min(utf8.size(), maximumCharacters)));
  for (std::size_t count = 0; !utf8.empty(); ++count) {
    if (count == maximumCharacters) {
      result.cut = true;
      break;
    }
    const std::size_t length = Utf8::validPrefix(utf8);
    char32_t character = length == 0 ? U'\ufffd' : decoded(utf8.substr(0, length));
    if (breaksOrControls(character)) character = U' ';
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
