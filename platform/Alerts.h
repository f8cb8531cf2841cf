#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/Geometry.h"

namespace pellar {

// A modal question with one line of editable text.
struct TextAlert {
  std::string messageText;           // the bold line
  std::string informativeText;       // the smaller one below
  std::vector<std::string> buttons;  // the first is the default; Escape presses "Cancel"
  Size fieldSize;
  std::string fieldText;  // selected whole, and the field has the keyboard
};

// How a modal question ended.
struct TextAlertAnswer {
  static constexpr int firstButtonReturn = 1000;  // NSAlertFirstButtonReturn; the second is one more
  int response = 0;
  std::string fieldText;
};

// Shows modal questions. Main thread only.
class Alerts {
 public:
  virtual ~Alerts() = default;

  // Shows the alert and returns when it is closed; the main loop runs nested until then. This program may
  // then be left in front, though it has no window: the caller activates the application that was. A window
  // closed without a button answers as the last button would. Absent when no alert can be shown, for instance
  // while another one is.
  [[nodiscard]] virtual std::optional<TextAlertAnswer> runModal(const TextAlert& alert) = 0;
};

}  // namespace pellar
