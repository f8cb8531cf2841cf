#include "platform/sim/applications/SimWindow.h"

#include <stdexcept>

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

SimWindow SimApplication::open(std::string title, const AxRect& frame, std::string subrole) {
  return {*desktop_, *screens_, desktop_->open(*state_, std::move(title), frame, std::move(subrole))};
}

SimWindow SimApplication::openUnfinished() {
  return open("", {0, 25, 1, 1});
}

void SimApplication::joinAsTabs(const std::vector<SimWindow>& windows) {
  std::vector<SimWindowPointer> states;
  for (const auto& each : windows) states.push_back(each.state_);
  desktop_->joinAsTabs(states);
}

SimMenuElement& SimApplication::menu(std::initializer_list<std::string_view> titles) const {
  if (!state_->menuBar) throw std::logic_error("the application has no menu bar");
  SimMenuElement* found = state_->menuBar.get();
  for (const auto title : titles) found = &found->child(title);
  return *found;
}

std::optional<SimWindow> SimApplication::focusedWindow() const {
  if (!state_->focused) return std::nullopt;
  return SimWindow(*desktop_, *screens_, state_->focused);
}

std::optional<SimWindow> SimApplication::mainWindow() const {
  if (!state_->mainWindow()) return std::nullopt;
  return SimWindow(*desktop_, *screens_, state_->mainWindow());
}

std::vector<SimWindow> SimApplication::windowsFrontToBack() const {
  std::vector<SimWindow> windows;
  for (const auto& window : state_->frontToBack) windows.emplace_back(*desktop_, *screens_, window);
  return windows;
}

std::vector<SimWindow> SimApplication::windowsAsListed() const {
  std::vector<SimWindow> windows;
  for (const auto& window : state_->quirks.listsWindowsByCreation ? state_->byCreation : state_->frontToBack)
    if (desktop_->isNamed(*window)) windows.emplace_back(*desktop_, *screens_, window);
  return windows;
}

}  // namespace pellar
