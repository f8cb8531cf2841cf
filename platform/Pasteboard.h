#pragma once

#include <string>

namespace pellar {

// The general pasteboard (the clipboard). Main thread only.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;
  // Replaces whatever it holds by a plain text, UTF-8.
  virtual void setString(const std::string& text) = 0;
};

}  // namespace pellar
