#pragma once

#import <AppKit/AppKit.h>

#include "platform/MainLoop.h"
#include "platform/Windows.h"
#import "platform/mac/desktop/WindowContent.h"

@class WindowCloseObserver;

namespace pellar {

// An NSWindow.
class MacPlainWindow final : public PlainWindow {
 public:
  MacPlainWindow(MainLoop& loop, const WindowDescription& description);
  ~MacPlainWindow() override;
  MacPlainWindow(const MacPlainWindow&) = delete;
  MacPlainWindow& operator=(const MacPlainWindow&) = delete;

  [[nodiscard]] NSWindow* native() const { return native_; }

  void makeKeyAndOrderFront() override;
  void close() override;
  [[nodiscard]] bool isVisible() const override;
  void setText(const std::string& id, const std::string& text) override;
  [[nodiscard]] Subscription onClosed(std::function<void()> callback) override;

 private:
  NSWindow* native_;
  WindowCloseObserver* closing_;
  WindowLabels* labels_;
};

}  // namespace pellar
