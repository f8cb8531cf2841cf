#include "core/FileUrl.h"

#include "core/Ascii.h"

namespace pellar {
namespace {

bool takePrefix(std::string_view& text, std::string_view lowerCasePrefix) {
  if (!Ascii::startsWith(text, lowerCasePrefix)) return false;
  text.remove_prefix(lowerCasePrefix.size());
  return true;
}

bool isPlain(char byte) {
  return Ascii::isLetter(byte) || Ascii::isDigit(byte) ||
         std::string_view("/-._~").find(byte) != std::string_view::npos;
}

}  // namespace

std::string fileUrlOf(std::string_view path) {
  constexpr auto digits = std::string_view("0123456789ABCDEF");
  std::string url("file://");
  for (const char byte : path) {
    if (isPlain(byte)) {
      url += byte;
      continue;
    }
    const auto value = static_cast<unsigned char>(byte);
    url += '%';
    url += digits[value >> 4U];
    url += digits[value & 15U];
  }
  return url;
}

std::optional<std::string> percentDecoded(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < 0x20 || byte == 0x7f) return std::nullopt;
    if (byte != '%') {
      decoded += text[i];
      continue;
    }
    if (i + 2 >= text.size()) return std::nullopt;
    const auto high = Ascii::hexDigit(text[i + 1]);
    const auto low = Ascii::hexDigit(text[i + 2]);
    if (!high || !low || (*high == 0 && *low == 0)) return std::nullopt;
    decoded += static_cast<char>(*high * 16 + *low);
    i += 2;
  }
  return decoded;
}

std::optional<std::string> pathOfFileUrl(std::string_view url) {
  if (!takePrefix(url, "file:")) return std::nullopt;
  if (takePrefix(url, "//")) {
    const auto pathStart = url.find('/');
    if (pathStart == std::string_view::npos) return std::nullopt;
    url.remove_prefix(pathStart);
  }
  auto path = percentDecoded(url.substr(0, url.find_first_of("?#")));
  if (!path || path->empty() || path->front() != '/') return std::nullopt;
  while (path->size() > 1 && path->back() == '/') path->pop_back();
  return path;
}

}  // namespace pellar
