#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/NameMap.h"
#include "core/Settings.h"

namespace pellar {

// The colours a file can be tagged with, in the order they are offered.
enum class TagColor { red, orange, yellow, green, blue, purple };

inline constexpr std::array allTagColors{TagColor::red,   TagColor::orange, TagColor::yellow,
                                         TagColor::green, TagColor::blue,   TagColor::purple};

// The name under which a colour is stored.
std::string_view rawValue(TagColor color);
// Exact, case-sensitive; absent for anything else.
std::optional<TagColor> tagColorWithRawValue(std::string_view rawValue);

// Everything remembered between runs.
struct AppState {
  NameMap<std::string> tags;                 // TabLabel::tagKey -> TagColor raw value
  NameMap<std::vector<std::string>> groups;  // group name -> file paths in tab order
  Settings settings;
  NameMap<double> recent;          // POSIX path -> last use, seconds since 1970 UTC
  NameMap<std::string> recentApp;  // POSIX path -> key of the application last used with

  // The colour kept under a tag key; absent without one, and for one that is not known here.
  [[nodiscard]] std::optional<TagColor> tag(const std::string& key) const;

  // Records that `path` was used at `now` (seconds since 1970 UTC) with the application `app`; an absent
  // `app` leaves an earlier one in place. The path is kept as spelt last. Keeps the newest 300 paths.
  void touchRecent(const std::string& path, const std::optional<std::string>& app, double now);

  friend bool operator==(const AppState&, const AppState&) = default;
};

}  // namespace pellar
