#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/StateCoding.h"

// Whatever is in the state file, it is read or refused; and what was read is written and read back unchanged.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto state = pellar::decodeState({reinterpret_cast<const char*>(data), size});
  if (!state) return 0;
  const std::string written = pellar::encodeState(*state);
  const auto again = pellar::decodeState(written);
  if (!again || !(*again == *state) || pellar::encodeState(*again) != written) std::abort();
  return 0;
}
