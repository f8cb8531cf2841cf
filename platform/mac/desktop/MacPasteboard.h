#pragma once

#include "platform/Pasteboard.h"

namespace pellar {

// The general pasteboard.
class MacPasteboard final : public Pasteboard {
 public:
  void setString(const std::string& text) override;
};

}  // namespace pellar
