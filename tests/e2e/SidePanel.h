#pragma once

#include <optional>

#include "tests/e2e/Desktop.h"
#include "tests/e2e/Strip.h"

namespace pellar::e2e {

// A panel that comes up beside the strip when the pointer rests on it, as somebody before the screen sees it.
// The two are told apart by their heights.
class SidePanel {
 public:
  static SidePanel card(Desktop& desktop, Strip& strip) { return {desktop, strip, 58}; }
  static SidePanel picker(Desktop& desktop, Strip& strip) { return {desktop, strip, 150}; }

  // In pixels of the screen; absent while it is not shown.
  [[nodiscard]] std::optional<Box> box();
  Box waitUntilShown();
  void waitUntilGone();

 private:
  SidePanel(Desktop& desktop, Strip& strip, int height) : desktop_(desktop), strip_(strip), height_(height) {}

  Desktop& desktop_;
  Strip& strip_;
  int height_;
};

}  // namespace pellar::e2e
