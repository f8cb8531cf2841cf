#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/tracking/PathInTitle.h"
#include "core/Geometry.h"
#include "core/TrackedApp.h"
#include "platform/Accessibility.h"

namespace pellar {

// The record of one top-level window of any tracked application, Office or not. Shared identity: two records
// are the same window when they are the same object. Main thread only.
class OfficeWindow {
 public:
  // Reads the snapshot once. `path` stays absent.
  OfficeWindow(Accessibility& accessibility, Element windowElement, TrackedApp owner, ProcessId ownerPid);
  OfficeWindow(const OfficeWindow&) = delete;
  OfficeWindow& operator=(const OfficeWindow&) = delete;

  // Reads the snapshot and the path anew. What cannot be read keeps its value, except the two flags, which
  // become false.
  void refresh(Accessibility& accessibility);
  // Reads the path, of other than Office windows only. It stays once it is known, except one that the title
  // named and names no more: that is read anew each time.
  void readPath(Accessibility& accessibility);

  // Asks a window that shows a known file, of other than Office applications, which one it shows at this
  // moment, and takes over as its `path` what it says. Absent when it names none: it may have a new document,
  // or give no answer.
  std::optional<std::string> askPath(Accessibility& accessibility);
  // Whether the title names the known file, as it does without an answer and does not after "New" in the
  // window.
  [[nodiscard]] bool titleNamesPath();

  // The identifier of the window and of its tab while the window exists.
  [[nodiscard]] WindowId id() const { return id_; }

  const Element element;
  const TrackedApp app;
  const ProcessId pid;
  std::string title;  // UTF-8 as read, possibly invalid; empty when never read
  AxRect frame;       // zero when never read
  bool minimized = false;
  bool fullscreen = false;
  std::optional<std::string> path;  // POSIX path of the file that the window says it shows, when known

 private:
  void readSnapshot(Accessibility& accessibility);
  void takeOver(std::optional<std::string> shown);
  [[nodiscard]] std::optional<std::string> shownPath(Accessibility& accessibility) const;
  [[nodiscard]] bool mustReadPath();

  PathInTitle pathInTitle_;  // of the known path
  const WindowId id_;
};

using WindowList = std::vector<std::shared_ptr<OfficeWindow>>;

}  // namespace pellar
