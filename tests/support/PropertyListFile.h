#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Property lists as other programs write them, and as nobody should.
namespace pellar::test {

// An XML property list around the XML of its value.
std::string xmlList(std::string_view value);
// The same list in the binary format, as the property list library writes it. Throws for XML that is none.
std::string binaryList(std::string_view value);

// One entry of an Office application's list of bookmarks: the file was last used then
// ("2024-05-01T12:00:00Z").
std::string bookmark(std::string_view key, std::string_view lastUsed);

// A binary property list put together by hand: objects as their bytes, with references of 4 bytes.
class BinaryList {
 public:
  // Each returns the number of the new object.
  std::uint32_t add(std::string bytes);
  std::uint32_t text(std::string_view ascii);
  std::uint32_t array(const std::vector<std::uint32_t>& items);
  std::uint32_t dictionary(const std::vector<std::uint32_t>& keysThenValues);
  [[nodiscard]] std::string bytes(std::uint32_t root) const;

  // The start of an object of a kind (0xA array, 0xD dictionary, 0x5 text ...) that holds that many things.
  static std::string marker(unsigned kind, std::uint64_t count);

 private:
  std::vector<std::string> objects_;
};

// A number in big-endian bytes.
std::string bigEndian(std::uint64_t number, int width);

}  // namespace pellar::test
