#include "platform/sim/user/StripReader.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "platform/sim/panel/SimSearchField.h"

namespace pellar {

namespace {

// How a tab is drawn: what the eye goes by.
constexpr double markerSide = 9;
constexpr double labelAfterMarker = 15;
constexpr double markerInset = 9;
constexpr double edgeAfterCloseMark = 17;
constexpr double tabGap = 4;
constexpr double narrowestTab = 26;
constexpr double toolPadding = 10;
constexpr std::string_view closeMarkText = "×";

bool close(double a, double b) {
  return std::abs(a - b) < 0.01;
}

bool isMarker(const DrawnItem& item) {
  return item.kind == DrawnItem::Kind::roundedRect && close(item.rect.width, markerSide) &&
         close(item.rect.height, markerSide) && close(item.radius, 2);
}

bool isActiveBackground(const DrawnItem& item) {
  return item.kind == DrawnItem::Kind::roundedRect && close(item.radius, 8) && close(item.color.alpha, 0.2);
}

bool isTagBar(const DrawnItem& item) {
  return item.kind == DrawnItem::Kind::roundedRect && close(item.radius, 1) && close(item.rect.height, 2);
}

bool isCloseMark(const DrawnItem& item) {
  return item.kind == DrawnItem::Kind::text && item.text == closeMarkText;
}

}  // namespace

StripReader::StripReader(const SimPanels& panels, const SimScreens& screens, SimPointer& pointer)
    : screens_(screens), pointer_(pointer) {
  const auto all = panels.all();
  const auto strip = std::find_if(
      all.begin(), all.end(), [](const auto* panel) { return panel->style().level == PanelLevel::floating; });
  if (strip != all.end()) panel_ = *strip;
}

SimPanel& StripReader::panel() const {
  if (panel_ == nullptr) throw std::runtime_error("there is no strip panel");
  return *panel_;
}

void StripReader::missing(const std::string& what) const {
  std::string message = "not to be seen on the strip: " + what + "; it shows:";
  for (const auto& text : texts()) message += " [" + text + "]";
  if (!visible()) message += " (the strip is hidden)";
  throw std::runtime_error(message);
}

std::vector<StripReader::DrawnTab> StripReader::drawnTabs() const {
  std::vector<DrawnTab> tabs;
  for (const auto& item : items()) {
    if (!isMarker(item)) continue;
    DrawnTab tab;
    tab.marker = item.rect;
    for (const auto& text : items()) {
      if (text.kind == DrawnItem::Kind::truncatedText &&
          close(text.rect.minX() - item.rect.minX(), labelAfterMarker)) {
        tab.label = text;
      }
    }
    if (tab.label) {
      for (const auto& mark : items()) {
        if (!isCloseMark(mark) || mark.rect.minX() < tab.label->rect.maxX() - 1) continue;
        if (!tab.closeMark || mark.rect.minX() < tab.closeMark->rect.minX()) tab.closeMark = mark;
      }
    }
    tabs.push_back(std::move(tab));
  }
  std::sort(tabs.begin(), tabs.end(),
            [](const auto& a, const auto& b) { return a.marker.minX() < b.marker.minX(); });
  const double pitch = tabs.size() > 1 ? tabs[1].marker.minX() - tabs[0].marker.minX() : 0;
  for (DrawnTab& tab : tabs) {
    if (tab.label && tab.closeMark) {
      tab.left = tab.marker.minX() - markerInset;
      tab.right = tab.closeMark->rect.minX() + edgeAfterCloseMark;
    } else {
      const double width = std::max(pitch - tabGap, narrowestTab);
      tab.left = tab.marker.midX() - width / 2;
      tab.right = tab.marker.midX() + width / 2;
    }
  }
  return tabs;
}

std::vector<std::string> StripReader::tabs() const {
  std::vector<std::string> labels;
  for (const auto& tab : drawnTabs()) labels.push_back(tab.label ? tab.label->text : std::string());
  return labels;
}

std::optional<int> StripReader::activeTabIndex() const {
  const auto background = std::find_if(items().begin(), items().end(), isActiveBackground);
  if (background == items().end()) return std::nullopt;
  const auto tabs = drawnTabs();
  for (std::size_t index = 0; index < tabs.size(); ++index) {
    if (background->rect.contains({tabs[index].marker.midX(), tabs[index].marker.midY()})) {
      return static_cast<int>(index);
    }
  }
  return std::nullopt;
}

std::optional<std::string> StripReader::activeTab() const {
  const auto index = activeTabIndex();
  if (!index) return std::nullopt;
  return tabs()[static_cast<std::size_t>(*index)];
}

std::optional<Color> StripReader::tagOf(int index) const {
  const DrawnTab tab = tabAt(index);
  for (const auto& item : items()) {
    if (isTagBar(item) && item.rect.minX() >= tab.left && item.rect.maxX() <= tab.right) return item.color;
  }
  return std::nullopt;
}

std::vector<std::string> StripReader::texts() const {
  std::vector<std::string> all;
  for (const auto& item : items()) {
    if (item.isText()) all.push_back(item.shown);
  }
  return all;
}

std::vector<DrawnItem> StripReader::drawnTools() const {
  std::vector<DrawnItem> tools;
  std::copy_if(items().begin(), items().end(), std::back_inserter(tools),
               [](const auto& item) { return item.kind == DrawnItem::Kind::centeredText; });
  std::sort(tools.begin(), tools.end(),
            [](const auto& a, const auto& b) { return a.rect.minX() < b.rect.minX(); });
  return tools;
}

std::vector<std::string> StripReader::tools() const {
  std::vector<std::string> names;
  for (const auto& tool : drawnTools()) names.push_back(tool.text);
  return names;
}

std::optional<Color> StripReader::toolColor(std::string_view text) const {
  for (const auto& tool : drawnTools()) {
    if (tool.text == text) return tool.color;
  }
  return std::nullopt;
}

bool StripReader::searchToolShown() const {
  return std::any_of(items().begin(), items().end(),
                     [](const auto& item) { return item.symbol.has_value(); });
}

const DrawnItem& StripReader::searchSymbol() const {
  const auto found =
      std::find_if(items().begin(), items().end(), [](const auto& item) { return item.symbol.has_value(); });
  if (found == items().end()) missing("the search tool");
  return *found;
}

SimSearchField* StripReader::searchField() const {
  for (auto* const field : panel().simHost().controls().fields) {
    if (!field->isHidden()) return field;
  }
  return nullptr;
}

StripReader::DrawnTab StripReader::tabAt(int index) const {
  const auto tabs = drawnTabs();
  if (!visible() || index < 0 || static_cast<std::size_t>(index) >= tabs.size()) {
    missing("tab number " + std::to_string(index));
  }
  return tabs[static_cast<std::size_t>(index)];
}

int StripReader::indexOf(std::string_view label) const {
  const auto labels = tabs();
  const auto found = std::find(labels.begin(), labels.end(), label);
  if (!visible() || found == labels.end()) missing("the tab \"" + std::string(label) + "\"");
  return static_cast<int>(found - labels.begin());
}

ScreenPoint StripReader::toScreen(ViewPoint point) const {
  return {frame().x + point.x, frame().maxY() - point.y};
}

ScreenPoint StripReader::tabPoint(int index) const {
  const DrawnTab tab = tabAt(index);
  return toScreen({tab.marker.midX(), tab.marker.midY()});
}

ScreenPoint StripReader::toolPoint(std::string_view text) const {
  for (const auto& tool : drawnTools()) {
    if (visible() && tool.text == text) return toScreen(tool.center());
  }
  missing("the tool \"" + std::string(text) + "\"");
}

ScreenPoint StripReader::emptyPoint() const {
  if (!visible()) missing("the strip");
  std::vector<std::pair<double, double>> taken;
  for (const auto& tab : drawnTabs()) taken.emplace_back(tab.left, tab.right);
  for (const auto& tool : drawnTools()) {
    taken.emplace_back(tool.rect.minX() - toolPadding, tool.rect.maxX() + toolPadding);
  }
  if (searchToolShown()) {
    const ViewRect symbol = searchSymbol().rect.grown(toolPadding);
    taken.emplace_back(symbol.minX(), symbol.maxX());
  }
  if (const auto* field = searchField()) taken.emplace_back(field->frame().minX(), field->frame().maxX());
  taken.emplace_back(frame().width, frame().width);
  std::sort(taken.begin(), taken.end());
  double free = 0;
  double widest = 0;
  double middle = 0;
  for (const auto& [from, to] : taken) {
    if (from - free > widest) {
      widest = from - free;
      middle = free + widest / 2;
    }
    free = std::max(free, to);
  }
  if (widest < 1) missing("an empty place");
  return toScreen({middle, frame().height / 2});
}

void StripReader::clickTab(int index) {
  pointer_.click(tabPoint(index));
}

void StripReader::closeTab(std::string_view label) {
  const DrawnTab tab = tabAt(indexOf(label));
  if (!tab.closeMark) missing("the close mark of \"" + std::string(label) + "\"");
  pointer_.click(toScreen(tab.closeMark->center()));
}

void StripReader::middleClickTab(std::string_view label) {
  pointer_.middleClick(tabPoint(label));
}

void StripReader::rightClickTab(std::string_view label) {
  pointer_.rightClick(tabPoint(label));
}

void StripReader::controlClickTab(std::string_view label) {
  pointer_.controlClick(tabPoint(label));
}

void StripReader::hoverTab(std::string_view label) {
  pointer_.moveTo(tabPoint(label));
}

void StripReader::clickTool(std::string_view text) {
  pointer_.click(toolPoint(text));
}

void StripReader::hoverTool(std::string_view text) {
  pointer_.moveTo(toolPoint(text));
}

void StripReader::clickSearchTool() {
  pointer_.click(toScreen(searchSymbol().center()));
}

void StripReader::clickSearchField() {
  const auto* const field = searchField();
  if (!visible() || field == nullptr) missing("the search field");
  pointer_.click(toScreen({field->frame().midX(), field->frame().midY()}));
}

void StripReader::dragEmptyStrip(double dx, double dy) {
  const ScreenPoint from = emptyPoint();
  pointer_.drag(from, {from.x + dx, from.y + dy});
}

void StripReader::doubleClickEmptyStrip() {
  pointer_.doubleClick(emptyPoint());
}

void StripReader::rightClickEmptyStrip() {
  pointer_.rightClick(emptyPoint());
}

TabDrag::TabDrag(StripReader& reader, int index) : reader_(reader), index_(index) {}

void TabDrag::to(int index) {
  const ScreenPoint from = reader_.tabPoint(index_);
  // The press may end a search, and the tabs get wider: the hand goes by what is seen then.
  reader_.pointer_.press(from);
  std::vector<double> middles;
  const auto tabs = reader_.drawnTabs();
  for (std::size_t other = 0; other < tabs.size(); ++other) {
    if (static_cast<int>(other) != index_) middles.push_back((tabs[other].left + tabs[other].right) / 2);
  }
  const auto place = static_cast<std::size_t>(std::clamp(index, 0, static_cast<int>(middles.size())));
  if (middles.empty()) reader_.missing("another tab to drag past");
  double x = 0;
  if (place == 0) {
    x = middles.front() - tabGap;
  } else if (place == middles.size()) {
    x = middles.back() + tabGap;
  } else {
    x = (middles[place - 1] + middles[place]) / 2;
  }
  reader_.pointer_.dragOn(from, {reader_.frame().x + x, from.y});
}

void TabDrag::by(double dx, double dy) {
  const ScreenPoint from = reader_.tabPoint(index_);
  reader_.pointer_.drag(from, {from.x + dx, from.y + dy});
}

}  // namespace pellar
