#include "core/JsonText.h"

#include <cstddef>

namespace pellar::JsonText {
namespace {

constexpr int deepestNesting = 512;

bool isShallow(std::string_view text) {
  int depth = 0;
  bool inString = false;
  for (std::size_t index = 0; index < text.size(); ++index) {
    const char byte = text[index];
    if (inString) {
      if (byte == '\\') ++index;
      if (byte == '"') inString = false;
    } else if (byte == '"') {
      inString = true;
    } else if (byte == '[' || byte == '{') {
      if (++depth > deepestNesting) return false;
    } else if (byte == ']' || byte == '}') {
      --depth;
    }
  }
  return true;
}

}  // namespace

bool isHarmless(std::string_view text) {
  return text.find('\0') == std::string_view::npos && isShallow(text);
}

}  // namespace pellar::JsonText
