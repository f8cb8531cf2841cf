#pragma once

#include <QColor>
#include <QImage>
#include <cstddef>
#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/Canvas.h"
#include "platform/linux/QtTextMeasure.h"

namespace pellar {

// One drawn line of text on a transparent ground.
struct TextImage {
  QImage pixels;
  int left = 0;      // pixels that stand left of the text's origin
  int baseline = 0;  // pixels above the baseline
  double width = 0;  // of the text
};

// Draws lines of text and keeps the pictures of the last ones: shaping a text that has been out of use for a
// while is what a repaint costs. Bounded by the memory of the pictures.
class TextImages {
 public:
  explicit TextImages(const QtTextMeasure& measure) : measure_(measure) {}

  // The picture of a line, truncated with an ellipsis to `maximumWidth` when given. Good until the next call.
  const TextImage& image(std::string_view text, const Font& font, const Color& color,
                         std::optional<double> maximumWidth);

 private:
  struct Entry {
    std::string key;
    TextImage image;
  };

  void makeRoom(std::size_t bytes);

  const QtTextMeasure& measure_;
  std::list<Entry> entries_;  // last used first
  std::unordered_map<std::string_view, std::list<Entry>::iterator> byKey_;
  std::size_t bytes_ = 0;
  std::string key_;
};

}  // namespace pellar
