#pragma once

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "core/Log.h"
#include "platform/sim/TemporaryFolder.h"

namespace pellar {

// The log of one test, in a folder of its own.
class LogReader {
 public:
  LogReader() { Log::setUrl(folder_ / "Pellar.log"); }

  // The messages so far, without their time stamps.
  [[nodiscard]] std::vector<std::string> messages() const {
    std::vector<std::string> found;
    std::ifstream file(folder_ / "Pellar.log");
    for (std::string line; std::getline(file, line);) found.push_back(line.substr(line.find(' ') + 1));
    return found;
  }
  [[nodiscard]] bool has(const std::string& message) const { return count(message) > 0; }
  [[nodiscard]] std::ptrdiff_t count(const std::string& message) const {
    const auto all = messages();
    return std::count(all.begin(), all.end(), message);
  }

 private:
  TemporaryFolder folder_;
};

}  // namespace pellar
