#pragma once

#include "platform/EventMonitors.h"

namespace pellar {

class MacPanelFactory;

// NSEvent's monitors of the left and the right button. The global ones see no event of this program, the
// local ones no other.
class MacEventMonitors final : public EventMonitors {
 public:
  explicit MacEventMonitors(MacPanelFactory& panels) : panels_(panels) {}

  [[nodiscard]] Subscription onGlobalMouseDown(std::function<void()> callback) override;
  [[nodiscard]] Subscription onLocalMouseDown(std::function<void(const ObservedClick&)> callback) override;
  [[nodiscard]] Subscription onceButtonsAreUp(std::function<void()> callback) override;

 private:
  MacPanelFactory& panels_;
};

}  // namespace pellar
