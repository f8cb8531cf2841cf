#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What tests put on a disk and find there.
namespace pellar::test {

// The whole file; empty when it cannot be read.
inline std::string content(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  return std::move(text).str();
}

// Writes a file with all folders above it.
inline void put(const std::filesystem::path& file, std::string_view content) {
  std::filesystem::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream.write(content.data(), static_cast<std::streamsize>(content.size()));
  stream.close();
  if (!stream) throw std::runtime_error("cannot write " + file.string());
}

// The names in a folder, sorted.
inline std::vector<std::string> names(const std::filesystem::path& folder) {
  std::vector<std::string> result;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    result.push_back(entry.path().filename().string());
  }
  std::ranges::sort(result);
  return result;
}

// The permission bits.
inline unsigned mode(const std::filesystem::path& file) {
  return static_cast<unsigned>(std::filesystem::status(file).permissions()) & 07777U;
}

}  // namespace pellar::test
