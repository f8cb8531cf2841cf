#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "app/strip/windows/TrackedPicture.h"
#include "app/tracking/OfficeWindow.h"
#include "platform/Platform.h"
#include "platform/Subscription.h"

namespace pellar {

// Stands for a window over a nested loop, in which the window may go or be given another record. What is
// known of the window is had by looking it up again (OpenWindows::find).
class WindowReference {
 public:
  // The record that stood for the window when it was remembered.
  [[nodiscard]] const OfficeWindow& record() const { return *window_; }
  // Whether that record is one of the window.
  [[nodiscard]] bool means(const OfficeWindow& window) const { return window_->element == window.element; }

 private:
  friend class OpenWindows;
  WindowReference(std::shared_ptr<OfficeWindow> window, std::uint64_t endings)
      : window_(std::move(window)), endings_(endings) {}

  std::shared_ptr<OfficeWindow> window_;
  std::uint64_t endings_;  // of processes of that number, before it was remembered
};

// Whether a window is still there. It is gone when its application has ended, or names its windows without it
// and its element says nothing any more; one on another space is there, and an application that is merely
// busy has all its windows still. Main thread only.
class OpenWindows {
 public:
  // What `platform` refers to outlives this.
  OpenWindows(const Platform& platform, std::shared_ptr<const TrackedPicture> picture);

  // Asks the application nothing.
  [[nodiscard]] WindowReference remember(std::shared_ptr<OfficeWindow> window) const;
  [[nodiscard]] std::vector<WindowReference> remember(const WindowList& windows) const;

  // The record that stands for the window now, also while the strip shows another application; null when the
  // window is gone. Asks the application, which may have to be waited for.
  [[nodiscard]] std::shared_ptr<OfficeWindow> find(const WindowReference& reference) const;

  // The windows that now have a tab in place of those remembered, all of one process; those remembered
  // themselves while none of that process has a tab. Asks the application nothing: some may be gone.
  [[nodiscard]] WindowList inPlaceOf(const std::vector<WindowReference>& remembered) const;

 private:
  [[nodiscard]] std::uint64_t endings(ProcessId pid) const;

  Platform platform_;
  std::shared_ptr<const TrackedPicture> picture_;
  std::shared_ptr<std::unordered_map<ProcessId, std::uint64_t>> endings_;
  Subscription terminated_;
};

}  // namespace pellar
