#pragma once

#import <AppKit/AppKit.h>

#include "platform/MainLoop.h"
#include "platform/Windows.h"
#import "platform/mac/desktop/WindowContent.h"

@class WindowCloseObserver;
@class RestingWindow;

namespace pellar {

// An NSWindow.
class MacPlainWindow final : public PlainWindow {
 public:
  MacPlainWindow(MainLoop& loop, const WindowDescription& description);
  ~MacPlainWindow() override;
  MacPlainWindow(const MacPlainWindow&) = delete;
  MacPlainWindow& operator=(const MacPlainWindow&) = delete;

  [[nodiscard]] NSWindow* native() const;

  void makeKeyAndOrderFront() override;
  void restDefaultButton(std::chrono::milliseconds time) override;
  void close() override;
  [[nodiscard]] bool isVisible() const override;
  void setText(const std::string& id, const std::string& text) override;
  [[nodiscard]] Subscription onClosed(std::function<void()> callback) override;

 private:
  RestingWindow* native_;
  WindowCloseObserver* closing_;
  WindowLabels* labels_;
};

}  // namespace pellar
