#include "platform/sim/documents/PlistPropertyLists.h"

#include <plist/plist.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

#include "platform/shared/documents/BinaryPropertyList.h"
#include "platform/shared/documents/XmlPropertyList.h"

namespace pellar {
namespace {

constexpr double secondsFrom1970To2001 = 978'307'200;

struct FreeNode {
  void operator()(void* node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, FreeNode>;

struct FreeMemory {
  void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using Owned = std::unique_ptr<T, FreeMemory>;

// The whole content of a regular file, unless there is too much of it. Anything else could make the reader
// wait for ever.
std::optional<std::string> contentOf(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
  const auto size = std::filesystem::file_size(file, error);
  if (error || size > PlistPropertyLists::largestFile) return std::nullopt;
  std::ifstream stream(file, std::ios::binary);
  // Room for one byte more tells a file that has grown meanwhile.
  std::string content(static_cast<std::size_t>(size) + 1, '\0');
  stream.read(content.data(), static_cast<std::streamsize>(content.size()));
  const auto count = static_cast<std::size_t>(stream.gcount());
  if (stream.bad() || count > size) return std::nullopt;
  content.resize(count);
  return content;
}

Node parsed(const std::string& text) {
  plist_t node = nullptr;
  const auto length = static_cast<std::uint32_t>(text.size());
  if (text.starts_with("bplist")) {
    if (BinaryPropertyList::isSafeToParse(text, PlistPropertyLists::deepestNesting))
      plist_from_bin(text.data(), length, &node);
  } else if (XmlPropertyList::isSafeToParse(text, PlistPropertyLists::mostXmlContainers)) {
    plist_from_xml(text.data(), length, &node);
  }
  return Node(node);
}

std::optional<PropertyListValue> valueOf(plist_t node, int deepest);

std::optional<PropertyListValue::Dictionary> dictionaryOf(plist_t node, int deepest) {
  if (deepest <= 0) return std::nullopt;
  plist_dict_iter raw = nullptr;
  plist_dict_new_iter(node, &raw);
  const Owned<void> iterator(raw);
  PropertyListValue::Dictionary dictionary;
  for (;;) {
    char* key = nullptr;
    plist_t item = nullptr;
    plist_dict_next_item(node, raw, &key, &item);
    const Owned<char> owned(key);
    if (item == nullptr) return dictionary;
    auto value = valueOf(item, deepest - 1);
    if (!value) return std::nullopt;
    if (key != nullptr) dictionary.insert_or_assign(key, std::move(*value));
  }
}

std::optional<PropertyListValue::Array> arrayOf(plist_t node, int deepest) {
  if (deepest <= 0) return std::nullopt;
  plist_array_iter raw = nullptr;
  plist_array_new_iter(node, &raw);
  const Owned<void> iterator(raw);
  PropertyListValue::Array array;
  for (;;) {
    plist_t item = nullptr;
    plist_array_next_item(node, raw, &item);
    if (item == nullptr) return array;
    auto value = valueOf(item, deepest - 1);
    if (!value) return std::nullopt;
    array.push_back(std::move(*value));
  }
}

PropertyListDate dateOf(plist_t node) {
  std::int32_t seconds = 0;
  std::int32_t microseconds = 0;
  plist_get_date_val(node, &seconds, &microseconds);
  return {secondsFrom1970To2001 + seconds + microseconds / 1e6};
}

PropertyListValue::Data dataOf(plist_t node) {
  std::uint64_t length = 0;
  const char* const bytes = plist_get_data_ptr(node, &length);
  PropertyListValue::Data data(bytes == nullptr ? 0 : static_cast<std::size_t>(length));
  if (!data.empty()) std::memcpy(data.data(), bytes, data.size());
  return data;
}

// Absent when it is nested too deep or of a kind that has no place in a file's list.
std::optional<PropertyListValue> valueOf(plist_t node, int deepest) {
  const auto value = [](auto&& content) {
    return PropertyListValue{std::forward<decltype(content)>(content)};
  };
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
      std::uint8_t content = 0;
      plist_get_bool_val(node, &content);
      return value(content != 0);
    }
    case PLIST_UINT: {
      std::uint64_t content = 0;
      plist_get_uint_val(node, &content);
      return value(static_cast<std::int64_t>(content));
    }
    case PLIST_REAL: {
      double content = 0;
      plist_get_real_val(node, &content);
      return value(content);
    }
    case PLIST_STRING: {
      std::uint64_t length = 0;
      const char* const text = plist_get_string_ptr(node, &length);
      return value(text == nullptr ? std::string() : std::string(text, static_cast<std::size_t>(length)));
    }
    case PLIST_DATE:
      return value(dateOf(node));
    case PLIST_DATA:
      return value(dataOf(node));
    case PLIST_ARRAY:
      if (auto array = arrayOf(node, deepest)) return value(std::move(*array));
      return std::nullopt;
    case PLIST_DICT:
      if (auto dictionary = dictionaryOf(node, deepest)) return value(std::move(*dictionary));
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

}  // namespace

std::optional<PropertyListValue::Dictionary> PlistPropertyLists::read(const std::filesystem::path& file) {
  loop_.holdUp({}, [&] {
    if (whileReading) whileReading(file);
  });
  const auto content = contentOf(file);
  return content ? dictionaryIn(*content) : std::nullopt;
}

std::optional<PropertyListValue::Dictionary> PlistPropertyLists::dictionaryIn(const std::string& content) {
  const Node root = parsed(content);
  if (!root || plist_get_node_type(root.get()) != PLIST_DICT) return std::nullopt;
  return dictionaryOf(root.get(), deepestNesting);
}

}  // namespace pellar
