#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/ScriptRunner.h"

namespace pellar {

// Keeps every script run and answers it as the test says; without an answer scripts return nothing.
class SimScripts final : public ScriptRunner {
 public:
  [[nodiscard]] ScriptResult run(const std::string& source) override {
    sources_.push_back(source);
    return answer ? answer(source) : ScriptResult{};
  }

  std::function<ScriptResult(const std::string& source)> answer;
  [[nodiscard]] const std::vector<std::string>& sources() const { return sources_; }

 private:
  std::vector<std::string> sources_;
};

}  // namespace pellar
