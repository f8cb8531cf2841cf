#include "app/strip/tabs/StripDescription.h"

#include <algorithm>
#include <utility>

#include "app/strip/tabs/StripWords.h"
#include "app/strip/tabs/TagColors.h"

namespace pellar {
namespace {

std::string tabId(const TabItem& tab) {
  return "tab " + std::to_string(tab.id);
}

std::string closeId(const TabItem& tab) {
  return "close " + std::to_string(tab.id);
}

std::string toolId(StripAction action) {
  return "tool " + std::string(StripWords::name(action));
}

constexpr const char* searchFieldId = "search field";

// The colour, which not everybody sees.
std::string helpOf(const TabItem& tab) {
  const auto tag =
      std::ranges::find_if(allTagColors, [&](TagColor each) { return tab.tag == shownColor(each); });
  if (tag == allTagColors.end()) return {};
  return "Colour tag: " + std::string(shownName(*tag));
}

AccessibleElement describeTab(const StripLayout& layout, const TabItem& tab, std::size_t index) {
  AccessibleElement element{.id = tabId(tab),
                            .role = AccessibleRole::tab,
                            .name = tab.label,
                            .help = helpOf(tab),
                            .frame = layout.tabRect(index),
                            .selected = tab.active,
                            .canBePressed = true,
                            .hasMenu = true};
  if (const auto close = layout.closeRect(index)) {
    element.children.push_back({.id = closeId(tab),
                                .role = AccessibleRole::button,
                                .name = "Close",
                                .help = "Closes the window of this tab",
                                .frame = *close,
                                .canBePressed = true});
  }
  return element;
}

AccessibleElement describeTool(const PlacedTool& placed, bool autoSaveOn) {
  const StripAction action = placed.tool.action;
  AccessibleElement element{.id = toolId(action),
                            .role = AccessibleRole::button,
                            .name = std::string(StripWords::name(action)),
                            .help = std::string(StripWords::help(action)),
                            .frame = placed.rect,
                            .canBePressed = true};
  if (action == StripAction::autoSave) {
    element.role = AccessibleRole::checkBox;
    element.checked = autoSaveOn;
  }
  return element;
}

}  // namespace

AccessibleElement describeStrip(const StripLayout& layout, std::span<const TabItem> tabs, bool autoSaveOn) {
  AccessibleElement strip{.id = "strip", .name = "Tab strip", .frame = layout.bounds()};

  AccessibleElement group{.id = "tabs", .role = AccessibleRole::tabGroup, .name = "Tabs"};
  for (std::size_t i = 0; i < tabs.size(); ++i) group.children.push_back(describeTab(layout, tabs[i], i));
  if (!group.children.empty()) {
    group.frame = group.children.front().frame;
    group.frame.width = group.children.back().frame.maxX() - group.frame.minX();
  }
  strip.children.push_back(std::move(group));

  if (!layout.searchHidden()) {
    strip.children.push_back({.id = searchFieldId,
                              .role = AccessibleRole::searchField,
                              .name = std::string(StripWords::name(StripAction::search)),
                              .help = std::string(StripWords::help(StripAction::search)),
                              .frame = layout.searchFrame(),
                              .canBePressed = true});
  }
  for (const PlacedTool& placed : layout.tools()) strip.children.push_back(describeTool(placed, autoSaveOn));
  return strip;
}

std::optional<StripTarget> stripTarget(const std::string& id, const StripLayout& layout,
                                       std::span<const TabItem> tabs) {
  for (std::size_t i = 0; i < tabs.size(); ++i) {
    if (id == tabId(tabs[i])) return StripTarget{{i, false, std::nullopt}, layout.tabRect(i)};
    if (id != closeId(tabs[i])) continue;
    const auto close = layout.closeRect(i);
    if (!close) return std::nullopt;
    return StripTarget{{i, true, std::nullopt}, *close};
  }
  if (id == searchFieldId && !layout.searchHidden())
    return StripTarget{{std::nullopt, false, StripAction::search}, layout.searchFrame()};
  for (const PlacedTool& placed : layout.tools()) {
    if (id == toolId(placed.tool.action))
      return StripTarget{{std::nullopt, false, placed.tool.action}, placed.rect};
  }
  return std::nullopt;
}

}  // namespace pellar
