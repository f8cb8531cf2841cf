#include "tests/core/TemporaryFolder.h"

#include <stdlib.h>  // mkdtemp, in one of the two
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "core/Log.h"

namespace pellar::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
  std::string name = (fs::temp_directory_path() / "pellar-test-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code left;  // a folder that stays behind is no failure of the test
  fs::remove_all(path_, left);
}

std::string content(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  return std::move(text).str();
}

void put(const fs::path& file, std::string_view content) {
  fs::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream.write(content.data(), static_cast<std::streamsize>(content.size()));
  stream.close();
  if (!stream) throw std::runtime_error("cannot write " + file.string());
}

std::vector<std::string> names(const fs::path& folder) {
  std::vector<std::string> result;
  for (const auto& entry : fs::directory_iterator(folder)) result.push_back(entry.path().filename().string());
  std::sort(result.begin(), result.end());
  return result;
}

unsigned mode(const fs::path& file) {
  return static_cast<unsigned>(fs::status(file).permissions()) & 07777U;
}

CapturedLog::CapturedLog(const fs::path& file) : file_(file), earlier_(Log::url()) {
  Log::setUrl(file);
}

CapturedLog::~CapturedLog() {
  Log::setUrl(earlier_);
}

int CapturedLog::lines() const {
  const std::string all = text();
  return static_cast<int>(std::count(all.begin(), all.end(), '\n'));
}

}  // namespace pellar::test
