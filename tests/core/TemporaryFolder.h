#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace pellar::test {

// A folder of the test's own, gone with everything in it when the test ends.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  [[nodiscard]] std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

// The whole file; empty when it cannot be read.
std::string content(const std::filesystem::path& file);
void put(const std::filesystem::path& file, std::string_view content);
// The names in a folder, sorted.
std::vector<std::string> names(const std::filesystem::path& folder);
// The permission bits.
unsigned mode(const std::filesystem::path& file);

// Sends the log to a file for the length of a test.
class CapturedLog {
 public:
  explicit CapturedLog(const std::filesystem::path& file);
  ~CapturedLog();
  CapturedLog(const CapturedLog&) = delete;
  CapturedLog& operator=(const CapturedLog&) = delete;

  // Everything logged so far.
  [[nodiscard]] std::string text() const { return content(file_); }
  [[nodiscard]] int lines() const;

 private:
  std::filesystem::path file_;
  std::filesystem::path earlier_;
};

}  // namespace pellar::test
