#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "core/TabLabel.h"
#include "core/Utf8.h"

// Whatever the title, its label is valid text no longer than the repaired title; a path keeps its bytes as
// the key.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  namespace TabLabel = pellar::TabLabel;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::string label = TabLabel::label(text, std::nullopt);
  if (!pellar::Utf8::isValid(label) || label.size() > pellar::Utf8::repaired(text).size()) std::abort();
  if (TabLabel::tagKey(text, std::nullopt) != "title:" + label) std::abort();
  const std::string path(text);
  if (!pellar::Utf8::isValid(TabLabel::label("", path))) std::abort();
  if (!path.empty() && TabLabel::tagKey("", path) != path) std::abort();
  return 0;
}
