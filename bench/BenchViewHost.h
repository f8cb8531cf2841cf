#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/strip/tabs/TabItem.h"
#include "platform/View.h"

namespace pellar {

// A search field that costs nothing.
class BenchSearchField final : public SearchField {
 public:
  [[nodiscard]] std::string text() const override { return {}; }
  void setText(const std::string&) override {}
  void setPlaceholder(const std::string&) override {}
  void setFrame(const ViewRect& frame) override { frame_ = frame; }
  [[nodiscard]] ViewRect frame() const override { return frame_; }
  void setHidden(bool hidden) override { hidden_ = hidden; }
  [[nodiscard]] bool isHidden() const override { return hidden_; }
  void focus() override {}
  void setOnActivate(std::function<void()>) override {}
  void setOnChange(std::function<void()>) override {}
  void setOnCommand(CommandHandler) override {}

 private:
  ViewRect frame_;
  bool hidden_ = false;
};

// A host that only writes down what the view wants redrawn.
class BenchViewHost final : public ViewHost {
 public:
  BenchViewHost(Size size, const TextMeasure& measure) : size_(size), measure_(measure) {}

  // What the view asked for since the last call; the whole view counts as one rectangle.
  [[nodiscard]] std::vector<ViewRect> takeDirty() { return std::exchange(dirty_, {}); }

  [[nodiscard]] ViewRect bounds() const override { return {0, 0, size_.width, size_.height}; }
  void setNeedsLayout() override {}
  void setNeedsDisplay() override { dirty_.assign(1, bounds()); }
  void setNeedsDisplay(const ViewRect& rect) override { dirty_.push_back(rect); }
  void accessibleElementChanged() override {}
  [[nodiscard]] std::optional<ScreenRect> toScreen(const ViewRect& rect) const override {
    return ScreenRect::of({rect.minX(), size_.height - rect.maxY()}, rect.size());
  }
  [[nodiscard]] ViewPoint fromScreen(ScreenPoint point) const override {
    return {point.x, size_.height - point.y};
  }
  [[nodiscard]] const TextMeasure& textMeasure() const override { return measure_; }
  [[nodiscard]] std::unique_ptr<SearchField> makeSearchField() override {
    return std::make_unique<BenchSearchField>();
  }
  [[nodiscard]] std::unique_ptr<ListView> makeListView(const ListStyle&) override { return nullptr; }

 private:
  Size size_;
  const TextMeasure& measure_;
  std::vector<ViewRect> dirty_;
};

// `count` tabs as windows would give them, the first active.
inline std::vector<TabItem> benchTabs(std::size_t count) {
  std::vector<TabItem> tabs;
  for (std::size_t i = 0; i < count; ++i) {
    tabs.push_back({static_cast<WindowId>(i + 1), "Document " + std::to_string(i), std::nullopt, i == 0});
  }
  return tabs;
}

}  // namespace pellar
