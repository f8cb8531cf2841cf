#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "core/FileOperations.h"

namespace pellar {

// A file that is replaced whole or not at all: written to a temporary file beside it, flushed to the disk,
// renamed over it, its folder flushed. A crash at any instant leaves the old content or the new. A symbolic
// link is kept and the file it names replaced.
class AtomicFile {
 public:
  // `operations` must outlive this.
  AtomicFile(std::filesystem::path file, FileOperations& operations);

  // Replaces the content, creating the folder where it is missing. Absent on success, else what failed and
  // why.
  std::optional<std::string> replace(std::string_view content);

 private:
  // Says what failed, and nothing on success.
  std::optional<std::string> writeTemporary(const std::filesystem::path& temporary, std::string_view content);
  void removeLeftovers(const std::filesystem::path& target);

  std::filesystem::path file_;
  FileOperations& operations_;
  bool leftoversRemoved_ = false;
};

}  // namespace pellar
