#include "platform/sim/applications/SimWindow.h"

#include <utility>

namespace pellar {

void SimWindow::enterFullScreen() {
  const auto screens = screens_->screens();
  if (screens.empty()) return;
  const ScreenPoint middle = screens_->toScreen(AxPoint{frame().midX(), frame().midY()});
  const Screen* chosen = &screens.front();
  for (const Screen& screen : screens) {
    if (screen.frame.contains(middle)) chosen = &screen;
  }
  desktop_->setFullScreen(state_, true, screens_->toAccessibility(chosen->frame));
}

void SimWindow::comeToRest() {
  state_->atRest = true;
  state_->cameToRest.call();
}

void SimWindow::setDocument(std::optional<std::string> url) {
  state_->document = std::move(url);
  desktop_->changedSilently();
}

}  // namespace pellar
