#pragma once

#include <chrono>
#include <map>
#include <string>

#include "platform/Windows.h"

class QLabel;

namespace pellar {

// A window of labels, text and buttons.
class QtPlainWindow final : public PlainWindow {
 public:
  explicit QtPlainWindow(const WindowDescription& description);
  ~QtPlainWindow() override;

  void makeKeyAndOrderFront() override;
  void restDefaultButton(std::chrono::milliseconds time) override;
  void close() override;
  [[nodiscard]] bool isVisible() const override;
  void setText(const std::string& id, const std::string& text) override;
  [[nodiscard]] Subscription onClosed(std::function<void()> callback) override;

 private:
  class Dialog;

  // Makes the elements, and the window large enough for them.
  void fill(const WindowDescription& description);

  Dialog* dialog_;  // outlives this by the rest of a turn: a handler of it may run
  std::map<std::string, QLabel*> labels_;
};

}  // namespace pellar
