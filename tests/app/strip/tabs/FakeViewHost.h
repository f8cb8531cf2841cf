#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/View.h"

namespace pellar {

// Every character is half as wide as the font is high.
class FixedPitchMeasure final : public TextMeasure {
 public:
  std::string wide = "no such text";  // what contains it is 6 points wider

  [[nodiscard]] double width(std::string_view text, const Font& font) const override {
    double characters = 0;
    for (const char byte : text) {
      if ((static_cast<unsigned char>(byte) & 0xC0U) != 0x80U) ++characters;
    }
    return characters * font.size / 2 + (text.find(wide) == std::string_view::npos ? 0 : 6);
  }
};

// A search field without a screen; counts how often it is moved, shown or hidden.
class FakeSearchField final : public SearchField {
 public:
  std::string typed;
  std::string placeholder;
  ViewRect place;
  bool hidden = false;
  int frameWrites = 0;
  int hiddenWrites = 0;

  [[nodiscard]] std::string text() const override { return typed; }
  void setText(const std::string& text) override { typed = text; }
  void setPlaceholder(const std::string& text) override { placeholder = text; }
  void setFrame(const ViewRect& frame) override {
    place = frame;
    ++frameWrites;
  }
  [[nodiscard]] ViewRect frame() const override { return place; }
  void setHidden(bool isHiddenNow) override {
    hidden = isHiddenNow;
    ++hiddenWrites;
  }
  [[nodiscard]] bool isHidden() const override { return hidden; }
  void focus() override {}
  void setOnActivate(std::function<void()>) override {}
  void setOnChange(std::function<void()>) override {}
  void setOnCommand(CommandHandler) override {}
};

// A host whose window stands with its bottom left corner at (100, 500) on the screen. Writes down what is
// asked of it.
class FakeViewHost final : public ViewHost {
 public:
  explicit FakeViewHost(Size extent) : size(extent) {}

  Size size;
  bool inWindow = true;
  int layoutRequests = 0;
  int fullRedraws = 0;
  int elementChanges = 0;
  std::vector<ViewRect> redrawn;
  FixedPitchMeasure measure;
  FakeSearchField* searchField = nullptr;

  void forgetRequests() {
    layoutRequests = 0;
    fullRedraws = 0;
    elementChanges = 0;
    redrawn.clear();
  }
  [[nodiscard]] ScreenPoint onScreen(ViewPoint point) const {
    return {100 + point.x, 500 + size.height - point.y};
  }

  [[nodiscard]] ViewRect bounds() const override { return {0, 0, size.width, size.height}; }
  void setNeedsLayout() override { ++layoutRequests; }
  void setNeedsDisplay() override { ++fullRedraws; }
  void setNeedsDisplay(const ViewRect& rect) override { redrawn.push_back(rect); }
  void accessibleElementChanged() override { ++elementChanges; }
  [[nodiscard]] std::optional<ScreenRect> toScreen(const ViewRect& rect) const override {
    if (!inWindow) return std::nullopt;
    return ScreenRect::of(onScreen({rect.minX(), rect.maxY()}), rect.size());
  }
  [[nodiscard]] ViewPoint fromScreen(ScreenPoint point) const override {
    return {point.x - 100, 500 + size.height - point.y};
  }
  [[nodiscard]] const TextMeasure& textMeasure() const override { return measure; }
  [[nodiscard]] std::unique_ptr<SearchField> makeSearchField() override {
    auto field = std::make_unique<FakeSearchField>();
    searchField = field.get();
    return field;
  }
  [[nodiscard]] std::unique_ptr<ListView> makeListView(const ListStyle&) override { return nullptr; }
};

}  // namespace pellar
