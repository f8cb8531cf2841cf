#pragma once

#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "app/panels/ChoiceView.h"
#include "core/Tile.h"

namespace pellar {

// Miniature screens split into tiles; a click chooses one. Main thread only.
class SnapView final : public ChoiceView<Tile> {
 public:
  using PickHandler = std::function<void(Tile)>;
  static constexpr Size size{372, 150};
  static constexpr double cornerRadius = 10;

  // `onPick` is called when a tile is chosen. It may do away with the view.
  SnapView(ViewHost& host, PickHandler onPick);

  // The miniature screens, one for each group of tiles, in the order of the groups.
  [[nodiscard]] static std::vector<ViewRect> groupRects();
  // What of them each tile takes, group by group.
  [[nodiscard]] static const std::vector<std::pair<ViewRect, Tile>>& cellRects();

  void draw(Canvas& canvas, const ViewRect& dirty) override;

 private:
  [[nodiscard]] Parts parts() const override { return cellRects(); }
  void choose(Tile tile) override;
  [[nodiscard]] AccessibleElement describeWhole() const override;
  [[nodiscard]] std::string_view name(Tile tile) const override { return title(tile); }
  [[nodiscard]] std::string_view help(Tile /*tile*/) const override { return "Puts this window there"; }

  PickHandler onPick_;
};

}  // namespace pellar
