#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "app/tracking/ObservedApplication.h"
#include "app/tracking/OfficeWindow.h"
#include "app/tracking/RetrySeries.h"
#include "app/tracking/TabOrder.h"
#include "core/Geometry.h"
#include "core/TrackedApp.h"
#include "platform/Accessibility.h"
#include "platform/MainLoop.h"
#include "platform/Workspace.h"

namespace pellar {

class WindowTracker;

// Who receives the tracker's pictures.
class WindowTrackerDelegate {
 public:
  virtual ~WindowTrackerDelegate() = default;
  // The complete current picture, windows in tab order; given on every refresh, changed or not. Without an
  // application there are no windows and no front. May call the tracker.
  virtual void tracker(WindowTracker& tracker, const std::optional<TrackedApp>& app,
                       const WindowList& windows, const std::shared_ptr<OfficeWindow>& front) = 0;
};

// Keeps the picture of the frontmost application's windows. Learns of changes from the workspace and from an
// observer on every process it has tracked. An application that takes no registrations, or answers no reads,
// is tried again a few times, since it says nothing when it is ready; there is no other polling. Main thread
// only.
class WindowTracker : public std::enable_shared_from_this<WindowTracker> {
 public:
  static std::shared_ptr<WindowTracker> create(Accessibility& accessibility, Workspace& workspace,
                                               MainLoop& mainLoop);
  WindowTracker(const WindowTracker&) = delete;
  WindowTracker& operator=(const WindowTracker&) = delete;

  std::weak_ptr<WindowTrackerDelegate> delegate;
  // Whether an application is followed.
  std::function<bool(const TrackedApp&)> isEnabled = [](const TrackedApp&) { return true; };

  // Follows the workspace from now on and refreshes once.
  void start();
  // Rebuilds the picture and reports it. Asked for while the picture is being read, however often, it runs
  // once after that.
  void refresh();
  // Has the next turn of the main queue refresh, once however often it is asked.
  void scheduleRefresh();
  // Moves a tab to `index` among the others, clamped, and reports. An unknown identifier changes nothing.
  void move(WindowId id, int index);
  // Moves and resizes a window, trying again while it comes closer, and records the frame it took. Reports
  // nothing.
  void setFrame(OfficeWindow& window, const AxRect& rect);

  [[nodiscard]] const std::optional<TrackedApp>& app() const { return app_; }
  [[nodiscard]] ProcessId pid() const { return pid_; }  // of the last tracked application; 0 before the first
  [[nodiscard]] const WindowList& windows() const { return windows_; }
  [[nodiscard]] const std::shared_ptr<OfficeWindow>& front() const { return front_; }

 private:
  class Reading;
  struct Listed {
    WindowList kept;        // those that get a tab
    WindowList passedOver;  // records of those that get none, or none any more
  };

  WindowTracker(Accessibility& accessibility, Workspace& workspace, MainLoop& mainLoop);

  [[nodiscard]] std::optional<RunningApplication> trackableApplication() const;
  void readPicture(TrackedApp app, ProcessId pid);
  void tried(bool observed, bool answered);
  // Absent when the application does not say which windows it has.
  [[nodiscard]] std::optional<Listed> readWindows(const Element& appElement, const TrackedApp& app,
                                                  ProcessId pid);
  // The windows of the last picture that will not come back to it.
  [[nodiscard]] WindowList gone(const Listed& listed);
  [[nodiscard]] static std::shared_ptr<OfficeWindow> frontOf(const WindowList& windows,
                                                             const std::optional<Element>& focused);
  // Whether its notifications are heard.
  bool ensureObserver(ProcessId pid, const Element& appElement);
  void storeNothing();
  void leaveApplication();
  void report();

  Accessibility& accessibility_;
  Workspace& workspace_;
  MainLoop& mainLoop_;
  std::optional<TrackedApp> app_;
  ProcessId pid_ = 0;
  WindowList windows_;
  TabOrder order_;
  std::shared_ptr<OfficeWindow> front_;
  bool pendingRefresh_ = false;
  Reading* reading_ = nullptr;  // while a picture is being read
  std::unordered_map<ProcessId, std::unique_ptr<ObservedApplication>> observers_;
  RetrySeries registering_;  // of the application in front, while it takes no registrations
  RetrySeries answering_;    // while it answers no reads
  Subscription launched_;
  Subscription activated_;
  Subscription spaceChanged_;
  Subscription terminated_;
};

}  // namespace pellar
