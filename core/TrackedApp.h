#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/OfficeApp.h"

namespace pellar {

// Any application whose windows are shown as tabs.
struct TrackedApp {
  std::string id;                   // the bundle identifier: the identity
  std::string name;                 // shown to the user
  std::optional<OfficeApp> office;  // absent for an application that is not one of the four

  static TrackedApp of(OfficeApp app);

  // The Office application's colour, or one of eight picked by the identifier, the same in every run.
  [[nodiscard]] RGB accentRGB() const;

  // A hash over the bytes that is the same in every run and on every machine. In 0...0x7FFFFFFF.
  static std::int64_t stableHash(std::string_view text);

  friend bool operator==(const TrackedApp&, const TrackedApp&) = default;
};

}  // namespace pellar
