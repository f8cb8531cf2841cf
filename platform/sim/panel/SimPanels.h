#pragma once

#include <memory>
#include <vector>

#include "platform/Panel.h"
#include "platform/sim/panel/SimPanel.h"
#include "platform/sim/system/SimMainLoop.h"
#include "platform/sim/system/SimScreens.h"

namespace pellar {

// Every panel of the program, in their stacking order, and which of them has the keyboard.
class SimPanels final : public PanelFactory {
 public:
  SimPanels(SimMainLoop& loop, const SimScreens& screens) : loop_(loop), screens_(screens) {}

  [[nodiscard]] std::unique_ptr<Panel> makePanel(const PanelStyle& style) override;

  // Front to back; panels out of sight are among them.
  [[nodiscard]] std::vector<SimPanel*> all() const;
  // The visible panel in front at a point; null when there is none.
  [[nodiscard]] SimPanel* at(ScreenPoint point) const;
  [[nodiscard]] bool contains(const SimPanel* panel) const;
  // The panel that receives the keys; null when the application in front does.
  [[nodiscard]] SimPanel* key() const { return key_; }
  void setKey(SimPanel* panel);
  // The list that receives the keys before the key panel's field; null when there is none.
  [[nodiscard]] SimListView* keyList() const { return key_ == nullptr ? nullptr : listFocus_->list; }
  void endListFocus();

  // For SimPanel.
  void join(SimPanel& panel) { frontToBack_.insert(frontToBack_.begin(), &panel); }
  void leave(SimPanel& panel);
  void bringForward(SimPanel& panel);
  void clearKeySilently();
  [[nodiscard]] const std::shared_ptr<SimListFocus>& listFocus() const { return listFocus_; }
  [[nodiscard]] SimMainLoop& loop() const { return loop_; }
  [[nodiscard]] std::vector<Screen> screens() const { return screens_.screens(); }

 private:
  SimMainLoop& loop_;
  const SimScreens& screens_;
  std::vector<SimPanel*> frontToBack_;  // within each level
  SimPanel* key_ = nullptr;
  std::shared_ptr<SimListFocus> listFocus_ = std::make_shared<SimListFocus>();
};

}  // namespace pellar
