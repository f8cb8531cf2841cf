#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "core/FileUrl.h"

// Whatever stands where a URL should, it is a path or none; and the URL of a path, whatever its bytes, names
// that path.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (const auto path = pellar::pathOfFileUrl(text)) {
    if (path->empty() || path->front() != '/') std::abort();
    if (pellar::pathOfFileUrl(pellar::fileUrlOf(*path)) != path) std::abort();
  }
  const auto decoded = pellar::percentDecoded(text);
  if (decoded && decoded->size() > text.size()) std::abort();
  return 0;
}
