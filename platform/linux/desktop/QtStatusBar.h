#pragma once

#include <memory>

#include "platform/EventMonitors.h"
#include "platform/MainLoop.h"
#include "platform/StatusBar.h"

namespace pellar {

// The desktop's tray, where it has one: a StatusNotifierItem or an embedded icon. Without a tray the menu is
// reached by openMenu(), which does not wait until it is closed.
class QtStatusBar final : public StatusBar {
 public:
  // Both outlive this.
  QtStatusBar(MainLoop& loop, EventMonitors& monitors);
  ~QtStatusBar() override;

  // The icon comes at the next turn, when the program has started.
  [[nodiscard]] Subscription addItem(const StatusItemLook& look, std::function<Menu()> menu) override;

  void openMenu() override;

 private:
  class Item;

  MainLoop& loop_;
  EventMonitors& monitors_;
  std::shared_ptr<Item> item_;
  Subscription start_;
};

}  // namespace pellar
