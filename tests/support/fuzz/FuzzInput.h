#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pellar::test {

// The bytes of one input of a fuzz target, taken from the front as values. When they are used up, each
// further value is zero or empty.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size) : left_(reinterpret_cast<const char*>(data), size) {}

  [[nodiscard]] bool isUsedUp() const { return left_.empty(); }

  std::uint8_t byte() {
    const auto taken = take(1);
    return taken.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(taken.front());
  }
  // From 0, below `end`, which is at most 256.
  std::size_t below(std::size_t end) { return end == 0 ? 0 : byte() % end; }
  bool flag() { return (byte() & 1U) != 0; }
  std::uint32_t number() {
    std::uint32_t value = 0;
    for (int index = 0; index < 4; ++index) value = (value << 8U) | byte();
    return value;
  }
  // Behind a byte that says how long it is.
  std::string text() { return std::string(take(byte())); }

 private:
  std::string_view take(std::size_t count) {
    const auto taken = left_.substr(0, std::min(count, left_.size()));
    left_.remove_prefix(taken.size());
    return taken;
  }

  std::string_view left_;
};

}  // namespace pellar::test
