#pragma once

#include "platform/Canvas.h"
#include "platform/linux/TextImages.h"

class QPainter;

namespace pellar {

// Draws with a painter whose clip is set and whose origin is the view's.
class QtCanvas final : public Canvas {
 public:
  QtCanvas(QPainter& painter, TextImages& texts, const QtTextMeasure& measure)
      : painter_(painter), texts_(texts), measure_(measure) {}

  void fillRoundedRect(const ViewRect& rect, double radius, const Color& color) override;
  void drawText(std::string_view text, ViewPoint origin, const Font& font, const Color& color) override;
  void drawTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                         const Color& color) override;
  void drawCenteredText(std::string_view text, const ViewRect& rect, const Font& font,
                        const Color& color) override;
  void drawSymbol(Symbol symbol, const ViewRect& rect, const Color& color) override;

 private:
  // Draws with the line box's top left corner at `origin`. The baseline stands on a whole pixel, or it would
  // blur.
  void place(const TextImage& image, ViewPoint origin, const Font& font);

  QPainter& painter_;
  TextImages& texts_;
  const QtTextMeasure& measure_;
};

}  // namespace pellar
