#include "tests/simulation/UpdateWatch.h"

#include <algorithm>

namespace pellar {

bool UpdateWatch::mayBeWritten(std::string_view message) const {
  return std::ranges::any_of(versions_, [&](const auto& version) {
    const std::string found = "update available: " + version + " (running 1.4.0), notify=";
    // The user looks by switching the looks on.
    return message == found + "true" || message == found + "false" ||
           message == "update notification auth granted=true; posting for " + version ||
           message == "update notification auth granted=false; posting for " + version;
  });
}

std::optional<std::string> UpdateWatch::compare(const std::vector<UserNotification>& shown) const {
  for (const auto& each : shown) {
    const bool right = std::ranges::any_of(versions_, [&](const auto& version) {
      return each.identifier == "pellar-update-" + version &&
             each.title == "Pellar " + version + " is available";
    });
    if (!right) return "an update is announced that nobody offered: " + each.title;
  }
  return std::nullopt;
}

}  // namespace pellar
