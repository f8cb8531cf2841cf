#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Workspace.h"
#include "platform/sim/applications/SimDesktop.h"

namespace pellar {

// The workspace of the simulated desktop. An activation is a request, as NSRunningApplication.h says of
// -activateFromApplication:options: ("You shouldn't assume the app will be active immediately after sending
// this message"): it happens a turn later, or after `activationTime`.
class SimWorkspace final : public Workspace {
 public:
  SimWorkspace(SimDesktop& desktop, SimMainLoop& loop) : desktop_(desktop), loop_(loop) {}

  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override {
    return desktop_.frontmost();
  }
  [[nodiscard]] std::optional<std::string> ownBundleId() const override { return desktop_.pellarBundleId; }
  void activate(ProcessId pid) override {
    requested_.push_back(pid);
    if (const auto front = desktop_.frontmost(); front && front->pid == pid) return;
    later([this, pid] { desktop_.activate(pid); });
  }
  void activateIgnoringOtherApps() override {
    later([this] { desktop_.activatePellar(); });
  }
  void open(const std::string& path) override {
    opened_.push_back(path);
    if (onOpen) onOpen(path);
  }
  void openUrl(const std::string& url) override { openedUrls_.push_back(url); }
  [[nodiscard]] std::optional<std::string> displayName(const std::string& bundleId) const override {
    const auto found = installed.find(bundleId);
    return found == installed.end() ? std::nullopt : std::optional(found->second);
  }
  [[nodiscard]] bool isRunning(const std::string& bundleId) const override {
    return std::ranges::any_of(desktop_.frontToBack(), [&](const auto& each) {
      return each->running && each->description.bundleId == bundleId;
    });
  }
  void activateFileViewerSelecting(const std::string& path) override { revealed_.push_back(path); }
  [[nodiscard]] Subscription onActivated(std::function<void()> callback) override {
    return desktop_.activated().add(std::move(callback));
  }
  [[nodiscard]] Subscription onLaunched(std::function<void(ProcessId)> callback) override {
    return desktop_.launched().add(std::move(callback));
  }
  [[nodiscard]] Subscription onActiveSpaceChanged(std::function<void()> callback) override {
    return desktop_.spaceChanged().add(std::move(callback));
  }
  [[nodiscard]] Subscription onTerminated(std::function<void(std::optional<ProcessId>)> callback) override {
    return desktop_.terminated().add(std::move(callback));
  }

  // How long an activation takes; none is done within the turn that asks for it.
  std::chrono::milliseconds activationTime{0};

  // What opening a file does on this Mac, for instance that its application shows a window for it.
  std::function<void(const std::string& path)> onOpen;

  // The installed applications' display names, by bundle identifier.
  std::map<std::string, std::string> installed;

  // Every address that the program opened, in order.
  [[nodiscard]] const std::vector<std::string>& openedUrls() const { return openedUrls_; }
  // Every file that the program opened, and every one it showed in its folder, in order.
  [[nodiscard]] const std::vector<std::string>& opened() const { return opened_; }
  [[nodiscard]] const std::vector<std::string>& revealed() const { return revealed_; }
  // Every process that the program asked to activate, in order.
  [[nodiscard]] const std::vector<ProcessId>& requestedActivations() const { return requested_; }

 private:
  void later(std::function<void()> activation) {
    if (activationTime.count() == 0) return loop_.post(std::move(activation));
    loop_.later(activationTime, std::move(activation));
  }

  SimDesktop& desktop_;
  SimMainLoop& loop_;
  std::vector<ProcessId> requested_;
  std::vector<std::string> opened_;
  std::vector<std::string> openedUrls_;
  std::vector<std::string> revealed_;
};

}  // namespace pellar
