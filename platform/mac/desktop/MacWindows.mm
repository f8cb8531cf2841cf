#include "platform/mac/desktop/MacWindows.h"

#include "platform/mac/desktop/MacPlainWindow.h"

namespace pellar {

std::unique_ptr<PlainWindow> MacWindows::makeWindow(const WindowDescription& description) {
  return std::make_unique<MacPlainWindow>(loop_, description);
}

}  // namespace pellar
