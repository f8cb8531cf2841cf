#pragma once

#include <filesystem>
#include <functional>

#include "core/AppState.h"
#include "core/AtomicFile.h"
#include "core/FileOperations.h"

namespace pellar {

// Owns the one live state and the file it is kept in. The file is rewritten whole from memory after each
// change and never merged with what is on disk. Main thread only; no failure reaches the caller.
class StateStore {
 public:
  // Loads the file; one that is missing, unreadable or invalid yields the default state and is left as it is
  // until the next save. `operations` must outlive the store.
  explicit StateStore(std::filesystem::path url, FileOperations& operations = systemFileOperations());

  [[nodiscard]] const std::filesystem::path& url() const { return url_; }
  // The reference stays valid as long as the store.
  [[nodiscard]] const AppState& state() const { return state_; }

  // Applies `change` to the live state, then saves.
  void update(const std::function<void(AppState&)>& change);

  // Writes the file, readable by its owner only. A failure is logged; the state in memory stays and the next
  // save tries again.
  void save();

  // Where the file is kept, under the user's folder for application data. Moves a file of the product's
  // former name there on the first start; a failure is logged and the old file left untouched.
  static std::filesystem::path defaultURL(const std::filesystem::path& applicationSupport);

 private:
  std::filesystem::path url_;
  AtomicFile file_;
  AppState state_;
};

}  // namespace pellar
