#pragma once

#include "platform/StatusBar.h"

@class NSMenu;

namespace pellar {

// An NSStatusItem with a menu that is filled anew each time it opens.
class MacStatusBar final : public StatusBar {
 public:
  [[nodiscard]] Subscription addItem(const StatusItemLook& look, std::function<Menu()> menu) override;

  // Returns when it is closed. Not every menu bar has room for every item.
  void openMenu() override;

 private:
  __weak NSMenu* menu_ = nullptr;  // of the latest item
};

}  // namespace pellar
