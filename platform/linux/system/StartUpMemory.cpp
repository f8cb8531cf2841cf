#include "platform/linux/system/StartUpMemory.h"

#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace pellar::StartUpMemory {
namespace {

int releaseCode(dl_phdr_info* object, std::size_t, void*) {
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  for (int i = 0; i < object->dlpi_phnum; ++i) {
    const auto& segment = object->dlpi_phdr[i];
    // What is never written is the same as in the file.
    if (segment.p_type != PT_LOAD || (segment.p_flags & PF_W) != 0) continue;
    const std::uintptr_t begin = (object->dlpi_addr + segment.p_vaddr + page - 1) / page * page;
    const std::uintptr_t end = (object->dlpi_addr + segment.p_vaddr + segment.p_memsz) / page * page;
    // The kernel's own page among the objects refuses; nothing is lost by that.
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the loader names places by number
    if (begin < end) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_DONTNEED);
  }
  return 0;
}

}  // namespace

void release() {
  malloc_trim(0);
  dl_iterate_phdr(&releaseCode, nullptr);
}

}  // namespace pellar::StartUpMemory
