#include "platform/linux/x11/DesktopTheme.h"

#include <cstdint>

#include "core/Ascii.h"

namespace pellar {
namespace {

// Reads numbers and texts one after another; nothing more once it came to the end.
class Settings {
 public:
  explicit Settings(std::span<const std::byte> bytes) : bytes_(bytes) {
    bigEndian_ = !bytes.empty() && bytes[0] == std::byte{1};
    skip(4);
  }

  [[nodiscard]] bool isOver() const { return over_; }
  std::uint32_t number(std::size_t size) {
    const auto part = take(size);
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < part.size(); ++i) {
      const std::byte byte = part[bigEndian_ ? i : part.size() - 1 - i];
      value = (value << 8U) | std::to_integer<std::uint32_t>(byte);
    }
    return value;
  }
  // With the blanks behind it.
  std::string_view text(std::size_t length) {
    const auto part = take(length);
    skip((4 - length % 4) % 4);
    return {reinterpret_cast<const char*>(part.data()), part.size()};
  }
  void skip(std::size_t size) { static_cast<void>(take(size)); }

 private:
  std::span<const std::byte> take(std::size_t size) {
    over_ = over_ || size > bytes_.size();
    if (over_) return {};
    const auto part = bytes_.first(size);
    bytes_ = bytes_.subspan(size);
    return part;
  }

  std::span<const std::byte> bytes_;
  bool bigEndian_ = false;
  bool over_ = false;
};

}  // namespace

std::optional<std::string> themeIn(std::span<const std::byte> settings) {
  enum Kind : std::uint32_t { integer = 0, text = 1, color = 2 };
  Settings rest(settings);
  rest.skip(4);  // a serial number
  for (std::uint32_t left = rest.number(4); left > 0 && !rest.isOver(); --left) {
    const std::uint32_t kind = rest.number(1);
    rest.skip(1);
    const std::string_view name = rest.text(rest.number(2));
    rest.skip(4);  // another serial number
    if (kind == integer) {
      rest.skip(4);
    } else if (kind == color) {
      rest.skip(8);
    } else if (kind == text) {
      const std::string_view value = rest.text(rest.number(4));
      if (name == "Net/ThemeName" && !rest.isOver()) return std::string(value);
    } else {
      return std::nullopt;
    }
  }
  return std::nullopt;
}

bool increasesContrast(std::string_view theme) {
  std::string plain;
  for (const char each : theme)
    if (Ascii::isLetter(each)) plain += Ascii::lowered(each);
  return plain.find("highcontrast") != std::string::npos || plain.find("contrasthigh") != std::string::npos;
}

}  // namespace pellar
