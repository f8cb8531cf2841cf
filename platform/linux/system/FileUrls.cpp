#include "platform/linux/system/FileUrls.h"

namespace pellar {
namespace {

using namespace std::string_view_literals;

constexpr auto scheme = "file://"sv;

bool isPlain(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
         "/-._~"sv.find(byte) != std::string_view::npos;
}

int digit(char byte) {
  if (byte >= '0' && byte <= '9') return byte - '0';
  if (byte >= 'a' && byte <= 'f') return byte - 'a' + 10;
  if (byte >= 'A' && byte <= 'F') return byte - 'A' + 10;
  return -1;
}

}  // namespace

std::string fileUrlOf(std::string_view path) {
  constexpr auto digits = "0123456789ABCDEF"sv;
  std::string url(scheme);
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

std::optional<std::string> pathOfUrl(std::string_view url) {
  if (!url.starts_with(scheme)) return std::nullopt;
  url.remove_prefix(scheme.size());
  if (constexpr auto local = "localhost"sv; url.starts_with(local)) url.remove_prefix(local.size());
  if (!url.starts_with('/')) return std::nullopt;
  std::string path;
  for (std::size_t at = 0; at < url.size(); ++at) {
    if (url[at] != '%') {
      path += url[at];
      continue;
    }
    const int high = at + 2 < url.size() ? digit(url[at + 1]) : -1;
    const int low = at + 2 < url.size() ? digit(url[at + 2]) : -1;
    if (high < 0 || low < 0 || (high == 0 && low == 0)) return std::nullopt;
    path += static_cast<char>(high * 16 + low);
    at += 2;
  }
  return path;
}

}  // namespace pellar
