#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/OfficeApp.h"

namespace pellar {

// What a script asks of an Office application. The simulated applications know the few scripts they are sent
// by their whole text, each with its application's own words, and nothing else of the language.
struct OfficeScript {
  enum class Kind : std::uint8_t { pathsByName, saveChanged, saveAll, newDocument, saveAs };

  Kind kind;
  OfficeApp app;
  std::string documentName = {};  // of `saveAs`, as the script means it: without quotes and escapes
  std::string newPath = {};       // likewise

  // Absent for a text that is none of them.
  [[nodiscard]] static std::optional<OfficeScript> of(std::string_view source);
};

}  // namespace pellar
