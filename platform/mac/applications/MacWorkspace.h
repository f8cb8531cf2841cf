#pragma once

#include "platform/Workspace.h"

namespace pellar {

// NSWorkspace and NSRunningApplication.
class MacWorkspace final : public Workspace {
 public:
  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override;
  [[nodiscard]] std::optional<std::string> ownBundleId() const override;
  void activate(ProcessId pid) override;
  void activateIgnoringOtherApps() override;
  void open(const std::string& path) override;
  void openUrl(const std::string& url) override;
  [[nodiscard]] std::optional<std::string> displayName(const std::string& bundleId) const override;
  [[nodiscard]] bool isRunning(const std::string& bundleId) const override;
  void activateFileViewerSelecting(const std::string& path) override;
  [[nodiscard]] Subscription onActivated(std::function<void()> callback) override;
  [[nodiscard]] Subscription onLaunched(std::function<void(ProcessId)> callback) override;
  [[nodiscard]] Subscription onActiveSpaceChanged(std::function<void()> callback) override;
  [[nodiscard]] Subscription onTerminated(std::function<void(std::optional<ProcessId>)> callback) override;
};

}  // namespace pellar
