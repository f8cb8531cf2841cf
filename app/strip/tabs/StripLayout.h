#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "app/strip/tabs/StripAction.h"
#include "core/Geometry.h"
#include "platform/Canvas.h"

namespace pellar {

// What the strip's geometry depends on besides its bounds and the text widths.
struct StripContent {
  std::size_t tabCount = 0;
  bool searchExpanded = false;  // the user opened the search; suppresses its compact form
  bool officeTools = true;      // document tools and search are offered
  bool renameTool = true;
  bool autoSaveOn = false;
};

// One tool button. A tool drawn as a symbol has an empty text.
struct StripTool {
  StripAction action = StripAction::search;
  std::string_view text;
  double width = 0;  // points
  friend bool operator==(const StripTool&, const StripTool&) = default;
};

struct PlacedTool {
  StripTool tool;
  ViewRect rect;
  friend bool operator==(const PlacedTool&, const PlacedTool&) = default;
};

// What lies under a point; all absent on the empty strip.
struct StripHit {
  std::optional<std::size_t> tab;
  bool close = false;  // the point is on the tab's close mark
  std::optional<StripAction> action;
  friend bool operator==(const StripHit&, const StripHit&) = default;
};

// Where everything in a strip lies, for one moment: made from the current bounds, used, and thrown away.
// Points, view coordinates. A pure function of its arguments.
class StripLayout {
 public:
  static constexpr Font toolFont{12, FontWeight::regular};
  static constexpr double labelMinimumTabWidth = 64;  // narrower tabs show neither label nor close mark

  StripLayout(const ViewRect& bounds, const StripContent& content, const TextMeasure& measure);

  // Every tool the strip would show had it room enough, left to right.
  [[nodiscard]] std::span<const StripTool> baseTools() const { return {base_.data(), baseCount_}; }
  // Whether the text tools fold into the "more" tool.
  [[nodiscard]] bool crowded() const { return crowded_; }
  // Whether the search is a button instead of a field.
  [[nodiscard]] bool searchCompact() const { return searchCompact_; }
  // The tools shown, left to right.
  [[nodiscard]] std::span<const PlacedTool> tools() const { return {placed_.data(), placedCount_}; }
  // Absent when the tool is not shown.
  [[nodiscard]] std::optional<ViewRect> toolRect(StripAction action) const;

  [[nodiscard]] bool searchHidden() const { return !content_.officeTools || searchCompact_; }
  [[nodiscard]] ViewRect searchFrame() const;

  [[nodiscard]] std::size_t tabCount() const { return content_.tabCount; }
  // The common width of the tabs; 0 without tabs.
  [[nodiscard]] double tabWidth() const { return tabWidth_; }
  [[nodiscard]] ViewRect tabRect(std::size_t index) const;
  [[nodiscard]] std::vector<ViewRect> tabRects() const;
  // The tab moved so that its centre is at `centreX`.
  [[nodiscard]] ViewRect movedTabRect(std::size_t index, double centreX) const;
  // The square in which a tab's close mark stands.
  [[nodiscard]] static ViewRect closeSquare(const ViewRect& tab);
  // Where a click closes that tab; absent for a tab too narrow for that.
  [[nodiscard]] std::optional<ViewRect> closeRect(std::size_t index) const;

  // A tab wins over a tool under it.
  [[nodiscard]] StripHit hit(ViewPoint point) const;

  // Where a tab dragged to `x` would land: how many of the other tabs have their middle left of it.
  [[nodiscard]] std::size_t dropIndex(std::size_t dragged, double x) const;
  // The mark before the other tab at `dropIndex`, or after the last one.
  [[nodiscard]] ViewRect dropMarker(std::size_t dragged, std::size_t dropIndex) const;

  [[nodiscard]] const ViewRect& bounds() const { return bounds_; }

 private:
  static constexpr std::size_t maximumTools = 11;

  void collectBaseTools(const TextMeasure& measure);
  [[nodiscard]] bool computeSearchCompact() const;
  [[nodiscard]] bool computeCrowded() const;
  void placeTools();
  [[nodiscard]] double computeTabWidth() const;
  [[nodiscard]] double toolsLeft() const;

  ViewRect bounds_;
  StripContent content_;
  std::array<StripTool, maximumTools> base_;
  std::size_t baseCount_ = 0;
  std::array<PlacedTool, maximumTools> placed_;
  std::size_t placedCount_ = 0;
  bool crowded_ = false;
  bool searchCompact_ = false;
  double tabWidth_ = 0;
};

}  // namespace pellar
