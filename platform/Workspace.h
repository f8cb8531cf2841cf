#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/Accessibility.h"
#include "platform/Subscription.h"

namespace pellar {

// How an application takes part in the desktop (NSApplicationActivationPolicy).
enum class ActivationPolicy { regular = 0, accessory = 1, prohibited = 2 };

// A running application as the workspace describes it.
struct RunningApplication {
  ProcessId pid = 0;
  std::optional<std::string> bundleId;       // absent for a process without a bundle
  std::optional<std::string> localizedName;  // absent when it has none
  ActivationPolicy policy = ActivationPolicy::regular;
  friend bool operator==(const RunningApplication&, const RunningApplication&) = default;
};

// Which application is in front, and what becomes of applications. Main thread only.
class Workspace {
 public:
  virtual ~Workspace() = default;

  // The application in front; absent when there is none.
  [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() const = 0;

  // This program's own bundle identifier; absent when it runs without a bundle.
  [[nodiscard]] virtual std::optional<std::string> ownBundleId() const = 0;

  // Brings the application of a process to the front, without its other windows. A process that does not
  // exist, or that is in front already, changes nothing.
  virtual void activate(ProcessId pid) = 0;

  // Brings this program to the front, over whatever is there, so that a window of its own can be worked in.
  virtual void activateIgnoringOtherApps() = 0;

  // Opens a file, by its absolute path, with the application that owns its kind. A failure is the system's to
  // tell.
  virtual void open(const std::string& path) = 0;

  // Opens an address with the application that owns its scheme. A failure is the system's to tell.
  virtual void openUrl(const std::string& url) = 0;

  // The name that the user knows an installed application by; absent when none has this identifier.
  [[nodiscard]] virtual std::optional<std::string> displayName(const std::string& bundleId) const = 0;

  // Whether an application with this identifier is running.
  [[nodiscard]] virtual bool isRunning(const std::string& bundleId) const = 0;

  // Opens the folder of a file, by its absolute path, with the file selected.
  virtual void activateFileViewerSelecting(const std::string& path) = 0;

  // An application came to the front.
  [[nodiscard]] virtual Subscription onActivated(std::function<void()> callback) = 0;

  // An application has finished launching. It may still be deaf to who asks it.
  [[nodiscard]] virtual Subscription onLaunched(std::function<void(ProcessId)> callback) = 0;

  // Another space (desktop) is shown. Which application is in front need not change by it.
  [[nodiscard]] virtual Subscription onActiveSpaceChanged(std::function<void()> callback) = 0;

  // An application ended. The argument is absent when the system does not say which.
  [[nodiscard]] virtual Subscription onTerminated(std::function<void(std::optional<ProcessId>)> callback) = 0;
};

// Whether an application is this program. Also where neither has an identifier to tell.
[[nodiscard]] inline bool isThisProgram(const RunningApplication& application, const Workspace& workspace) {
  return application.bundleId == workspace.ownBundleId();
}

}  // namespace pellar
