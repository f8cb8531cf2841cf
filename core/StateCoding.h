#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "core/AppState.h"

namespace pellar {

// The state file's text: pretty-printed JSON in UTF-8 with sorted keys, every key present. Times that are not
// finite and texts that are not valid UTF-8 are left out; the same state always yields the same bytes.
std::string encodeState(const AppState& state);

// The names and paths that encodeState() leaves out because they are not valid UTF-8.
std::set<std::string> namesLeftOut(const AppState& state);

// The state in the text. Keys that are missing or null take their defaults, unknown keys are ignored. Absent
// when the text is no JSON object or a key has a value of the wrong type, a null among its names included.
std::optional<AppState> decodeState(std::string_view text);

}  // namespace pellar
