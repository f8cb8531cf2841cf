#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/sim/office/ScriptValue.h"
#include "platform/sim/office/ScriptedApplication.h"
#include "platform/sim/office/SimOffice.h"

namespace pellar {

// What a running script has.
struct ScriptRun {
  SimOffice& office;
  std::map<std::string, ScriptValue> variables = {};
  std::optional<ScriptedApplication> told = std::nullopt;  // inside a `tell` block
  std::optional<ScriptValue> returned = std::nullopt;      // ends the script
};

// A part of a script that can be run; yields its value. Throws a ScriptError.
using ScriptCode = std::function<ScriptValue(ScriptRun&)>;

// Compiles the forms of AppleScript that the program uses, with the words of the application addressed, and
// nothing else. Throws a ScriptError for anything not known.
[[nodiscard]] ScriptCode compiledScript(std::string_view source);

}  // namespace pellar
