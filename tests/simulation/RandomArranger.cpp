#include "tests/simulation/RandomArranger.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/simulation/PanelSizes.h"

namespace pellar {
namespace {

constexpr std::string_view zoomTool = "\u25A1";

// Where in the picker a tile is chosen, in view coordinates.
struct Cell {
  std::string_view tile;
  ViewPoint point;
};
constexpr std::array cells{Cell{"Tile left half", {30, 40}},        Cell{"Tile right half", {90, 40}},
                           Cell{"Left third", {148, 40}},           Cell{"Middle third", {180, 40}},
                           Cell{"Right third", {212, 40}},          Cell{"Top left quarter", {276, 27}},
                           Cell{"Top right quarter", {324, 27}},    Cell{"Bottom left quarter", {276, 57}},
                           Cell{"Bottom right quarter", {324, 57}}, Cell{"Tile top half", {60, 101}},
                           Cell{"Tile bottom half", {60, 131}},     Cell{"Fill screen", {180, 116}}};

}  // namespace

bool RandomArranger::reaches(ScreenPoint point) {
  return mac().panels().at(point) == &strip().panel();
}

std::optional<ScreenPoint> RandomArranger::emptyPart() {
  // The press that ends a search gives the room to the tabs.
  if (!strip().visible() || mac().eventMonitors().watched()) return std::nullopt;
  // Where a single tab without a label ends cannot be seen.
  const auto labels = strip().tabs();
  if (labels.size() == 1 && labels.front().empty()) return std::nullopt;
  const ScreenPoint point = strip().emptyPoint();
  return reaches(point) ? std::optional(point) : std::nullopt;
}

std::optional<ScreenPoint> RandomArranger::toolPart() {
  if (!strip().visible()) return std::nullopt;
  const auto tools = strip().tools();
  if (std::ranges::find(tools, zoomTool) == tools.end()) return std::nullopt;
  const ScreenPoint point = strip().toolPoint(zoomTool);
  return reaches(point) ? std::optional(point) : std::nullopt;
}

std::optional<std::size_t> RandomArranger::anyTab() {
  const std::size_t count = judge().tabs().size();
  if (count == 0 || !strip().visible() || strip().tabs().size() != count) return std::nullopt;
  const std::size_t tab = below(count);
  const ScreenPoint point = strip().tabPoint(static_cast<int>(tab));
  return reaches(point) ? std::optional(tab) : std::nullopt;
}

void RandomArranger::arrange() {
  switch (below(5)) {
    case 0:
      zoomsBack_ = chance(2);
      return zoom();
    case 1:
      return tile();
    case 2:
      return pickTile();
    default:
      return dragGroup();
  }
}

bool RandomArranger::zoomBack() {
  if (!std::exchange(zoomsBack_, false)) return false;
  judge().happened();
  zoom();
  return true;
}

void RandomArranger::zoom() {
  const bool twice = chance(2);
  const auto point = twice ? emptyPart() : toolPart();
  if (!point) return;
  const auto front = judge().front();
  if (!front) judge().frames().becomeUnsure();
  const AxRect before = front ? front->frame() : AxRect();
  told("zooms " + (front ? front->title() : "the window in front"));
  twice ? mac().pointer().doubleClick(*point) : mac().pointer().click(*point);
  mac().settle();
  if (front) judge().frames().zoomed(*front, before);
}

void RandomArranger::tile() {
  const auto tab = anyTab();
  if (!tab) return;
  const SimWindow window = judge().tabs()[*tab];
  const AxRect before = window.frame();
  told("tiles " + window.title());
  std::optional<std::string> chosen;
  menuPlan_ = [&](SimOpenMenu& menu) {
    const auto rows = menu.rows();
    if (std::ranges::find(rows, "Layout \u25B8") == rows.end()) return;
    auto tiles = menu.rows({"Layout"});
    chosen = any(tiles);
    menu.choose({"Layout", *chosen});
  };
  mac().pointer().rightClick(strip().tabPoint(static_cast<int>(*tab)));
  menuPlan_ = nullptr;
  mac().settle();
  if (!chosen) return;
  told("chooses " + *chosen);
  judge().frontAnswers() ? judge().frames().tiled(window, before, *chosen) : judge().frames().becomeUnsure();
}

void RandomArranger::pickTile() {
  const auto tool = toolPart();
  if (!tool) return;
  const auto front = judge().front();
  if (!front) judge().frames().becomeUnsure();
  const AxRect before = front ? front->frame() : AxRect();
  const Cell& cell = cells[below(cells.size())];
  told("picks " + std::string(cell.tile) + " for " + (front ? front->title() : "the window in front"));
  mac().pointer().moveTo(*tool);
  const auto all = mac().panels().all();
  const auto picker = std::ranges::find_if(
      all, [](const auto* each) { return each->isVisible() && each->style().contentSize == pickerSize; });
  if (picker == all.end()) return;
  const ScreenRect at = (*picker)->frame();
  const ScreenPoint point{at.x + cell.point.x, at.maxY() - cell.point.y};
  if (mac().panels().at(point) != *picker) return;
  mac().pointer().click(point);
  mac().settle();
  if (front) judge().frames().tiled(*front, before, std::string(cell.tile));
}

// All windows that stand as the front one does go along.
void RandomArranger::dragGroup() {
  const auto from = emptyPart();
  if (!from) return;
  told("drags the strip");
  judge().log().userDragged();
  judge().draggedSomewhere();
  const ScreenPoint offset{static_cast<double>(below(200)) - 100, 100 - static_cast<double>(below(300))};
  const auto front = judge().front();
  std::vector<std::pair<SimWindow, AxRect>> tabbed;
  if (front) tabbed.emplace_back(*front, front->frame());
  for (const auto& each : judge().tabs())
    if (!front || each != *front) tabbed.emplace_back(each, each.frame());
  const bool isKnown = front && tabbed.size() == judge().tabs().size();
  if (!isKnown) judge().frames().becomeUnsure();
  mac().pointer().drag(*from, {from->x + offset.x, from->y + offset.y});
  mac().settle();
  if (isKnown) judge().frames().dragged(tabbed, offset);
}

}  // namespace pellar
