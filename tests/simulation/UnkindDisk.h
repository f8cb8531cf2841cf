#pragma once

#include <cstddef>
#include <string_view>
#include <system_error>

#include "tests/support/BrokenFileOperations.h"

namespace pellar {

// The disk as the program meets it. It may refuse one step of the program's work on files, or each from there
// on; where the program is killed, nothing that it does afterwards reaches the disk.
class UnkindDisk {
 public:
  UnkindDisk();
  UnkindDisk(const UnkindDisk&) = delete;
  UnkindDisk& operator=(const UnkindDisk&) = delete;

  [[nodiscard]] FileOperations& operations() { return operations_; }

  // Steps are counted from now on, the first is 0.
  void refuseOne(std::size_t step, std::errc why) { begin(step, step, why); }
  void refuseFrom(std::size_t step, std::errc why) { begin(step, std::string::npos, why); }
  void recover() { begin(std::string::npos, 0, {}); }

  // Since then.
  [[nodiscard]] bool refused() const { return steps_ > first_; }
  // Whether no file could be made for a new state.
  [[nodiscard]] bool refusedAFile() const { return refusedAFile_; }

 private:
  void begin(std::size_t first, std::size_t last, std::errc why);

  test::BrokenFileOperations operations_;
  std::size_t steps_ = 0;
  std::size_t first_ = std::string::npos;
  std::size_t last_ = 0;
  std::errc why_{};
  bool refusedAFile_ = false;
};

}  // namespace pellar
