#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "platform/linux/applications/DesktopEntries.h"

// Whatever a file in the folder of installed programs holds, it is an entry of single lines or none.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::istringstream stream(std::string(reinterpret_cast<const char*>(data), size));
  const auto entry = pellar::readDesktopEntry(stream);
  if (!entry) return 0;
  for (const auto& text : {entry->name, entry->startupClass}) {
    if (text.size() > size || text.find('\n') != std::string::npos) std::abort();
    if (!text.empty() && (text.front() == ' ' || text.back() == ' ')) std::abort();
  }
  return 0;
}
