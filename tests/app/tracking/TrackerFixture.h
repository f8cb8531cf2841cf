#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/tracking/WindowTracker.h"
#include "platform/sim/applications/SimAccessibility.h"
#include "platform/sim/applications/SimDesktop.h"
#include "platform/sim/applications/SimWorkspace.h"
#include "platform/sim/system/SimMainLoop.h"
#include "tests/support/LogReader.h"

namespace pellar {

// Keeps the last picture.
class RecordingDelegate final : public WindowTrackerDelegate {
 public:
  void tracker(WindowTracker&, const std::optional<TrackedApp>& reported, const WindowList& list,
               const std::shared_ptr<OfficeWindow>& focused) override {
    ++reports;
    app = reported;
    windows = list;
    front = focused;
    if (onReport) onReport();
  }

  int reports = 0;
  std::optional<TrackedApp> app;
  WindowList windows;
  std::shared_ptr<OfficeWindow> front;
  std::function<void()> onReport;
};

// A tracker on a simulated desktop, with an editor that has no windows yet in front.
class TrackerTest : public testing::Test {
 protected:
  using Titles = std::vector<std::string>;

  TrackerTest() {
    tracker->delegate = delegate;
    editor = launch("org.example.editor", "Editor");
    desktop.activate(editor->description.pid);
  }

  SimApplicationPointer launch(std::optional<std::string> bundleId, std::optional<std::string> name,
                               ActivationPolicy policy = ActivationPolicy::regular) {
    auto application = desktop.launch(std::move(bundleId), std::move(name), policy);
    application->quirks.listsWindowsByCreation = true;
    return application;
  }
  SimWindowPointer open(const std::string& title, const AxRect& frame = {100, 100, 640, 480},
                        const std::string& subrole = "AXStandardWindow") {
    return desktop.open(*editor, title, frame, subrole);
  }
  void bringToFront(const SimApplicationPointer& application) {
    desktop.activate(application->description.pid);
  }
  void start() {
    tracker->start();
    settle();
  }
  void settle() { loop.runUntilIdle(); }

  [[nodiscard]] Titles tabs() const {
    Titles titles;
    for (const auto& window : delegate->windows) titles.push_back(window->title);
    return titles;
  }
  [[nodiscard]] std::string frontTitle() const { return delegate->front ? delegate->front->title : "(none)"; }
  [[nodiscard]] std::shared_ptr<OfficeWindow> tab(const std::string& title) const {
    for (const auto& window : delegate->windows)
      if (window->title == title) return window;
    return nullptr;
  }

  LogReader log;
  SimMainLoop loop;
  SimDesktop desktop{loop};
  SimAccessibility accessibility{desktop, loop};
  SimWorkspace workspace{desktop, loop};
  std::shared_ptr<RecordingDelegate> delegate = std::make_shared<RecordingDelegate>();
  std::shared_ptr<WindowTracker> tracker = WindowTracker::create(accessibility, workspace, loop);
  SimApplicationPointer editor;
};

}  // namespace pellar
