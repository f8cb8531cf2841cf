#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/Utf8.h"
#include "platform/linux/x11/CompoundText.h"

// Whatever bytes a program writes as the title of its window, they become valid text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto text = pellar::utf8OfCompoundText({reinterpret_cast<const char*>(data), size});
  if (!pellar::Utf8::isValid(text)) std::abort();
  return 0;
}
