#pragma once

#include "platform/Windows.h"
#include "platform/linux/desktop/QtPlainWindow.h"

namespace pellar {

// Ordinary windows as dialogs of the toolkit.
class QtWindows final : public Windows {
 public:
  [[nodiscard]] std::unique_ptr<PlainWindow> makeWindow(const WindowDescription& description) override {
    return std::make_unique<QtPlainWindow>(description);
  }
};

}  // namespace pellar
