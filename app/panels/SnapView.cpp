#include "app/panels/SnapView.h"

#include <utility>

#include "core/Notify.h"

namespace pellar {
namespace {

constexpr Size cell{96, 60};
constexpr double margin = 12;
constexpr double pitchX = 120;
constexpr double pitchY = 74;
constexpr std::size_t columns = 3;
constexpr double cellInset = 2;
constexpr double cellRadius = 4;

constexpr Color ground{0.12, 0.13, 0.17, 0.97, std::nullopt};
constexpr Color resting{0.55, 0.55, 0.55, 0.35, std::nullopt};

}  // namespace

SnapView::SnapView(ViewHost& host, PickHandler onPick) : ChoiceView(host), onPick_(std::move(onPick)) {}

std::vector<ViewRect> SnapView::groupRects() {
  std::vector<ViewRect> rects;
  for (std::size_t i = 0; i < tileGroups().size(); ++i) {
    const auto column = i % columns;
    const auto row = i / columns;
    rects.push_back({margin + pitchX * static_cast<double>(column),
                     margin + pitchY * static_cast<double>(row), cell.width, cell.height});
  }
  return rects;
}

const std::vector<std::pair<ViewRect, Tile>>& SnapView::cellRects() {
  static const auto rects = [] {
    std::vector<std::pair<ViewRect, Tile>> result;
    const auto groups = groupRects();
    for (std::size_t i = 0; i < groups.size(); ++i) {
      const ViewRect& group = groups[i];
      for (const Tile tile : tileGroups()[i]) {
        const UnitRect part = unit(tile);
        const ViewRect whole{group.minX() + part.x * group.width, group.minY() + part.y * group.height,
                             part.width * group.width, part.height * group.height};
        result.emplace_back(whole.grown(-cellInset), tile);
      }
    }
    return result;
  }();
  return rects;
}

void SnapView::draw(Canvas& canvas, const ViewRect& /*dirty*/) {
  canvas.fillRoundedRect(host().bounds(), cornerRadius, ground);
  for (const auto& [rect, tile] : cellRects())
    canvas.fillRoundedRect(rect, cellRadius,
                           isLit(tile)                  ? Color::of(SystemColor::blue)
                           : canvas.increasesContrast() ? Color::white()
                                                        : resting);
}

AccessibleElement SnapView::describeWhole() const {
  return {.id = "picker", .name = "Layout", .help = "Places for this window", .frame = host().bounds()};
}

void SnapView::choose(Tile tile) {
  notify(onPick_, tile);
}

}  // namespace pellar
