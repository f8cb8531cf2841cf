#include "tests/e2e/DesktopReport.h"

#include <optional>
#include <sstream>

namespace pellar::e2e {
namespace {

std::string place(const std::optional<Box>& box) {
  return box ? describe(*box) : "nowhere";
}

}  // namespace

std::string describeDesktop(XObserver& observer) {
  std::ostringstream report;
  const auto pointer = observer.pointer();
  report << "focus " << observer.focus() << ", active " << observer.activeWindow() << ", keyboard "
         << (observer.keyboardIsGrabbed() ? "grabbed" : "free") << ", pointer "
         << (observer.pointerIsGrabbed() ? "grabbed at " : "at ") << place(pointer) << '\n';
  for (const xcb_window_t window : observer.topLevels()) {
    if (!observer.isViewable(window)) continue;
    // The name's first half; the second is after a zero.
    report << "window " << window << ", " << observer.text(window, "WM_CLASS").c_str() << ", "
           << place(observer.box(window)) << '\n';
  }
  for (const xcb_window_t window : observer.clients())
    report << "client " << window << ", " << observer.text(window, "WM_NAME") << ", state "
           << observer.managedState(window) << ", frame " << place(observer.frame(window)) << '\n';
  return report.str();
}

}  // namespace pellar::e2e
