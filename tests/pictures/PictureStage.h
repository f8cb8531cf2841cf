#pragma once

#include <QImage>
#include <memory>
#include <string>
#include <vector>

#include "platform/View.h"
#include "platform/linux/drawing/QtTextMeasure.h"
#include "platform/linux/drawing/SpriteCache.h"
#include "tests/pictures/Likeness.h"

namespace pellar {

// Text as wide as 0.55 times the font size for each character, whatever fonts there are: with it everything
// has the same place on every machine.
class SteadyMeasure final : public TextMeasure {
 public:
  [[nodiscard]] double width(std::string_view text, const Font& font) const override;
};

// What a panel of the X11 edition shows.
struct PanelPicture {
  QImage image;
  std::vector<TextPlace> texts;
};

enum class PanelBackgroundKind { glass, none };

class PictureField;
class PictureList;

// A view's host that takes pictures of it as the X11 edition draws them.
class PictureStage final : public ViewHost {
 public:
  // The size in points.
  PictureStage(Size size, PanelBackgroundKind ground) : size_(size), ground_(ground) {}

  void resize(Size size) { size_ = size; }
  // How many pixels a point has in pictures taken from now on; 1 at first.
  void setScale(double scale) { scale_ = scale; }
  void setIncreasesContrast(bool increases) { increasesContrast_ = increases; }
  [[nodiscard]] PanelPicture pictureOf(View& view);

  [[nodiscard]] ViewRect bounds() const override { return {0, 0, size_.width, size_.height}; }
  void setNeedsLayout() override {}
  void setNeedsDisplay() override {}
  void setNeedsDisplay(const ViewRect&) override {}
  void accessibleElementChanged() override {}
  [[nodiscard]] std::optional<ScreenRect> toScreen(const ViewRect& rect) const override {
    return ScreenRect{rect.x, -rect.maxY(), rect.width, rect.height};
  }
  [[nodiscard]] ViewPoint fromScreen(ScreenPoint point) const override { return {point.x, -point.y}; }
  [[nodiscard]] const TextMeasure& textMeasure() const override { return measure_; }
  [[nodiscard]] std::unique_ptr<SearchField> makeSearchField() override;
  [[nodiscard]] std::unique_ptr<ListView> makeListView(const ListStyle& style) override;

  // For fields and lists.
  std::vector<PictureField*> fields;
  std::vector<PictureList*> lists;

 private:
  Size size_;
  double scale_ = 1;
  bool increasesContrast_ = false;
  PanelBackgroundKind ground_;
  SteadyMeasure measure_;
  QtTextMeasure fonts_;
  SpriteCache sprites_;
};

}  // namespace pellar
