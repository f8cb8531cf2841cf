#include "platform/sim/office/SimScripts.h"

#include "platform/sim/office/ScriptCompiler.h"
#include "platform/sim/office/ScriptError.h"

namespace pellar {

ScriptResult SimScripts::run(const std::string& source) {
  sources_.push_back(source);
  return answer ? answer(source) : interpret(source);
}

ScriptResult SimScripts::interpret(const std::string& source) {
  try {
    const ScriptCode script = compiledScript(source);
    ScriptRun run{office_};
    return {script(run).descriptor(), std::nullopt};
  } catch (const ScriptError& error) {
    return {std::nullopt, error.description()};
  }
}

}  // namespace pellar
