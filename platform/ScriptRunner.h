#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace pellar {

// What a script returned (NSAppleEventDescriptor, as far as it is used here).
struct ScriptDescriptor {
  // A list holds descriptors; the platform counts them from 1, this from 0.
  std::variant<std::string, std::int32_t, std::vector<ScriptDescriptor>> value;

  // The text, also of a number; absent for a list.
  [[nodiscard]] std::optional<std::string> stringValue() const {
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* number = std::get_if<std::int32_t>(&value)) return std::to_string(*number);
    return std::nullopt;
  }
  // The items of a list; none for anything else.
  [[nodiscard]] const std::vector<ScriptDescriptor>& items() const {
    static const std::vector<ScriptDescriptor> none;
    const auto* list = std::get_if<std::vector<ScriptDescriptor>>(&value);
    return list != nullptr ? *list : none;
  }
  friend bool operator==(const ScriptDescriptor&, const ScriptDescriptor&) = default;
};

struct ScriptResult {
  std::optional<ScriptDescriptor> descriptor;  // absent when the script failed or cannot run here
  std::optional<std::string> error;            // the system's description of a failed execution
};

// Compiles and executes AppleScript in this process. Main thread only.
class ScriptRunner {
 public:
  virtual ~ScriptRunner() = default;
  // Blocks until the applications that the script addresses answered; the main loop may run nested meanwhile.
  [[nodiscard]] virtual ScriptResult run(const std::string& source) = 0;
};

}  // namespace pellar
