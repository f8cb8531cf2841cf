#include "core/QuotedList.h"

#include <array>
#include <cstdio>
#include <string_view>

#include "core/Utf8.h"

namespace pellar {
namespace {

void appendFormatted(std::string& out, const char* format, unsigned value) {
  std::array<char, 16> buffer{};
  std::snprintf(buffer.data(), buffer.size(), format, value);
  out += buffer.data();
}

void appendQuoted(std::string& out, std::string_view text) {
  out += '"';
  while (!text.empty()) {
    const std::size_t length = Utf8::validPrefix(text);
    if (length == 0) {
      appendFormatted(out, "\\x%02X", static_cast<unsigned char>(text.front()));
      text.remove_prefix(1);
      continue;
    }
    const char32_t character = Utf8::codePoint(text.substr(0, length));
    switch (character) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        if (Utf8::isControlOrLineBreak(character))
          appendFormatted(out, "\\u{%X}", character);
        else
          out += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  out += '"';
}

}  // namespace

std::string quotedList(std::span<const std::string> texts) {
  std::string out = "[";
  for (const auto& text : texts) {
    if (out.size() > 1) out += ", ";
    appendQuoted(out, text);
  }
  out += ']';
  return out;
}

}  // namespace pellar
