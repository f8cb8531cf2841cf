#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "platform/sim/faults/ForwardingWorkspace.h"

namespace pellar {

// Forwards to another Workspace and breaks what it is told to.
class FaultyWorkspace final : public ForwardingWorkspace {
 public:
  using ForwardingWorkspace::ForwardingWorkspace;

  bool namesNobodyInFront = false;      // no application is ever in front
  bool withholdsTerminatedPid = false;  // terminations do not say whose
  bool ignoresActivate = false;

  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override {
    return namesNobodyInFront ? std::nullopt : ForwardingWorkspace::frontmostApplication();
  }
  void activate(ProcessId pid) override {
    if (!ignoresActivate) ForwardingWorkspace::activate(pid);
  }
  [[nodiscard]] Subscription onTerminated(std::function<void(std::optional<ProcessId>)> callback) override {
    return ForwardingWorkspace::onTerminated(
        [this, callback = std::move(callback)](std::optional<ProcessId> pid) {
          callback(withholdsTerminatedPid ? std::nullopt : pid);
        });
  }
};

}  // namespace pellar
