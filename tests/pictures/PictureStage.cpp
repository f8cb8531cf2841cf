#include "tests/pictures/PictureStage.h"

#include <algorithm>
#include <cmath>

#include "platform/linux/drawing/PanelBackground.h"
#include "platform/linux/drawing/QtCanvas.h"
#include "tests/pictures/PictureControls.h"

namespace pellar {
namespace {

QRect pixels(const ViewRect& rect, double scale) {
  const int left = static_cast<int>(std::floor(rect.minX() * scale));
  const int top = static_cast<int>(std::floor(rect.minY() * scale));
  return {left, top, static_cast<int>(std::ceil(rect.maxX() * scale)) - left,
          static_cast<int>(std::ceil(rect.maxY() * scale)) - top};
}

std::ptrdiff_t characters(std::string_view text) {
  return std::ranges::count_if(text,
                               [](char byte) { return (static_cast<unsigned char>(byte) & 0xc0U) != 0x80; });
}

// Draws, and notes where texts may stand.
class TextNotingCanvas final : public Canvas {
 public:
  TextNotingCanvas(Canvas& target, double scale, const TextMeasure& measure, std::vector<TextPlace>& texts)
      : target_(target), scale_(scale), measure_(measure), texts_(texts) {}

  void fillRoundedRect(const ViewRect& rect, double radius, const Color& color) override {
    target_.fillRoundedRect(rect, radius, color);
  }
  void drawText(std::string_view text, ViewPoint origin, const Font& font, const Color& color) override {
    note({origin.x, origin.y, measure_.width(text, font), lineHeight(font)}, 3, isSign(text));
    target_.drawText(text, origin, font, color);
  }
  void drawTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                         const Color& color) override {
    note(rect);
    target_.drawTruncatedText(text, rect, font, color);
  }
  void drawMiddleTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                               const Color& color) override {
    note(rect);
    target_.drawMiddleTruncatedText(text, rect, font, color);
  }
  void drawWrappedText(std::string_view text, const ViewRect& rect, int lines, const Font& font,
                       const Color& color) override {
    note(rect);
    target_.drawWrappedText(text, rect, lines, font, color);
  }
  void drawCenteredText(std::string_view text, const ViewRect& rect, const Font& font,
                        const Color& color) override {
    // A font may be a good deal wider than the measure says, on both sides: all of that is judged, or what of
    // a wide sign happens to stand in the middle would count for the whole.
    const Size size{measure_.width(text, font) + 2 * widerFont, lineHeight(font)};
    note(ViewRect::of({rect.midX() - size.width / 2, rect.midY() - size.height / 2}, size), 0, isSign(text));
    target_.drawCenteredText(text, rect, font, color);
  }
  void drawSymbol(Symbol symbol, const ViewRect& rect, const Color& color) override {
    target_.drawSymbol(symbol, rect, color);
  }
  [[nodiscard]] bool increasesContrast() const override { return target_.increasesContrast(); }

 private:
  static constexpr double widerFont = 8;

  static double lineHeight(const Font& font) { return 1.4 * font.size; }
  static bool isSign(std::string_view text) { return characters(text) == 1; }
  void note(const ViewRect& rect, int reach = 3, bool sign = false) {
    const auto scaled = [this](int points) { return static_cast<int>(std::lround(points * scale_)); };
    texts_.push_back({pixels(rect, scale_), scaled(reach), scaled(3), sign});
  }

  Canvas& target_;
  double scale_;
  const TextMeasure& measure_;
  std::vector<TextPlace>& texts_;
};

}  // namespace

double SteadyMeasure::width(std::string_view text, const Font& font) const {
  return 0.55 * font.size * static_cast<double>(characters(text));
}

PanelPicture PictureStage::pictureOf(View& view) {
  PanelPicture picture;
  const QRect whole = pixels(bounds(), scale_);
  picture.image = QImage(whole.size(), QImage::Format_ARGB32_Premultiplied);
  picture.image.fill(Qt::transparent);
  if (ground_ == PanelBackgroundKind::glass) PanelBackground::drawUnder(picture.image, whole, true);

  view.layout();
  QtCanvas qt(picture.image, whole, scale_, fonts_, sprites_, increasesContrast_);
  TextNotingCanvas canvas(qt, scale_, measure_, picture.texts);
  view.draw(canvas, bounds());
  for (const PictureField* field : fields) field->draw(canvas);
  for (const PictureList* list : lists) {
    QtCanvas qtInList(picture.image, whole.intersected(pixels(list->frame(), scale_)), scale_, fonts_,
                      sprites_, increasesContrast_);
    TextNotingCanvas inList(qtInList, scale_, measure_, picture.texts);
    list->draw(inList);
  }
  if (ground_ == PanelBackgroundKind::glass) PanelBackground::drawOver(picture.image, whole, scale_, true);
  return picture;
}

std::unique_ptr<SearchField> PictureStage::makeSearchField() {
  return std::make_unique<PictureField>(*this);
}

std::unique_ptr<ListView> PictureStage::makeListView(const ListStyle& style) {
  return std::make_unique<PictureList>(*this, style);
}

}  // namespace pellar
