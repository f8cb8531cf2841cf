#pragma once

#include <memory>
#include <optional>

#include "app/panels/SnapPicker.h"
#include "app/strip/card/TabCard.h"
#include "app/strip/windows/TrackedPicture.h"
#include "app/strip/windows/WindowActions.h"
#include "platform/Platform.h"

namespace pellar {

// The two panels that come up where the pointer rests on the strip, each made when it is first needed. Main
// thread only.
class HoverPanels {
 public:
  // What `platform` refers to outlives this.
  HoverPanels(const Platform& platform, std::shared_ptr<const TrackedPicture> picture,
              std::shared_ptr<WindowActions> actions);

  // The pointer rests on a tab, at `tab` on the screen, or on none.
  void tabHovered(std::optional<WindowId> id, const std::optional<ScreenRect>& tab);
  // The pointer came to the zoom tool, at `tool` on the screen, or left it.
  void zoomHovered(const std::optional<ScreenRect>& tool);
  // Takes both away at once.
  void hide();

 private:
  [[nodiscard]] TabCard& tabCard();
  [[nodiscard]] SnapPicker& snapPicker();

  Platform platform_;
  std::shared_ptr<const TrackedPicture> picture_;
  std::shared_ptr<WindowActions> actions_;
  std::unique_ptr<TabCard> tabCard_;
  std::unique_ptr<SnapPicker> snapPicker_;
};

}  // namespace pellar
