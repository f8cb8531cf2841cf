#pragma once

#include "platform/MainLoop.h"
#include "platform/Windows.h"

namespace pellar {

// Makes ordinary windows.
class MacWindows final : public Windows {
 public:
  explicit MacWindows(MainLoop& loop) : loop_(loop) {}

  [[nodiscard]] std::unique_ptr<PlainWindow> makeWindow(const WindowDescription& description) override;

 private:
  MainLoop& loop_;
};

}  // namespace pellar
