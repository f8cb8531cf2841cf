#pragma once

#include <string>

#include "platform/ScriptRunner.h"

namespace pellar {

// There is no AppleScript here: a run returns nothing, and nothing is the matter.
class NoScripts final : public ScriptRunner {
 public:
  [[nodiscard]] ScriptResult run(const std::string& /*source*/) override { return {}; }
};

}  // namespace pellar
