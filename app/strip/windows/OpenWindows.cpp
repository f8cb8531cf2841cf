#include "app/strip/windows/OpenWindows.h"

#include <algorithm>
#include <utility>

#include "app/tracking/AX.h"
#include "platform/Workspace.h"

namespace pellar {

OpenWindows::OpenWindows(const Platform& platform, std::shared_ptr<const TrackedPicture> picture)
    : platform_(platform),
      picture_(std::move(picture)),
      endings_(std::make_shared<std::unordered_map<ProcessId, std::uint64_t>>()),
      terminated_(platform_.workspace.onTerminated([endings = endings_](std::optional<ProcessId> pid) {
        if (pid) ++(*endings)[*pid];
      })) {}

WindowReference OpenWindows::remember(std::shared_ptr<OfficeWindow> window) const {
  const auto before = endings(window->pid);
  return {std::move(window), before};
}

std::vector<WindowReference> OpenWindows::remember(const WindowList& windows) const {
  std::vector<WindowReference> references;
  references.reserve(windows.size());
  for (const auto& each : windows) references.push_back(remember(each));
  return references;
}

std::shared_ptr<OfficeWindow> OpenWindows::find(const WindowReference& reference) const {
  const auto window = reference.window_;
  if (!platform_.workspace.isRunning(window->app.id)) return nullptr;
  auto& accessibility = platform_.accessibility;
  const auto named = AX::value<std::vector<Element>>(
      accessibility, accessibility.applicationElement(window->pid), "AXWindows");
  // One that is named no more may be on another space: its own element says whether it exists.
  if (named && std::ranges::find(*named, window->element) == named->end() &&
      !AX::value<std::string>(accessibility, window->element, "AXSubrole"))
    return nullptr;
  // Its process may have ended before, and another one have been asked, or while the answer was awaited.
  if (endings(window->pid) != reference.endings_) return nullptr;

  auto present = picture_->present(*window);
  if (!present) present = window;
  // Nothing was heard of it while the menu was open. A busy application is not waited for once more.
  if (named) present->refresh(accessibility);
  return present;
}

WindowList OpenWindows::inPlaceOf(const std::vector<WindowReference>& remembered) const {
  const WindowList& shown = picture_->windows;
  const bool sameProcess = !remembered.empty() && !shown.empty() &&
                           shown.front()->pid == remembered.front().window_->pid &&
                           endings(shown.front()->pid) == remembered.front().endings_;
  if (sameProcess) return shown;
  WindowList windows;
  windows.reserve(remembered.size());
  for (const auto& each : remembered) windows.push_back(each.window_);
  return windows;
}

std::uint64_t OpenWindows::endings(ProcessId pid) const {
  const auto counted = endings_->find(pid);
  return counted == endings_->end() ? 0 : counted->second;
}

}  // namespace pellar
