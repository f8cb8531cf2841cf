#pragma once

#import <AppKit/AppKit.h>

#include "platform/Panel.h"
#include "platform/mac/panel/MacViewHost.h"

namespace pellar {

// An NSPanel with a `GlassView` and our view in it.
class MacPanel final : public Panel {
 public:
  // `onAccessiblePress` hears where on the screen an assistive technology presses, before the view does.
  MacPanel(const PanelStyle& style, std::shared_ptr<ListFocus> listFocus,
           std::function<void(const MacPanel&, ScreenPoint)> onAccessiblePress,
           std::function<void(const MacPanel&)> onDestroyed);
  ~MacPanel() override;
  MacPanel(const MacPanel&) = delete;
  MacPanel& operator=(const MacPanel&) = delete;

  [[nodiscard]] NSPanel* native() const { return native_; }

  [[nodiscard]] ViewHost& host() override { return host_; }
  void setView(View* view) override;
  void setFrame(const ScreenRect& frame, bool display) override;
  [[nodiscard]] ScreenRect frame() const override;
  [[nodiscard]] std::optional<ScreenRect> screenVisibleFrame() const override;
  void orderFrontRegardless() override;
  // Panels have a level of their own, above all windows.
  void orderAbove(const Element& /*window*/) override { orderFrontRegardless(); }
  void orderOut() override;
  [[nodiscard]] bool isVisible() const override;
  void makeKeyAndOrderFront() override;
  void resignKey() override;
  [[nodiscard]] bool isKey() const override;
  void clearFirstResponder() override;
  [[nodiscard]] Subscription onDidResignKey(std::function<void()> callback) override;

 private:
  void leaveAndComeBack();

  NSPanel* native_;
  std::shared_ptr<ListFocus> listFocus_;
  MacViewHost host_;
  bool shown_ = false;  // the program wants it on the screen
  std::function<void(const MacPanel&)> onDestroyed_;
  Subscription resignedKey_;
  Subscription release_;  // of the mouse, after which the panel gives the keyboard back
};

}  // namespace pellar
