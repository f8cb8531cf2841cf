#include "platform/shared/system/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "core/FileOperations.h"

namespace pellar {
namespace {

int opened(const std::filesystem::path& folder) {
  // A folder that cannot be made cannot be opened either.
  static_cast<void>(systemFileOperations().createFolders(folder));
  return open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

}  // namespace

FolderLock::FolderLock(const std::filesystem::path& folder)
    : folder_(opened(folder)),
      isAnothers_(folder_ >= 0 && flock(folder_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {}

FolderLock::~FolderLock() {
  if (folder_ >= 0) close(folder_);
}

}  // namespace pellar
