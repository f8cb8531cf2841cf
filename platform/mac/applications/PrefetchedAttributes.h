#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/Accessibility.h"

namespace pellar {

// What was fetched in one round trip for each element. Every value answers one read, and nothing outlives
// clear().
class PrefetchedAttributes {
 public:
  // Forgets what it has and fetches anew.
  void fetch(std::span<const Element> elements, std::span<const std::string_view> attributes);
  void clear() { entries_.clear(); }

  // How many fetches, of all so far, no application answered.
  [[nodiscard]] std::uint64_t unanswered() const { return unanswered_; }

  // The fetched answer to a read, itself absent when the attribute has no value; absent when it must be read.
  [[nodiscard]] std::optional<std::optional<AttributeValue>> take(const Element& element,
                                                                  std::string_view name);

 private:
  struct Entry {
    Element element;
    std::string name;
    std::optional<AttributeValue> value;
  };
  std::uint64_t unanswered_ = 0;
  std::unordered_map<WindowId, std::vector<Entry>> entries_;  // by the element's hash
};

}  // namespace pellar
