#pragma once

#include <memory>
#include <utility>

#include "platform/View.h"
#include "platform/mac/drawing/MacTextMeasure.h"

@class HostedView;

namespace pellar {

class ListFocus;

// What a `HostedView` gives the view in it.
class MacViewHost final : public ViewHost {
 public:
  MacViewHost(HostedView* native, std::shared_ptr<ListFocus> listFocus)
      : native_(native), listFocus_(std::move(listFocus)) {}

  [[nodiscard]] HostedView* native() const { return native_; }

  [[nodiscard]] ViewRect bounds() const override;
  void setNeedsLayout() override;
  void setNeedsDisplay() override;
  void setNeedsDisplay(const ViewRect& rect) override;
  void accessibleElementChanged() override;
  [[nodiscard]] std::optional<ScreenRect> toScreen(const ViewRect& rect) const override;
  [[nodiscard]] ViewPoint fromScreen(ScreenPoint point) const override;
  [[nodiscard]] const TextMeasure& textMeasure() const override { return textMeasure_; }
  [[nodiscard]] std::unique_ptr<SearchField> makeSearchField() override;
  [[nodiscard]] std::unique_ptr<ListView> makeListView(const ListStyle& style) override;

 private:
  HostedView* native_;
  std::shared_ptr<ListFocus> listFocus_;
  MacTextMeasure textMeasure_;
};

}  // namespace pellar
