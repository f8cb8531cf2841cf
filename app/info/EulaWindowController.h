#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Application.h"
#include "platform/Windows.h"
#include "platform/Workspace.h"

namespace pellar {

// The window with the end-user agreement, which can only be accepted or refused. Main thread only.
class EulaWindowController {
 public:
  // The ports outlive this. `onAccept` runs once at most, and may destroy this object.
  EulaWindowController(Windows& windows, Workspace& workspace, Application& application,
                       const std::string& version, const std::string& termsUrl,
                       std::function<void()> onAccept);
  EulaWindowController(const EulaWindowController&) = delete;
  EulaWindowController& operator=(const EulaWindowController&) = delete;

  [[nodiscard]] PlainWindow& window() { return *window_; }

 private:
  std::shared_ptr<PlainWindow> window_;
};

}  // namespace pellar
