#include "platform/linux/drawing/FittedText.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>
#include <cstddef>

#include "platform/linux/drawing/DrawnText.h"

namespace pellar::FittedText {
namespace {

constexpr std::size_t longestCharacter = 4;  // bytes

// Even narrow glyphs are a pixel wide, give or take a few that have no width.
std::size_t mostCharacters(double width) {
  return static_cast<std::size_t>(std::clamp(width, 0.0, 4096.0)) + 32;
}

std::string_view tail(std::string_view utf8, std::size_t bytes) {
  utf8.remove_prefix(utf8.size() - std::min(utf8.size(), bytes));
  while (!utf8.empty() && (static_cast<unsigned char>(utf8.front()) & 0xc0U) == 0x80) utf8.remove_prefix(1);
  return utf8;
}

}  // namespace

QString elidedInMiddle(std::string_view utf8, double width, const QtFace& face) {
  const std::size_t most = mostCharacters(width);
  QString text;
  if (utf8.size() <= 2 * longestCharacter * most) {
    text = drawnText(utf8, utf8.size()).text;
  } else {
    // What is between these cannot be seen.
    text = drawnText(utf8, most).text;
    text += drawnText(tail(utf8, longestCharacter * most), longestCharacter * most).text;
  }
  return QFontMetricsF(face.native).elidedText(text, Qt::ElideMiddle, std::max(width, 0.0));
}

std::vector<QString> wrapped(std::string_view utf8, double width, int lines, const QtFace& face) {
  const auto wanted = static_cast<std::size_t>(std::max(lines, 1));
  const QString text = drawnText(utf8, mostCharacters(width) * wanted).text;
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  QTextLayout layout(text, face.native);
  layout.setTextOption(option);

  std::vector<QString> result;
  int start = 0;
  layout.beginLayout();
  while (result.size() + 1 < wanted) {
    QTextLine line = layout.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(width);
    const int end = line.textStart() + line.textLength();
    if (end >= text.size()) break;
    result.push_back(text.mid(start, end - start).trimmed());
    start = end;
  }
  layout.endLayout();
  result.push_back(text.mid(start));
  return result;
}

}  // namespace pellar::FittedText
