#include "app/tracking/TabOrder.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace pellar {

WindowList TabOrder::arrange(WindowList windows) {
  std::unordered_set<const OfficeWindow*> waiting;
  waiting.reserve(windows.size());
  for (const auto& window : windows) waiting.insert(window.get());

  WindowList ordered;
  ordered.reserve(windows.size());
  for (const auto& window : windows_)
    if (waiting.erase(window.get()) > 0) ordered.push_back(window);
  for (auto& window : windows) {
    if (!waiting.contains(window.get())) continue;
    windows_.push_back(window);
    ordered.push_back(std::move(window));
  }
  return ordered;
}

WindowList TabOrder::move(const std::shared_ptr<OfficeWindow>& window, const WindowList& others,
                          std::ptrdiff_t index) {
  forget(window);
  // Beside its new neighbour, wherever windows are that have no tab now.
  auto place = windows_.end();
  if (index < std::ssize(others)) {
    place = std::ranges::find(windows_, others[static_cast<std::size_t>(index)]);
  } else if (!others.empty()) {
    place = std::ranges::find(windows_, others.back());
    if (place != windows_.end()) ++place;
  }
  windows_.insert(place, window);

  WindowList shown = others;
  shown.insert(shown.begin() + index, window);
  return shown;
}

void TabOrder::forget(const std::shared_ptr<OfficeWindow>& window) {
  std::erase(windows_, window);
}

void TabOrder::forgetAll() {
  windows_.clear();
}

}  // namespace pellar
