#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/linux/documents/DocumentLookUp.h"

// Whatever the title of an editor's window: what it may mean are absolute paths, and names without a folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto reading =
      pellar::DocumentLookUp::read({reinterpret_cast<const char*>(data), size}, "/home/user");
  for (const auto& path : reading.paths)
    if (!path.starts_with('/')) std::abort();
  for (const auto& name : reading.names)
    if (name.empty() || name.find('/') != std::string::npos) std::abort();
  return 0;
}
