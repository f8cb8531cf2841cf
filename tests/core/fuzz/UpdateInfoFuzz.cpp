#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/UpdateInfo.h"

// Whatever a web site answers, it is an update record or refused; and a record is written and read back
// unchanged.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto info = pellar::decodeUpdateInfo({reinterpret_cast<const char*>(data), size});
  if (!info) return 0;
  if (pellar::decodeUpdateInfo(pellar::encodeUpdateInfo(*info)) != info) std::abort();
  return 0;
}
