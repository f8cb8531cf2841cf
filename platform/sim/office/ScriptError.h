#pragma once

#include <stdexcept>
#include <string>

namespace pellar {

// A failure of a simulated script, under the system's number for it. It never leaves SimScripts.
class ScriptError : public std::runtime_error {
 public:
  static constexpr int parameter = -50;
  static constexpr int userCanceled = -128;
  static constexpr int connectionInvalid = -609;
  static constexpr int timedOut = -1712;
  static constexpr int notPermitted = -1743;
  static constexpr int noSuchObject = -1728;
  static constexpr int syntax = -2741;
  static constexpr int handlerFailed = -10000;

  ScriptError(int number, const std::string& message) : std::runtime_error(message), number_(number) {}
  [[nodiscard]] int number() const { return number_; }

  // As the system's error dictionary reads when it is printed.
  [[nodiscard]] std::string description() const {
    std::string quoted;
    for (const char letter : std::string(what())) {
      if (letter == '"' || letter == '\\') quoted += '\\';
      quoted += letter;
    }
    return "{\n    NSAppleScriptErrorMessage = \"" + quoted + "\";\n    NSAppleScriptErrorNumber = \"" +
           std::to_string(number_) + "\";\n}";
  }

 private:
  int number_;
};

}  // namespace pellar
