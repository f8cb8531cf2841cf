#include "platform/shared/system/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace pellar {
namespace {

int opened(const std::filesystem::path& folder) {
  std::error_code ignored;  // then it cannot be opened either
  std::filesystem::create_directories(folder, ignored);
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
