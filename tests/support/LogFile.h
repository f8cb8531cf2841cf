#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Log.h"
#include "tests/support/TemporaryFolder.h"

namespace pellar {

// Sends the log to a file of its own while it lives, and reads it.
class LogFile {
 public:
  LogFile() : before_(Log::url()) { Log::setUrl(path()); }
  ~LogFile() { Log::setUrl(before_); }
  LogFile(const LogFile&) = delete;
  LogFile& operator=(const LogFile&) = delete;

  [[nodiscard]] std::filesystem::path path() const { return folder_ / "Pellar.log"; }

  // Whole lines, time stamps included.
  [[nodiscard]] std::vector<std::string> lines() const {
    std::vector<std::string> all;
    std::ifstream file(path());
    for (std::string line; std::getline(file, line);) all.push_back(std::move(line));
    return all;
  }
  // Lines without their time stamps.
  [[nodiscard]] std::vector<std::string> messages() const {
    auto all = lines();
    for (std::string& line : all) line.erase(0, std::min(line.find(' '), line.size() - 1) + 1);
    return all;
  }
  // How many messages begin with `start`.
  [[nodiscard]] std::size_t count(std::string_view start) const {
    const auto all = messages();
    return static_cast<std::size_t>(std::count_if(
        all.begin(), all.end(), [start](const std::string& message) { return message.starts_with(start); }));
  }
  [[nodiscard]] bool contains(std::string_view message) const {
    const auto all = messages();
    return std::find(all.begin(), all.end(), message) != all.end();
  }

 private:
  TemporaryFolder folder_;
  std::filesystem::path before_;
};

}  // namespace pellar
