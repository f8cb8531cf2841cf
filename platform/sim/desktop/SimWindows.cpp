#include "platform/sim/desktop/SimWindows.h"

#include <algorithm>
#include <stdexcept>

namespace pellar {

std::unique_ptr<PlainWindow> SimWindows::makeWindow(const WindowDescription& description) {
  ++made_;
  return std::make_unique<SimPlainWindow>(*this, description);
}

std::vector<std::string> SimWindows::visible() const {
  std::vector<std::string> titles;
  for (const auto* window : all_)
    if (window->isVisible()) titles.push_back(window->description().title);
  return titles;
}

bool SimWindows::exists(const std::string& title) const {
  return std::ranges::any_of(all_, [&](const auto* each) { return each->description().title == title; });
}

SimPlainWindow& SimWindows::titled(const std::string& title) const {
  for (auto* window : all_)
    if (window->description().title == title) return *window;
  throw std::logic_error("there is no window \"" + title + "\"");
}

SimPlainWindow* SimWindows::key() const {
  const auto front = desktop_.frontmost();
  return front && front->pid == SimDesktop::pellarPid ? key_ : nullptr;
}

void SimWindows::leave(SimPlainWindow& window) {
  std::erase(all_, &window);
  resignKey(window);
}

void SimWindows::makeKey(SimPlainWindow& window) {
  key_ = &window;
  panels_.keys().loseKey();
}

void SimWindows::resignKey(SimPlainWindow& window) {
  if (key_ != &window) return;
  const auto next = std::ranges::find_if(all_, [](const auto* each) { return each->isVisible(); });
  key_ = next == all_.end() ? nullptr : *next;
}

}  // namespace pellar
