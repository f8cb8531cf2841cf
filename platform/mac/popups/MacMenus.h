#pragma once

#import <AppKit/AppKit.h>

#include "core/Geometry.h"
#include "platform/MenuPresenter.h"

namespace pellar {

class MacPanelFactory;

// Native context menus.
class MacMenus final : public MenuPresenter {
 public:
  explicit MacMenus(const MacPanelFactory& panels) : panels_(panels) {}

  void popUpContextMenu(const Menu& menu, const MouseEvent& event) override;

 private:
  void track(NSMenu* native, ScreenPoint place) const;

  const MacPanelFactory& panels_;
  bool open_ = false;
};

}  // namespace pellar
