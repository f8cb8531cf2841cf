#pragma once

#include <vector>

#include "platform/sim/drawing/Drawing.h"
#include "platform/sim/drawing/SimTextMeasure.h"

namespace pellar {

// A canvas that lists what is drawn on it.
class RecordingCanvas final : public Canvas {
 public:
  // `bounds`: the view's; what lies outside is not on the screen and is left out.
  explicit RecordingCanvas(const ViewRect& bounds, bool increasesContrast = false)
      : bounds_(bounds), increasesContrast_(increasesContrast) {}

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

  [[nodiscard]] const std::vector<DrawnItem>& items() const { return items_; }

 private:
  void add(DrawnItem item);
  void addText(DrawnItem::Kind kind, std::string_view text, std::string shown, const ViewRect& rect,
               const Font& font, const Color& color);
  // Of one line that is not truncated.
  [[nodiscard]] Size sizeOf(std::string_view text, const Font& font) const;

  ViewRect bounds_;
  bool increasesContrast_;
  SimTextMeasure measure_;
  std::vector<DrawnItem> items_;
};

}  // namespace pellar
