#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/Panel.h"
#include "platform/shared/system/CallbackList.h"
#include "platform/sim/panel/SimPanel.h"
#include "platform/sim/system/SimMainLoop.h"
#include "platform/sim/system/SimScreens.h"

namespace pellar {

// Every panel of the program, in their stacking order, and who of them has the keyboard.
class SimPanels final : public PanelFactory {
 public:
  SimPanels(SimMainLoop& loop, const SimScreens& screens) : loop_(loop), screens_(screens), keys_(loop) {}

  [[nodiscard]] std::unique_ptr<Panel> makePanel(const PanelStyle& style) override;

  // Front to back; panels out of sight are among them.
  [[nodiscard]] std::vector<SimPanel*> all() const;
  // The visible panel in front at a point; null when there is none.
  [[nodiscard]] SimPanel* at(ScreenPoint point) const;
  // While a question is open panels get no press: only one that works when modal would (worksWhenModal,
  // NSPanel.h), and none of ours does. It lasts until the subscription is dropped.
  [[nodiscard]] Subscription beginModalSession() {
    ++modalSessions_;
    return Subscription([this] { --modalSessions_; });
  }
  [[nodiscard]] bool inModalSession() const { return modalSessions_ > 0; }
  [[nodiscard]] bool contains(const SimPanel* panel) const;
  // Who receives the keys; without a key panel the application in front does.
  [[nodiscard]] KeyOwner& keys() { return keys_; }
  [[nodiscard]] SimPanel* key() const { return static_cast<SimPanel*>(keys_.keyPanel()); }

  // The user asks his system for more contrast, or no longer.
  void setIncreasesContrast(bool increases);
  [[nodiscard]] bool increasesContrast() const { return increasesContrast_; }

  // Assistive technologies hear that what the panels tell may be something else now.
  [[nodiscard]] Subscription onAccessibleChange(std::function<void()> callback) {
    return accessibleChange_.add(std::move(callback));
  }
  void tellAccessibleChange();

  // How many ended with a view, which a native panel may ask something to the last.
  [[nodiscard]] int endedWithView() const { return endedWithView_; }

  // For SimPanel.
  void join(SimPanel& panel) { frontToBack_.insert(frontToBack_.begin(), &panel); }
  void leave(SimPanel& panel);
  void bringForward(SimPanel& panel);
  [[nodiscard]] SimMainLoop& loop() const { return loop_; }
  [[nodiscard]] std::vector<Screen> screens() const { return screens_.screens(); }

 private:
  SimMainLoop& loop_;
  const SimScreens& screens_;
  std::vector<SimPanel*> frontToBack_;  // within each level
  int modalSessions_ = 0;
  KeyOwner keys_;
  CallbackList<> accessibleChange_;
  bool accessibleChangePosted_ = false;
  bool increasesContrast_ = false;
  int endedWithView_ = 0;
};

}  // namespace pellar
