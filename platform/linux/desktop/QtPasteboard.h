#pragma once

#include "platform/Pasteboard.h"

namespace pellar {

// The desktop's clipboard. Its content lives as long as the program, or in the desktop's clipboard manager.
class QtPasteboard final : public Pasteboard {
 public:
  void setString(const std::string& text) override;
};

}  // namespace pellar
