#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/EventMonitors.h"
#include "platform/Panel.h"
#include "platform/shared/system/CallbackList.h"

namespace pellar {

class ListFocus;
class MacPanel;

// Makes panels and knows those that exist. Outlives them.
class MacPanelFactory final : public PanelFactory {
 public:
  MacPanelFactory();
  ~MacPanelFactory() override;
  MacPanelFactory(const MacPanelFactory&) = delete;
  MacPanelFactory& operator=(const MacPanelFactory&) = delete;

  [[nodiscard]] std::unique_ptr<Panel> makePanel(const PanelStyle& style) override;

  // What assistive technologies press in panels, told before the panel's view.
  [[nodiscard]] Subscription onAccessiblePress(std::function<void(const ObservedClick&)> callback) {
    return presses_.add(std::move(callback));
  }

  // The panel of a native window; null for another window.
  [[nodiscard]] const MacPanel* panelOf(NSWindow* window) const;
  // A shown panel under a point; null when there is none.
  [[nodiscard]] const MacPanel* panelAt(ScreenPoint point) const;

 private:
  std::shared_ptr<ListFocus> listFocus_;
  std::vector<const MacPanel*> panels_;
  CallbackList<ObservedClick> presses_;
};

}  // namespace pellar
