#pragma once

#include "platform/StatusBar.h"

namespace pellar {

// An NSStatusItem with a menu that is filled anew each time it opens.
class MacStatusBar final : public StatusBar {
 public:
  [[nodiscard]] Subscription addItem(const StatusItemLook& look, std::function<Menu()> menu) override;
};

}  // namespace pellar
