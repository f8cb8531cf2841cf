#pragma once

#include <QFont>
#include <QImage>
#include <QRawFont>
#include <QStringView>
#include <cstdint>
#include <unordered_map>

namespace pellar {

// The glyphs of the simple scripts (Latin letters, digits, punctuation) of one font, drawn once. A text of
// such characters needs no shaping: glyphs stand side by side, kerned.
class GlyphSheet {
 public:
  // Coverage of one glyph; its place is from a whole pixel on the baseline.
  struct Glyph {
    QImage coverage;  // Alpha8
    int left = 0;
    int top = 0;
  };

  explicit GlyphSheet(const QFont& font) : font_(QRawFont::fromFont(font)) {}

  // Whether every character is simple and in the font.
  [[nodiscard]] bool covers(QStringView text);
  // From a character's place to that of the next; `next` is 0 at the end.
  [[nodiscard]] double advance(char16_t character, char16_t next);
  // The glyph as it looks `quarter` quarters of a pixel right of a whole one.
  [[nodiscard]] const Glyph& glyph(char16_t character, unsigned quarter);

 private:
  [[nodiscard]] quint32 index(char16_t character);

  QRawFont font_;
  std::unordered_map<char16_t, quint32> indexes_;
  std::unordered_map<std::uint32_t, double> advances_;
  std::unordered_map<std::uint32_t, Glyph> glyphs_;
};

}  // namespace pellar
