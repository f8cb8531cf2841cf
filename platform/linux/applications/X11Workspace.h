#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/Workspace.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/applications/FileOpener.h"
#include "platform/linux/applications/FileViewer.h"
#include "platform/linux/applications/X11Accessibility.h"
#include "platform/linux/applications/X11Applications.h"
#include "platform/shared/system/CallbackList.h"

namespace pellar {

class MainLoop;

// The Workspace port: the application of the active window is the one in front. An application without
// windows does not exist for it.
class X11Workspace final : public Workspace {
 public:
  X11Workspace(X11Applications& applications, X11Accessibility& accessibility, MainLoop& loop);
  ~X11Workspace() override;

  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override;
  [[nodiscard]] std::optional<std::string> ownBundleId() const override {
    return X11Applications::ownBundleId;
  }
  void activate(ProcessId pid) override;
  void activateIgnoringOtherApps() override;
  void open(const std::string& path) override;
  void openUrl(const std::string& url) override;
  [[nodiscard]] std::optional<std::string> displayName(const std::string& bundleId) const override;
  [[nodiscard]] bool isRunning(const std::string& bundleId) const override {
    return applications_.withBundleId(bundleId) != nullptr;
  }
  void activateFileViewerSelecting(const std::string& path) override;
  // Also called when no application is in front any more.
  [[nodiscard]] Subscription onActivated(std::function<void()> callback) override {
    return activated_.add(std::move(callback));
  }
  // With its first window an application is there.
  [[nodiscard]] Subscription onLaunched(std::function<void(ProcessId)> callback) override {
    return launched_.add(std::move(callback));
  }
  [[nodiscard]] Subscription onActiveSpaceChanged(std::function<void()> callback) override {
    return desktopChanged_.add(std::move(callback));
  }
  [[nodiscard]] Subscription onTerminated(std::function<void(std::optional<ProcessId>)> callback) override {
    return terminated_.add(std::move(callback));
  }

 private:
  X11Applications& applications_;
  X11Accessibility& accessibility_;
  MainLoop& loop_;
  CallbackList<> activated_;
  CallbackList<ProcessId> launched_;
  CallbackList<std::optional<ProcessId>> terminated_;
  CallbackList<> desktopChanged_;
  // What is installed, from the first question for it until the loop's next turn.
  std::shared_ptr<std::optional<DesktopEntries>> installed_;
  FileOpener opener_;
  FileViewer viewer_;
};

}  // namespace pellar
