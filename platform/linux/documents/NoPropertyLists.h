#pragma once

#include "platform/PropertyLists.h"

namespace pellar {

// Nothing here keeps property lists: no Office application of this system, and no other program that is
// asked.
class NoPropertyLists final : public PropertyLists {
 public:
  [[nodiscard]] std::optional<PropertyListValue::Dictionary> read(
      const std::filesystem::path& /*file*/) override {
    return std::nullopt;
  }
};

}  // namespace pellar
