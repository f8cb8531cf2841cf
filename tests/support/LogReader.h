#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/Log.h"
#include "platform/sim/system/TemporaryFolder.h"

namespace pellar {

// The log of one test.
class LogReader {
 public:
  // Has the log written in a folder of its own.
  LogReader() : folder_(std::in_place), file_(*folder_ / "Pellar.log") { Log::setUrl(file_); }
  // Reads a log that the program keeps where it says.
  explicit LogReader(std::filesystem::path file) : file_(std::move(file)) {}

  // The messages so far, without their time stamps.
  [[nodiscard]] std::vector<std::string> messages() const {
    std::vector<std::string> found;
    std::ifstream file(file_);
    for (std::string line; std::getline(file, line);) found.push_back(line.substr(line.find(' ') + 1));
    return found;
  }
  [[nodiscard]] bool has(const std::string& message) const { return count(message) > 0; }
  [[nodiscard]] std::ptrdiff_t count(const std::string& message) const {
    const auto all = messages();
    return std::count(all.begin(), all.end(), message);
  }

 private:
  std::optional<TemporaryFolder> folder_;
  std::filesystem::path file_;
};

}  // namespace pellar
