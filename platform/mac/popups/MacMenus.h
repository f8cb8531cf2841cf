#pragma once

#include "platform/MenuPresenter.h"

namespace pellar {

class MacPanelFactory;

// Native context menus.
class MacMenus final : public MenuPresenter {
 public:
  explicit MacMenus(const MacPanelFactory& panels) : panels_(panels) {}

  void popUpContextMenu(const Menu& menu, const MouseEvent& event) override;

 private:
  const MacPanelFactory& panels_;
  bool open_ = false;
};

}  // namespace pellar
