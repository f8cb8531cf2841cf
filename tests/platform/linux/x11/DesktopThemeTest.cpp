#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "platform/linux/x11/DesktopTheme.h"

namespace pellar {
namespace {

// A desktop's settings as its service publishes them.
class Settings {
 public:
  explicit Settings(bool bigEndian = false) : bigEndian_(bigEndian) {}

  Settings& text(const std::string& name, const std::string& value) {
    head(1, name);
    number(static_cast<std::uint32_t>(value.size()), 4);
    padded(value);
    return *this;
  }
  Settings& integer(const std::string& name) {
    head(0, name);
    number(7, 4);
    return *this;
  }
  Settings& color(const std::string& name) {
    head(2, name);
    number(7, 4);
    number(7, 4);
    return *this;
  }
  [[nodiscard]] std::vector<std::byte> bytes() const {
    Settings whole(bigEndian_);
    whole.number(bigEndian_ ? 0x01000000 : 0, 4);
    whole.number(1, 4);
    whole.number(count_, 4);
    whole.bytes_.insert(whole.bytes_.end(), bytes_.begin(), bytes_.end());
    return whole.bytes_;
  }

 private:
  void head(std::uint32_t kind, const std::string& name) {
    ++count_;
    number(kind, 1);
    number(0, 1);
    number(static_cast<std::uint32_t>(name.size()), 2);
    padded(name);
    number(1, 4);
  }
  void number(std::uint32_t value, unsigned size) {
    for (unsigned i = 0; i < size; ++i) {
      const unsigned shift = 8 * (bigEndian_ ? size - 1 - i : i);
      bytes_.push_back(static_cast<std::byte>((value >> shift) & 0xffU));
    }
  }
  void padded(const std::string& text) {
    for (const char each : text) bytes_.push_back(static_cast<std::byte>(each));
    while (bytes_.size() % 4 != 0) bytes_.push_back(std::byte{0});
  }

  bool bigEndian_;
  std::uint32_t count_ = 0;
  std::vector<std::byte> bytes_;
};

TEST(DesktopTheme, IsFoundAmongSettingsOfEveryKind) {
  for (const bool bigEndian : {false, true}) {
    const auto settings = Settings(bigEndian)
                              .integer("Xft/DPI")
                              .color("Gtk/Accent")
                              .text("Net/IconThemeName", "Adwaita")
                              .text("Net/ThemeName", "HighContrastInverse")
                              .bytes();
    EXPECT_EQ(themeIn(settings), "HighContrastInverse");
  }
}

TEST(DesktopTheme, IsAbsentWhereNoneIsNamed) {
  EXPECT_EQ(themeIn(Settings().text("Net/IconThemeName", "HighContrast").bytes()), std::nullopt);
  EXPECT_EQ(themeIn({}), std::nullopt);
}

TEST(DesktopTheme, SettingsThatEndTooEarlyNameNone) {
  const auto whole = Settings().integer("Xft/DPI").text("Net/ThemeName", "HighContrast").bytes();
  for (std::size_t size = 0; size < whole.size(); ++size)
    EXPECT_EQ(themeIn(std::span(whole).first(size)), std::nullopt) << size;
}

TEST(DesktopTheme, AnyBytesAreRead) {
  std::mt19937 random(7);
  for (int i = 0; i < 2000; ++i) {
    auto bytes = Settings().text("Net/ThemeName", "Adwaita").integer("Net/X").bytes();
    for (int change = 0; change < 4; ++change)
      bytes[random() % bytes.size()] = static_cast<std::byte>(random() & 0xffU);
    static_cast<void>(themeIn(bytes));
  }
}

TEST(DesktopTheme, IsOfHighContrastByItsName) {
  for (const char* const name : {"HighContrast", "HighContrastInverse", "High-Contrast", "ContrastHigh",
                                 "ContrastHighInverse", "Yaru-HighContrast"})
    EXPECT_TRUE(increasesContrast(name)) << name;
  for (const char* const name : {"Adwaita", "Contrast", "", "Highlight"})
    EXPECT_FALSE(increasesContrast(name)) << name;
}

}  // namespace
}  // namespace pellar
