#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/Workspace.h"

namespace pellar {

// Passes every call on. Override the calls that are to break.
class ForwardingWorkspace : public Workspace {
 public:
  explicit ForwardingWorkspace(Workspace& sound) : sound_(sound) {}

  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override {
    return sound_.frontmostApplication();
  }
  [[nodiscard]] std::optional<std::string> ownBundleId() const override { return sound_.ownBundleId(); }
  void activate(ProcessId pid) override { sound_.activate(pid); }
  void activateIgnoringOtherApps() override { sound_.activateIgnoringOtherApps(); }
  void open(const std::string& path) override { sound_.open(path); }
  void openUrl(const std::string& url) override { sound_.openUrl(url); }
  [[nodiscard]] std::optional<std::string> displayName(const std::string& bundleId) const override {
    return sound_.displayName(bundleId);
  }
  [[nodiscard]] bool isRunning(const std::string& bundleId) const override {
    return sound_.isRunning(bundleId);
  }
  void activateFileViewerSelecting(const std::string& path) override {
    sound_.activateFileViewerSelecting(path);
  }
  [[nodiscard]] Subscription onActivated(std::function<void()> callback) override {
    return sound_.onActivated(std::move(callback));
  }
  [[nodiscard]] Subscription onLaunched(std::function<void(ProcessId)> callback) override {
    return sound_.onLaunched(std::move(callback));
  }
  [[nodiscard]] Subscription onActiveSpaceChanged(std::function<void()> callback) override {
    return sound_.onActiveSpaceChanged(std::move(callback));
  }
  [[nodiscard]] Subscription onTerminated(std::function<void(std::optional<ProcessId>)> callback) override {
    return sound_.onTerminated(std::move(callback));
  }

 private:
  Workspace& sound_;
};

}  // namespace pellar
