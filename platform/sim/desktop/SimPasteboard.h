#pragma once

#include <string>

#include "platform/Pasteboard.h"

namespace pellar {

// The pasteboard, which a test can read.
class SimPasteboard final : public Pasteboard {
 public:
  void setString(const std::string& text) override { text_ = text; }
  [[nodiscard]] const std::string& string() const { return text_; }

 private:
  std::string text_;
};

}  // namespace pellar
