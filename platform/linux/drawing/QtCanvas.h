#pragma once

#include <QImage>
#include <QRect>
#include <QRectF>
#include <functional>

#include "platform/Canvas.h"
#include "platform/linux/drawing/QtTextMeasure.h"
#include "platform/linux/drawing/Sprite.h"
#include "platform/linux/drawing/SpriteCache.h"

class QPainter;

namespace pellar {

// Draws into a part of a picture whose top left corner is the view's, with `scale` pixels to a point.
// Everything drawn is a sprite that the toolkit paints when it is first needed, at the size that is seen.
class QtCanvas final : public Canvas {
 public:
  QtCanvas(QImage& picture, const QRect& clip, double scale, const QtTextMeasure& measure,
           SpriteCache& sprites, bool increasesContrast = false)
      : picture_(picture),
        clip_(clip),
        scale_(scale),
        measure_(measure),
        sprites_(sprites),
        increasesContrast_(increasesContrast) {}

  // Of a line of text, in points.
  [[nodiscard]] double lineHeight(const Font& font) const;

  void fillRoundedRect(const ViewRect& rect, double radius, const Color& color) override;
  void drawText(std::string_view text, ViewPoint origin, const Font& font, const Color& color) override;
  void drawTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                         const Color& color) override;
  void drawMiddleTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                               const Color& color) override;
  void drawWrappedText(std::string_view text, const ViewRect& rect, int lines, const Font& font,
                       const Color& color) override;
  void drawCenteredText(std::string_view text, const ViewRect& rect, const Font& font,
                        const Color& color) override;
  void drawSymbol(Symbol symbol, const ViewRect& rect, const Color& color) override;
  [[nodiscard]] bool increasesContrast() const override { return increasesContrast_; }

 private:
  // From here on in pixels, which is what sprites and faces know.
  [[nodiscard]] Font inPixels(const Font& font) const { return {font.size * scale_, font.weight}; }
  [[nodiscard]] ViewRect inPixels(const ViewRect& rect) const;
  // Draws the sprite of a shape in `rect`, which `paint` paints when it is not kept; `key` without the place.
  void drawShape(SpriteKey& key, const ViewRect& rect,
                 const std::function<void(QPainter& painter, const QRectF& inside)>& paint);
  // Draws a text with its line box's top left corner at `origin`. The baseline stands on a whole pixel, or it
  // would blur.
  void place(const Sprite& text, ViewPoint origin, const Font& font);
  void drawLine(std::string_view text, ViewPoint origin, const Font& font, const Color& color);
  void drawTruncatedLine(std::string_view text, const ViewRect& rect, const Font& font, const Color& color);

  QImage& picture_;
  QRect clip_;
  double scale_;
  const QtTextMeasure& measure_;
  SpriteCache& sprites_;
  bool increasesContrast_;
};

}  // namespace pellar
