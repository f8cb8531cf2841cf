#pragma once

#include <memory>
#include <optional>

#include "app/panels/SnapPicker.h"
#include "app/strip/card/TabCard.h"
#include "app/strip/documents/DocumentPaths.h"
#include "app/strip/windows/TrackedPicture.h"
#include "app/strip/windows/WindowActions.h"
#include "platform/Platform.h"
#include "platform/Subscription.h"

namespace pellar {

// The two panels that come up where the pointer rests on the strip: a tab's card and the zoom tool's picker,
// each made when it is first needed. The strip's view says where the pointer is and lights that; this alone
// says which panel belongs to it, and for how long. Neither stays for a window that is gone, nor over a menu
// or a question. Main thread only.
class HoverPanels {
 public:
  // What `platform` refers to outlives this.
  HoverPanels(const Platform& platform, std::shared_ptr<const TrackedPicture> picture,
              std::shared_ptr<WindowActions> actions, std::shared_ptr<const DocumentPaths> paths);

  // The pointer rests on a tab, at `tab` on the screen, or on none.
  void tabHovered(std::optional<WindowId> id, const std::optional<ScreenRect>& tab);
  // The pointer came to the zoom tool, at `tool` on the screen, or left it.
  void zoomHovered(const std::optional<ScreenRect>& tool);
  // Another picture was taken over: what belongs to a window that has no tab any more goes at once.
  void pictureChanged();
  // Takes both away at once.
  void hide();
  // The same, and neither comes up for as long as what is returned is kept: a menu or a question is open.
  [[nodiscard]] Subscription pause();

 private:
  [[nodiscard]] TabCard& tabCard();
  [[nodiscard]] SnapPicker& snapPicker();

  Platform platform_;
  std::shared_ptr<const TrackedPicture> picture_;
  std::shared_ptr<WindowActions> actions_;
  std::shared_ptr<const DocumentPaths> paths_;
  std::unique_ptr<TabCard> tabCard_;
  std::unique_ptr<SnapPicker> snapPicker_;
  // The focused window when the pointer came to the zoom tool; absent before the picker is made.
  std::optional<WindowId> pickerOver_;
  std::shared_ptr<int> pauses_ = std::make_shared<int>(0);
};

}  // namespace pellar
