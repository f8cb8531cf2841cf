#pragma once

#include <functional>

#include "platform/Panel.h"
#include "platform/shared/panel/KeyOwner.h"
#include "platform/shared/panel/PointerPresence.h"
#include "platform/shared/system/CallbackList.h"
#include "platform/sim/panel/SimViewHost.h"

namespace pellar {

class SimPanels;

// A panel that a test can look at. Clicks and keys reach it through SimPointer and SimKeyboard.
class SimPanel final : public Panel, public KeyPanel {
 public:
  SimPanel(SimPanels& owner, const PanelStyle& style);
  ~SimPanel() override;
  SimPanel(const SimPanel&) = delete;
  SimPanel& operator=(const SimPanel&) = delete;

  [[nodiscard]] ViewHost& host() override { return host_; }
  void setView(View* view) override { host_.setView(view); }
  void setFrame(const ScreenRect& frame, bool display) override;
  [[nodiscard]] ScreenRect frame() const override { return frame_; }
  [[nodiscard]] std::optional<ScreenRect> screenVisibleFrame() const override;
  void orderFrontRegardless() override;
  void orderAbove(const Element& window) override;
  void orderOut() override;
  [[nodiscard]] bool isVisible() const override { return visible_; }
  void makeKeyAndOrderFront() override;
  void resignKey() override;
  [[nodiscard]] bool isKey() const override;
  void clearFirstResponder() override;
  [[nodiscard]] Subscription onDidResignKey(std::function<void()> callback) override;

  [[nodiscard]] const PanelStyle& style() const { return style_; }
  [[nodiscard]] SimPanels& owner() const { return owner_; }
  [[nodiscard]] SimViewHost& simHost() { return host_; }
  [[nodiscard]] const SimViewHost& simHost() const { return host_; }
  [[nodiscard]] const Drawing& drawing() const { return host_.drawing(); }
  // The window that it was last shown as the panel of; absent when it is no window's.
  [[nodiscard]] const std::optional<Element>& window() const { return window_; }
  // Where the panel was when it came up last.
  [[nodiscard]] const ScreenRect& cameUpAt() const { return cameUpAt_; }
  // How often the panel was moved or resized to another frame.
  [[nodiscard]] int frameChanges() const { return frameChanges_; }

  // For SimPointer: the pointer in the panel's view.
  [[nodiscard]] PointerPresence& pointer() { return pointer_; }

  void keyEnded() override {}
  void tellKeyEnded() override { resignedKey_.call(); }

 private:
  void show();

  SimPanels& owner_;
  PanelStyle style_;
  ScreenRect frame_;
  ScreenRect cameUpAt_;
  std::optional<Element> window_;
  bool visible_ = false;
  int frameChanges_ = 0;
  CallbackList<> resignedKey_;
  SimViewHost host_;
  PointerPresence pointer_;
};

}  // namespace pellar
