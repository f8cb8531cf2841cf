#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Log.h"
#include "platform/sim/system/TemporaryFolder.h"
#include "tests/support/Files.h"

namespace pellar {

// The log of one test.
class LogReader {
 public:
  // Sends the log to a file in a folder of its own for as long as this lives.
  LogReader() : folder_(std::in_place), before_(Log::url()), file_(*folder_ / "Pellar.log") {
    Log::setUrl(file_);
  }
  // Reads a log that the program keeps where it says.
  explicit LogReader(std::filesystem::path file) : file_(std::move(file)) {}
  ~LogReader() {
    if (before_) Log::setUrl(*before_);
  }
  LogReader(const LogReader&) = delete;
  LogReader& operator=(const LogReader&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return file_; }
  // Everything so far, time stamps included; empty while there is no file.
  [[nodiscard]] std::string text() const { return test::content(file_); }
  // The lines so far, without their time stamps.
  [[nodiscard]] std::vector<std::string> messages() const {
    std::vector<std::string> found;
    std::ifstream file(file_);
    for (std::string line; std::getline(file, line);) found.push_back(line.substr(line.find(' ') + 1));
    return found;
  }
  [[nodiscard]] bool has(std::string_view message) const { return count(message) > 0; }
  [[nodiscard]] std::ptrdiff_t count(std::string_view message) const {
    return std::ranges::count(messages(), message);
  }
  // How many messages begin so.
  [[nodiscard]] std::ptrdiff_t countStarting(std::string_view start) const {
    return std::ranges::count_if(messages(),
                                 [&](const std::string& message) { return message.starts_with(start); });
  }

 private:
  std::optional<TemporaryFolder> folder_;
  std::optional<std::filesystem::path> before_;
  std::filesystem::path file_;
};

}  // namespace pellar
