#pragma once

#include <QImage>
#include <QRect>
#include <string>
#include <vector>

namespace pellar {

// A place where a text stands, and how far it may reach out of it.
struct TextPlace {
  QRect rect;
  int reachX = 3;
  int reachY = 3;
  bool isSign = false;  // a single character that is a drawing, which no two fonts make alike
};

// Why a picture is not like another one; empty when it is. Where no text can reach, every pixel counts. Of
// texts it is judged what stays the same whatever the font: how much ink there is, of what colour, and
// roughly where.
[[nodiscard]] std::string difference(const QImage& picture, const QImage& reference,
                                     const std::vector<TextPlace>& texts);

}  // namespace pellar
