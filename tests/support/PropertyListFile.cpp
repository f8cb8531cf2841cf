#include "tests/support/PropertyListFile.h"

#include <plist/plist.h>

#include <stdexcept>

namespace pellar::test {

std::string xmlList(std::string_view value) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
         "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">\n" +
         std::string(value) + "\n</plist>\n";
}

std::string binaryList(std::string_view value) {
  const std::string xml = xmlList(value);
  plist_t list = nullptr;
  plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &list);
  char* bytes = nullptr;
  std::uint32_t length = 0;
  if (list != nullptr) plist_to_bin(list, &bytes, &length);
  plist_free(list);
  if (bytes == nullptr) throw std::runtime_error("this is no property list: " + xml);
  std::string binary(bytes, length);
  plist_to_bin_free(bytes);
  return binary;
}

std::string bookmark(std::string_view key, std::string_view lastUsed) {
  return "<key>" + std::string(key) + "</key><dict><key>kLastUsedDateKey</key><date>" +
         std::string(lastUsed) + "</date><key>kBookmarkDataKey</key><data>Ym9vaw==</data></dict>";
}

std::string bigEndian(std::uint64_t number, int width) {
  std::string bytes;
  for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
    bytes += static_cast<char>(number >> static_cast<unsigned>(shift) & 255U);
  return bytes;
}

std::string BinaryList::marker(unsigned kind, std::uint64_t count) {
  if (count < 15) return std::string(1, static_cast<char>(kind << 4U | count));
  return std::string(1, static_cast<char>(kind << 4U | 15U)) + '\x13' + bigEndian(count, 8);
}

std::uint32_t BinaryList::add(std::string bytes) {
  objects_.push_back(std::move(bytes));
  return static_cast<std::uint32_t>(objects_.size() - 1);
}

std::uint32_t BinaryList::text(std::string_view ascii) {
  return add(marker(0x5, ascii.size()) + std::string(ascii));
}

std::uint32_t BinaryList::array(const std::vector<std::uint32_t>& items) {
  std::string bytes = marker(0xA, items.size());
  for (const auto item : items) bytes += bigEndian(item, 4);
  return add(std::move(bytes));
}

std::uint32_t BinaryList::dictionary(const std::vector<std::uint32_t>& keysThenValues) {
  std::string bytes = marker(0xD, keysThenValues.size() / 2);
  for (const auto item : keysThenValues) bytes += bigEndian(item, 4);
  return add(std::move(bytes));
}

std::string BinaryList::bytes(std::uint32_t root) const {
  std::string list = "bplist00";
  std::string table;
  for (const auto& object : objects_) {
    table += bigEndian(list.size(), 8);
    list += object;
  }
  const auto tableOffset = list.size();
  list += table + std::string(6, '\0') + '\x08' + '\x04';
  return list + bigEndian(objects_.size(), 8) + bigEndian(root, 8) + bigEndian(tableOffset, 8);
}

}  // namespace pellar::test
