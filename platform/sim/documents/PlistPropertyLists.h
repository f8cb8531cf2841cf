#pragma once

#include <cstddef>
#include <string>

#include "platform/PropertyLists.h"

namespace pellar {

// The property lists of the simulated Mac, which keeps them in real files.
class PlistPropertyLists final : public PropertyLists {
 public:
  // Larger files are not read: parsing one takes longer than somebody types, and no list of recently used
  // documents comes near it.
  static constexpr std::size_t largestFile = 16U << 20U;
  // Values nested deeper are not read: the parser and its clean-up recurse. A list of bookmarks has three
  // levels.
  static constexpr int deepestNesting = 64;
  // An XML list with more arrays and dictionaries is not read, for the same reason: so many could be nested.
  static constexpr std::size_t mostXmlContainers = 50'000;

  [[nodiscard]] std::optional<PropertyListValue::Dictionary> read(const std::filesystem::path& file) override;

  // The same for the content of such a file, which is not larger than that.
  [[nodiscard]] static std::optional<PropertyListValue::Dictionary> dictionaryIn(const std::string& content);
};

}  // namespace pellar
