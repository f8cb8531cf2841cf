#include "tests/simulation/UnkindDisk.h"

namespace pellar {

UnkindDisk::UnkindDisk() {
  // Disks take a long text in parts.
  operations_.longestWrite = 1000;
  operations_.before = [this](std::string_view name) -> std::error_code {
    operations_.steps.clear();
    operations_.flushed.clear();
    const std::size_t step = steps_++;
    if (step < first_ || step > last_) return {};
    if (name == "createFile") refusedAFile_ = true;
    return std::make_error_code(why_);
  };
}

void UnkindDisk::begin(std::size_t first, std::size_t last, std::errc why) {
  steps_ = 0;
  first_ = first;
  last_ = last;
  why_ = why;
  refusedAFile_ = false;
}

}  // namespace pellar
