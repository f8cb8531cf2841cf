#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace pellar {

// A point in time in a property list.
struct PropertyListDate {
  double secondsSince1970 = 0;
  friend bool operator==(const PropertyListDate&, const PropertyListDate&) = default;
};

// A value in a property list, down to its leaves. Strings are UTF-8.
struct PropertyListValue {
  using Data = std::vector<std::byte>;
  using Array = std::vector<PropertyListValue>;
  using Dictionary = std::map<std::string, PropertyListValue>;

  std::variant<bool, std::int64_t, double, std::string, PropertyListDate, Data, Array, Dictionary> content;

  // The content when it is of that type; else null.
  template <class T>
  [[nodiscard]] const T* as() const {
    return std::get_if<T>(&content);
  }
  friend bool operator==(const PropertyListValue&, const PropertyListValue&) = default;
};

// Reads property lists, binary and XML. A system whose programs keep none may read none.
class PropertyLists {
 public:
  virtual ~PropertyLists() = default;

  // The dictionary in a file. Absent when there is no such file, when it cannot be read, is damaged or holds
  // something else, and when it is so large or nested so deep that the caller, who waits, would be held up.
  [[nodiscard]] virtual std::optional<PropertyListValue::Dictionary> read(
      const std::filesystem::path& file) = 0;
};

}  // namespace pellar
