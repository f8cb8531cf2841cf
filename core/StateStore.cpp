#include "core/StateStore.h"

#include <exception>
#include <string>
#include <system_error>
#include <utility>

#include "core/Log.h"
#include "core/StateCoding.h"

namespace pellar {

namespace {

namespace fs = std::filesystem;

// Whether there is nothing at the place that a save could destroy.
bool holdsNothing(const std::error_code& readError) {
  return readError == std::errc::no_such_file_or_directory || readError == std::errc::not_a_directory ||
         readError == std::errc::is_a_directory || readError == std::errc::not_supported ||
         readError == std::errc::too_many_symbolic_link_levels;
}

// Absent on success, else what failed.
std::optional<std::string> moved(const fs::path& from, const fs::path& to, FileOperations& operations) {
  if (const auto error = operations.createFolders(to.parent_path())) return error.message();
  // Before it moves, so that others can read it at no time. Who may not change the old file makes a new one.
  if (!operations.restrictToOwner(from)) {
    const std::error_code error = operations.rename(from, to);
    if (!error) return std::nullopt;
    if (error != std::errc::cross_device_link) return error.message();
  }
  std::string content;
  if (const auto error = operations.read(from, StateStore::largestFile, content)) return error.message();
  if (auto failed = AtomicFile(to, operations).replace(content)) return failed;
  if (const auto kept = operations.remove(from)) return kept.message();
  return std::nullopt;
}

}  // namespace

StateStore::StateStore(fs::path url, FileOperations& operations)
    : url_(std::move(url)), operations_(operations), file_(url_, operations), state_(loaded()) {}

AppState StateStore::loaded() {
  std::string text;
  if (const auto error = operations_.read(url_, largestFile, text)) {
    hasUnreadFile_ = !holdsNothing(error);
    return {};
  }
  auto state = decodeState(text);
  hasUnreadFile_ = !state && !text.empty();
  return std::move(state).value_or(AppState{});
}

void StateStore::update(const std::function<void(AppState&)>& change) {
  change(state_);
  save();
}

void StateStore::save() {
  std::optional<std::string> failed;
  try {
    if (hasUnreadFile_) failed = keepUnreadFile();
    if (!failed) failed = replaceFile();
  } catch (const std::exception& error) {
    failed = error.what();
  }
  if (failed) {
    Log::write("state save failed: " + *failed);
  } else {
    logNamesLeftOut();
  }
}

std::optional<std::string> StateStore::keepUnreadFile() {
  fs::path kept = url_;
  kept += ".unreadable";
  std::string text;
  // A copy leaves the old file in its place until the new one takes it. What cannot be copied is moved.
  const bool isCopied =
      !operations_.read(url_, largestFile, text) && !AtomicFile(kept, operations_).replace(text);
  const std::error_code error = isCopied ? std::error_code{} : operations_.rename(url_, kept);
  if (error && error != std::errc::no_such_file_or_directory)
    return "cannot keep the old file as " + kept.string() + ": " + error.message();
  hasUnreadFile_ = false;
  if (!error) Log::write("state file not understood, kept as " + kept.string());
  return std::nullopt;
}

std::optional<std::string> StateStore::replaceFile() {
  const std::string text = encodeState(state_);
  if (text.size() > largestFile)
    return url_.string() + ": " + std::to_string(text.size()) + " bytes are too many";
  return file_.replace(text);
}

void StateStore::logNamesLeftOut() {
  for (const std::string& name : namesLeftOut(state_)) {
    if (loggedNames_.insert(name).second) Log::write("state save left out a name that is not UTF-8: " + name);
  }
}

fs::path StateStore::defaultURL(const fs::path& applicationSupport, FileOperations& operations) {
  fs::path url = applicationSupport / "Pellar" / "state.json";
  const fs::path legacy = applicationSupport / "Fennick" / "state.json";
  std::error_code absent;  // a place that cannot be looked at holds no file
  if (fs::exists(url, absent) || !fs::exists(legacy, absent)) return url;
  if (const auto failed = moved(legacy, url, operations)) {
    Log::write("state migration failed: " + *failed);
  }
  return url;
}

}  // namespace pellar
