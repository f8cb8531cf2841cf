#pragma once

#include <cstddef>

#include "platform/PropertyLists.h"

namespace pellar {

// Property lists by NSPropertyListSerialization.
class MacPropertyLists final : public PropertyLists {
 public:
  // Larger files are not read: parsing one takes longer than somebody types.
  static constexpr std::size_t largestFile = 16U << 20U;
  // The parser recurses into arrays and dictionaries. Binary lists are looked through beforehand; of an XML
  // list it is only counted how many there are, which all could be nested: the main thread's stack of 8 MB
  // has 2 KB for each.
  static constexpr int deepestNesting = 64;
  static constexpr std::size_t mostXmlContainers = 4'000;

  [[nodiscard]] std::optional<PropertyListValue::Dictionary> read(const std::filesystem::path& file) override;
};

}  // namespace pellar
