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

  bool withholdsTerminatedPid = false;  // terminations do not say whose
  bool ignoresActivate = false;

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
