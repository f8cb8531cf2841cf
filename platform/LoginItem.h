#pragma once

#include <optional>
#include <string>

namespace pellar {

// Whether the system starts this program when the user logs in. Main thread only.
class LoginItem {
 public:
  virtual ~LoginItem() = default;

  // Reads the system's status anew: the user may change it elsewhere.
  [[nodiscard]] virtual bool isEnabled() const = 0;

  // Registers the program, or takes it back. Absent on success, else the system's description of what failed;
  // the status is then what it was.
  virtual std::optional<std::string> setEnabled(bool enabled) = 0;
};

}  // namespace pellar
