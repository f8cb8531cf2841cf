#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "core/Tile.h"
#include "platform/View.h"

namespace pellar {

// Miniature screens split into tiles; a click chooses one. Main thread only.
class SnapView final : public View {
 public:
  using PickHandler = std::function<void(Tile)>;
  static constexpr Size size{372, 150};
  static constexpr double cornerRadius = 10;

  // `onPick` is called when a tile is chosen. It may do away with the view.
  SnapView(ViewHost& host, PickHandler onPick);

  std::function<void(bool inside)> onHoverChanged;  // the pointer entered or left the view
  std::function<void()> onPicked;                   // after every pick

  // The miniature screens, one for each group of tiles, in the order of the groups.
  [[nodiscard]] static std::vector<ViewRect> groupRects();
  // What of them each tile takes, group by group.
  [[nodiscard]] static const std::vector<std::pair<ViewRect, Tile>>& cellRects();

  void layout() override {}
  void draw(Canvas& canvas, const ViewRect& dirty) override;
  void mouseDown(const MouseEvent& event) override;
  void mouseDragged(const MouseEvent&) override {}
  void mouseUp(const MouseEvent&) override {}
  void rightMouseDown(const MouseEvent&) override {}
  void otherMouseDown(const MouseEvent&) override {}
  void mouseEntered() override;
  void mouseMoved(const MouseEvent& event) override;
  void mouseExited() override;

 private:
  void setHover(std::optional<Tile> tile);

  ViewHost& host_;
  PickHandler onPick_;
  std::optional<Tile> hover_;
  std::shared_ptr<int> alive_ = std::make_shared<int>(0);
};

}  // namespace pellar
