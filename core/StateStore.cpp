#include "core/StateStore.h"

#include <cstddef>
#include <exception>
#include <string>
#include <system_error>
#include <utility>

#include "core/Log.h"
#include "core/StateCoding.h"

namespace pellar {

namespace {

namespace fs = std::filesystem;

// Far beyond any state; what is larger is not ours and not worth the memory.
constexpr std::size_t largestFile = std::size_t{64} << 20;

AppState loaded(const fs::path& url, FileOperations& operations) {
  std::string text;
  // Why it cannot be read is of no use: the next save either works or says so.
  if (operations.read(url, largestFile, text)) return {};
  return decodeState(text).value_or(AppState{});
}

// Absent on success, else what failed.
std::optional<std::string> moved(const fs::path& from, const fs::path& to, FileOperations& operations) {
  if (const auto error = operations.createFolders(to.parent_path())) return error.message();
  const std::error_code error = operations.rename(from, to);
  if (!error) return std::nullopt;
  if (error != std::errc::cross_device_link) return error.message();
  std::string content;
  if (const auto unreadable = operations.read(from, largestFile, content)) return unreadable.message();
  if (auto failed = AtomicFile(to, operations).replace(content)) return failed;
  if (const auto kept = operations.remove(from)) return kept.message();
  return std::nullopt;
}

}  // namespace

StateStore::StateStore(fs::path url, FileOperations& operations)
    : url_(std::move(url)), file_(url_, operations), state_(loaded(url_, operations)) {}

void StateStore::update(const std::function<void(AppState&)>& change) {
  change(state_);
  save();
}

void StateStore::save() {
  std::optional<std::string> failed;
  try {
    failed = file_.replace(encodeState(state_));
  } catch (const std::exception& error) {
    failed = error.what();
  }
  if (failed) Log::write("state save failed: " + *failed);
}

fs::path StateStore::defaultURL(const fs::path& applicationSupport) {
  fs::path url = applicationSupport / "Pellar" / "state.json";
  const fs::path legacy = applicationSupport / "Fennick" / "state.json";
  std::error_code absent;  // a place that cannot be looked at holds no file
  if (fs::exists(url, absent) || !fs::exists(legacy, absent)) return url;
  if (const auto failed = moved(legacy, url, systemFileOperations())) {
    Log::write("state migration failed: " + *failed);
  }
  return url;
}

}  // namespace pellar
