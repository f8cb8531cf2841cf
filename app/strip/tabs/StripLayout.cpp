#include "app/strip/tabs/StripLayout.h"

#include <algorithm>

#include "app/strip/tabs/StripWords.h"

namespace pellar {
namespace {

constexpr double edgeMargin = 6;
constexpr double tabGap = 4;
constexpr double toolGap = 2;
constexpr double windowButtonsGap = 10;
constexpr double toolTextPadding = 16;
constexpr double toolsMargin = 8;
constexpr double searchWidth = 210;
constexpr double searchHeight = 22;
constexpr double searchMargin = 8;
constexpr double smallIconWidth = 26;
constexpr double windowButtonWidth = 30;
constexpr double minimumTabWidth = 26;
constexpr double maximumTabWidth = 180;
constexpr double closableTabWidth = 52;
constexpr double compactBelow = 120;
constexpr double crowdedBelow = 70;
constexpr double crowdedSearchRoom = 34;

constexpr std::array everyBaseTool = {StripAction::rename,   StripAction::autoSave, StripAction::saveAll,
                                      StripAction::closeAll, StripAction::groups,   StripAction::newDoc,
                                      StripAction::minimize, StripAction::zoom,     StripAction::closeWindow};

// The width of a tool with a fixed one; absent for a tool as wide as its text.
std::optional<double> iconWidth(StripAction action) {
  switch (action) {
    case StripAction::search:
    case StripAction::more:
      return smallIconWidth;
    case StripAction::minimize:
    case StripAction::zoom:
    case StripAction::closeWindow:
      return windowButtonWidth;
    case StripAction::rename:
    case StripAction::autoSave:
    case StripAction::saveAll:
    case StripAction::closeAll:
    case StripAction::groups:
    case StripAction::newDoc:
      break;
  }
  return std::nullopt;
}

bool isTextTool(StripAction action) {
  return !iconWidth(action);
}

std::string_view textOf(StripAction action, bool autoSaveOn) {
  switch (action) {
    case StripAction::search:
      break;
    case StripAction::more:
      return "⋯";
    case StripAction::autoSave:
      return autoSaveOn ? "● Auto-save" : "○ Auto-save";
    case StripAction::rename:
    case StripAction::saveAll:
    case StripAction::closeAll:
    case StripAction::groups:
      return StripWords::name(action);
    case StripAction::newDoc:
      return "+";
    case StripAction::minimize:
      return "–";
    case StripAction::zoom:
      return "□";
    case StripAction::closeWindow:
      return "✕";
  }
  return "";
}

bool isOffered(StripAction action, const StripContent& content) {
  switch (action) {
    case StripAction::rename:
      return content.officeTools && content.renameTool;
    case StripAction::autoSave:
    case StripAction::saveAll:
    case StripAction::newDoc:
      return content.officeTools;
    default:
      return true;
  }
}

StripTool makeTool(StripAction action, bool autoSaveOn, const TextMeasure& measure) {
  const std::string_view text = textOf(action, autoSaveOn);
  const std::optional<double> fixed = iconWidth(action);
  return {action, text, fixed ? *fixed : measure.width(text, StripLayout::toolFont) + toolTextPadding};
}

// The width left for each of `count` tabs that share `room` with the gaps between them.
double shareOf(double room, std::size_t count) {
  const auto tabs = static_cast<double>(count);
  return (room - tabGap * (tabs - 1)) / tabs;
}

}  // namespace

StripLayout::StripLayout(const ViewRect& bounds, const StripContent& content, const TextMeasure& measure)
    : bounds_(bounds), content_(content) {
  collectBaseTools(measure);
  searchCompact_ = computeSearchCompact();
  crowded_ = computeCrowded();
  placeTools();
  tabWidth_ = computeTabWidth();
}

void StripLayout::collectBaseTools(const TextMeasure& measure) {
  static_assert(everyBaseTool.size() + 2 <= maximumTools, "beside these: the search and the more tool");
  for (const StripAction action : everyBaseTool) {
    if (isOffered(action, content_)) base_[baseCount_++] = makeTool(action, content_.autoSaveOn, measure);
  }
}

bool StripLayout::computeSearchCompact() const {
  if (!content_.officeTools || content_.searchExpanded || content_.tabCount == 0) return false;
  double toolsRoom = edgeMargin;
  for (const StripTool& tool : baseTools()) toolsRoom += tool.width + toolGap;
  toolsRoom += toolsMargin;
  const double room = bounds_.width - 2 * edgeMargin - toolsRoom - searchWidth - searchMargin;
  return shareOf(room, content_.tabCount) < compactBelow;
}

bool StripLayout::computeCrowded() const {
  if (content_.tabCount == 0) return false;
  double toolsRoom = edgeMargin;
  for (const StripTool& tool : baseTools()) {
    if (!isTextTool(tool.action)) toolsRoom += tool.width + toolGap;
  }
  toolsRoom += toolsMargin + smallIconWidth + toolGap;
  const double searchRoom = content_.officeTools ? crowdedSearchRoom : 0;
  const double room = bounds_.width - 2 * edgeMargin - toolsRoom - searchRoom;
  return shareOf(room, content_.tabCount) < crowdedBelow;
}

void StripLayout::placeTools() {
  const auto show = [this](const StripTool& tool) { placed_[placedCount_++].tool = tool; };
  const auto showIcon = [&](StripAction action) {
    show({action, textOf(action, content_.autoSaveOn), smallIconWidth});
  };
  if (searchCompact_) showIcon(StripAction::search);
  if (crowded_) showIcon(StripAction::more);
  for (const StripTool& tool : baseTools()) {
    if (!crowded_ || !isTextTool(tool.action)) show(tool);
  }

  double cursor = bounds_.width - edgeMargin;
  for (std::size_t i = placedCount_; i-- > 0;) {
    PlacedTool& placed = placed_[i];
    placed.rect = {cursor - placed.tool.width, 4, placed.tool.width, bounds_.height - 8};
    const double gap = placed.tool.action == StripAction::minimize ? windowButtonsGap : toolGap;
    cursor -= placed.tool.width + gap;
  }
}

double StripLayout::computeTabWidth() const {
  if (content_.tabCount == 0) return 0;
  const double toolsRoom = bounds_.width - toolsLeft() + toolsMargin;
  const double searchRoom = searchHidden() ? 0 : searchWidth + searchMargin;
  const double room = bounds_.width - 2 * edgeMargin - toolsRoom - searchRoom;
  return std::clamp(shareOf(room, content_.tabCount), minimumTabWidth, maximumTabWidth);
}

double StripLayout::toolsLeft() const {
  // The window buttons are always there.
  return placed_.front().rect.minX();
}

std::optional<ViewRect> StripLayout::toolRect(StripAction action) const {
  for (const PlacedTool& placed : tools()) {
    if (placed.tool.action == action) return placed.rect;
  }
  return std::nullopt;
}

ViewRect StripLayout::searchFrame() const {
  return {toolsLeft() - searchMargin - searchWidth, 5, searchWidth, searchHeight};
}

ViewRect StripLayout::tabRect(std::size_t index) const {
  return {edgeMargin + static_cast<double>(index) * (tabWidth_ + tabGap), 3, tabWidth_, bounds_.height - 6};
}

std::vector<ViewRect> StripLayout::tabRects() const {
  std::vector<ViewRect> rects;
  rects.reserve(content_.tabCount);
  for (std::size_t i = 0; i < content_.tabCount; ++i) rects.push_back(tabRect(i));
  return rects;
}

ViewRect StripLayout::movedTabRect(std::size_t index, double centreX) const {
  ViewRect rect = tabRect(index);
  rect.x = centreX - rect.width / 2;
  return rect;
}

ViewRect StripLayout::closeSquare(const ViewRect& tab) {
  return {tab.maxX() - 20, tab.midY() - 7, 14, 14};
}

std::optional<ViewRect> StripLayout::closeRect(std::size_t index) const {
  const ViewRect tab = tabRect(index);
  if (tab.width < closableTabWidth) return std::nullopt;
  return closeSquare(tab).grown(3);
}

StripHit StripLayout::hit(ViewPoint point) const {
  for (std::size_t i = 0; i < content_.tabCount; ++i) {
    if (!tabRect(i).contains(point)) continue;
    const auto close = closeRect(i);
    return {i, close && close->contains(point), std::nullopt};
  }
  for (const PlacedTool& placed : tools()) {
    if (placed.rect.contains(point)) return {std::nullopt, false, placed.tool.action};
  }
  return {};
}

std::size_t StripLayout::dropIndex(std::size_t dragged, double x) const {
  std::size_t before = 0;
  for (std::size_t i = 0; i < content_.tabCount; ++i) {
    if (i != dragged && tabRect(i).midX() < x) ++before;
  }
  return before;
}

ViewRect StripLayout::dropMarker(std::size_t dragged, std::size_t dropIndex) const {
  const std::size_t others = content_.tabCount - 1;
  const auto tabOfOther = [dragged](std::size_t other) { return other < dragged ? other : other + 1; };
  const auto markAt = [this](double x) { return ViewRect{x - 1, 5, 2, bounds_.height - 10}; };
  // A lone tab can only land where it is.
  if (others == 0) return markAt(tabRect(0).minX() - 2);
  if (dropIndex < others) return markAt(tabRect(tabOfOther(dropIndex)).minX() - 2);
  return markAt(tabRect(tabOfOther(others - 1)).maxX() + 2);
}

}  // namespace pellar
