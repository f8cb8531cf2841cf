#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>

#include "core/AppState.h"
#include "core/AtomicFile.h"
#include "core/FileOperations.h"

namespace pellar {

// Owns the one live state and the file it is kept in. The file is rewritten whole from memory after each
// change and never merged with what is on disk. Main thread only; no failure reaches the caller.
class StateStore {
 public:
  // The most bytes that a file of ours has: what is larger is neither written nor read.
  static constexpr std::size_t largestFile = std::size_t{16} << 20;

  // Loads the file; one that is missing, unreadable or invalid yields the default state and is left as it is
  // until the next save. `operations` must outlive the store.
  explicit StateStore(std::filesystem::path url, FileOperations& operations = systemFileOperations());

  [[nodiscard]] const std::filesystem::path& url() const { return url_; }
  // The reference stays valid as long as the store.
  [[nodiscard]] const AppState& state() const { return state_; }

  // Applies `change` to the live state, then saves.
  void update(const std::function<void(AppState&)>& change);

  // Writes the file, readable by its owner only. A failure is logged; the state in memory stays and the next
  // save tries again. The first save keeps a file that could not be read or understood beside the new one, as
  // "<name>.unreadable", and says so in the log, as it does of each name that the file cannot hold.
  void save();

  // Where the file is kept, under the user's folder for application data. Moves a file of the product's
  // former name there on the first start; a failure is logged and the old file left untouched.
  static std::filesystem::path defaultURL(const std::filesystem::path& applicationSupport,
                                          FileOperations& operations = systemFileOperations());

 private:
  AppState loaded();
  // Both say what failed, and nothing on success.
  std::optional<std::string> keepUnreadFile();
  std::optional<std::string> replaceFile();
  void logNamesLeftOut();

  std::filesystem::path url_;
  FileOperations& operations_;
  AtomicFile file_;
  bool hasUnreadFile_ = false;  // a file is there whose content is not in the state
  AppState state_;              // depends-on: operations_, hasUnreadFile_
  std::set<std::string> loggedNames_;
};

}  // namespace pellar
