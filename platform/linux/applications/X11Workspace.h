#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/Workspace.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/applications/FileOpener.h"
#include "platform/linux/applications/FileViewer.h"
#include "platform/linux/applications/X11Accessibility.h"
#include "platform/linux/applications/X11Applications.h"

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
  [[nodiscard]] Subscription onActivated(std::function<void()> callback) override;
  [[nodiscard]] Subscription onTerminated(std::function<void(std::optional<ProcessId>)> callback) override;

 private:
  struct Listeners;

  X11Applications& applications_;
  X11Accessibility& accessibility_;
  MainLoop& loop_;
  std::shared_ptr<Listeners> listeners_;
  // What is installed, from the first question for it until the loop's next turn.
  std::shared_ptr<std::optional<DesktopEntries>> installed_;
  FileOpener opener_;
  FileViewer viewer_;
};

}  // namespace pellar
