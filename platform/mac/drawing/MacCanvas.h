#pragma once

#include "platform/Canvas.h"

namespace pellar {

// Draws into the current graphics context, which is that of a flipped view. Lives for one draw call.
class MacCanvas final : public Canvas {
 public:
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
  [[nodiscard]] bool increasesContrast() const override;
};

}  // namespace pellar
