#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/UserNotifications.h"

namespace pellar {

// Knows which newer versions the server has offered in a good answer: no other may be announced.
class UpdateWatch {
 public:
  void offered(const std::string& version) { versions_.insert(version); }

  // Whether the log may have this line.
  [[nodiscard]] bool mayBeWritten(std::string_view message) const;
  // What is wrong with the announcements; nothing when all is as it must be.
  [[nodiscard]] std::optional<std::string> compare(const std::vector<UserNotification>& shown) const;

 private:
  std::set<std::string> versions_;
};

}  // namespace pellar
