#pragma once

#include "platform/ScriptRunner.h"

namespace pellar {

// NSAppleScript, which may be used on the main thread only and runs a nested loop while it waits for a reply.
class MacScriptRunner final : public ScriptRunner {
 public:
  [[nodiscard]] ScriptResult run(const std::string& source) override;
};

}  // namespace pellar
