#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace pellar {

// The steps of reading and replacing a file, one call each, so that each can fail. Errors are values: a
// default std::error_code is success. Nothing here throws for a failure of the file system.
class FileOperations {
 public:
  virtual ~FileOperations() = default;

  // Creates the folder and those above it that are missing, accessible to the owner only. An existing one is
  // fine.
  virtual std::error_code createFolders(const std::filesystem::path& folder) = 0;
  // Creates a file that must not exist yet, readable and writable by the owner only. Sets `descriptor` on
  // success.
  virtual std::error_code createFile(const std::filesystem::path& file, int& descriptor) = 0;
  // Writes some of the bytes, at least one on success when there are any. Sets `written` to how many.
  virtual std::error_code write(int descriptor, std::string_view bytes, std::size_t& written) = 0;
  // Returns once what was written is on the disk.
  virtual std::error_code flush(int descriptor) = 0;
  // The descriptor is gone afterwards, also on failure.
  virtual std::error_code close(int descriptor) = 0;
  // Makes the file readable and writable by the owner only.
  virtual std::error_code restrictToOwner(const std::filesystem::path& file) = 0;
  // Replaces `to` with `from` in one step.
  virtual std::error_code rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
  // Returns once the content of a file that another program wrote is on the disk.
  virtual std::error_code flushFile(const std::filesystem::path& file) = 0;
  // Returns once the names in the folder are on the disk.
  virtual std::error_code flushFolder(const std::filesystem::path& folder) = 0;
  // Removes a file; one that is missing is fine.
  virtual std::error_code remove(const std::filesystem::path& file) = 0;
  // The names in the folder; none when it cannot be read.
  virtual std::vector<std::string> names(const std::filesystem::path& folder) = 0;
  // Reads a whole regular file of at most `limit` bytes; anything else (a folder, a pipe, a device) is an
  // error.
  virtual std::error_code read(const std::filesystem::path& file, std::size_t limit,
                               std::string& content) = 0;
};

// The machine's own file system. Lives as long as the program.
FileOperations& systemFileOperations();

}  // namespace pellar
