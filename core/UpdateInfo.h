#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pellar {

// The terms of use that users must have accepted.
struct UpdateEula {
  std::string version;
  std::optional<std::string> url = std::nullopt;  // of the full terms
  friend bool operator==(const UpdateEula&, const UpdateEula&) = default;
};

// What the product's web site says of the newest release. The texts are as the site sent them: valid UTF-8,
// and addresses that may be anything.
struct UpdateInfo {
  std::string latest;                               // the newest version
  std::optional<std::string> min = std::nullopt;    // the oldest version that is still to be used
  std::optional<std::string> notes = std::nullopt;  // what is new
  std::optional<std::string> url = std::nullopt;    // where to download it
  std::optional<UpdateEula> eula = std::nullopt;
  friend bool operator==(const UpdateInfo&, const UpdateInfo&) = default;
};

// The record as a JSON object, absent values left out.
std::string encodeUpdateInfo(const UpdateInfo& info);

// Absent unless the text is a JSON object with every required key, and every known key has its type; null
// stands for an absent optional value. Other keys are ignored.
std::optional<UpdateInfo> decodeUpdateInfo(std::string_view text);

}  // namespace pellar
