#pragma once

#include <filesystem>

namespace pellar {

// Keeps a folder for this process alone. The system gives it back when the process ends, however it ends.
class FolderLock {
 public:
  // Makes the folder when it is not there.
  explicit FolderLock(const std::filesystem::path& folder);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  // Another process keeps it. False also where that cannot be told, for instance when there is no such folder
  // and none can be made.
  [[nodiscard]] bool isAnothers() const { return isAnothers_; }

 private:
  int folder_;
  bool isAnothers_;
};

}  // namespace pellar
