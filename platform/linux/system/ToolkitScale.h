#pragma once

#include <deque>
#include <vector>

#include "platform/linux/system/TemporaryVariable.h"
#include "platform/linux/x11/X11Density.h"

namespace pellar {

// Tells the toolkit the scale of each monitor, while its application object is made, and nothing else of what
// the desktop says: it would multiply some of that with the rest. Its windows keep the scale that their
// monitor has now.
class ToolkitScale {
 public:
  explicit ToolkitScale(const std::vector<X11Density::Monitor>& monitors);

 private:
  std::deque<TemporaryVariable> variables_;
};

}  // namespace pellar
