#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

// JSON as it comes from files and servers.
namespace pellar::JsonText {

// The value that the text stands for; discarded when it is no JSON, has a zero byte, which a parser would
// take for the end, or is nested so deep that it costs more memory than its length. A number beyond every
// double is read as a list, so that it has the wrong type under a key for numbers, and does no harm under
// others.
nlohmann::json parsed(std::string_view text);

// Stores the text and says whether there was one.
bool decode(const nlohmann::json& json, std::string& value);

}  // namespace pellar::JsonText
