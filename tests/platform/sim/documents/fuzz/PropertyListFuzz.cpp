#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/sim/documents/PlistPropertyLists.h"

namespace {

int depthOf(const pellar::PropertyListValue& value) {
  int inner = 0;
  if (const auto* array = value.as<pellar::PropertyListValue::Array>()) {
    for (const auto& each : *array) inner = std::max(inner, depthOf(each));
  } else if (const auto* dictionary = value.as<pellar::PropertyListValue::Dictionary>()) {
    for (const auto& [key, each] : *dictionary) inner = std::max(inner, depthOf(each));
  }
  return inner + 1;
}

}  // namespace

// Whatever stands in a property list, it is read within bounds or refused: as XML, and as a binary list,
// whose magic the fuzzer need not guess.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  for (const auto& content : {text, "bplist00" + text}) {
    const auto list = pellar::PlistPropertyLists::dictionaryIn(content);
    if (list && depthOf({*list}) > pellar::PlistPropertyLists::deepestNesting + 1) std::abort();
  }
  return 0;
}
