#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/ScriptRunner.h"
#include "platform/sim/office/SimOffice.h"

namespace pellar {

// Runs scripts on the simulated Office applications and keeps the text of each.
class SimScripts final : public ScriptRunner {
 public:
  explicit SimScripts(SimOffice& office) : office_(office) {}

  [[nodiscard]] ScriptResult run(const std::string& source) override;

  // What the applications really do with a script, whatever `answer` says.
  [[nodiscard]] ScriptResult interpret(const std::string& source);

  // Answers in place of the applications.
  std::function<ScriptResult(const std::string& source)> answer;
  [[nodiscard]] const std::vector<std::string>& sources() const { return sources_; }

 private:
  SimOffice& office_;
  std::vector<std::string> sources_;
};

}  // namespace pellar
