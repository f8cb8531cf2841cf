#pragma once

#include <optional>
#include <string>

namespace pellar {

// What the system says of the login item (SMAppServiceStatus).
enum class LoginItemStatus {
  notRegistered = 0,
  enabled = 1,
  requiresApproval = 2,  // registered, but the user has not allowed it in the system's settings, or no longer
  notFound = 3,          // the system knows no such program, for instance one without a bundle
};

// Whether the system starts this program when the user logs in. Main thread only.
class LoginItem {
 public:
  virtual ~LoginItem() = default;

  // Reads the system's status anew: the user may change it elsewhere.
  [[nodiscard]] virtual LoginItemStatus status() const = 0;

  // Registers the program, or takes it back. Absent on success, which may still require approval, else the
  // system's description of what failed.
  virtual std::optional<std::string> setEnabled(bool enabled) = 0;

  // Opens the system's settings where the user allows programs to start at login. Nothing happens where no
  // approval is ever required.
  virtual void openSettings() = 0;
};

}  // namespace pellar
