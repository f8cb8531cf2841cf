#include "platform/sim/applications/SimApplication.h"

#include <stdexcept>

namespace pellar {

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
