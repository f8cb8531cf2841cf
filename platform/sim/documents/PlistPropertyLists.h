#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "platform/PropertyLists.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

// The property lists of the simulated Mac, which keeps them in real files.
class PlistPropertyLists final : public PropertyLists {
 public:
  // Larger files are not read: parsing one would hold up what is typed, and no list of recently used
  // documents comes near it.
  static constexpr std::size_t largestFile = 16U << 20U;
  // Values nested deeper are not read: the parser and its clean-up recurse. A list of bookmarks has three
  // levels.
  static constexpr int deepestNesting = 64;
  // An XML list with more arrays and dictionaries is not read, for the same reason: so many could be nested.
  static constexpr std::size_t mostXmlContainers = 50'000;

  explicit PlistPropertyLists(SimMainLoop& loop) : loop_(loop) {}

  [[nodiscard]] std::optional<PropertyListValue::Dictionary> read(const std::filesystem::path& file) override;

  // What others do while this program's main thread is held up by a read: the first time, the user is asked
  // whether it may look into another program's data (NSAppDataUsageDescription).
  std::function<void(const std::filesystem::path& file)> whileReading;

  // What read() makes of the content of a file, which is not larger than `largestFile`.
  [[nodiscard]] static std::optional<PropertyListValue::Dictionary> dictionaryIn(const std::string& content);

 private:
  SimMainLoop& loop_;
};

}  // namespace pellar
