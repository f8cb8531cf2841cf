#include "core/FileOperations.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace pellar {

namespace {

namespace fs = std::filesystem;

std::error_code lastError() {
  return {errno, std::generic_category()};
}

// Runs a call again when a signal interrupted it.
template <class Call>
auto uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

// A descriptor that is closed with its scope; for reading, where a failed close loses nothing.
class OpenFile {
 public:
  explicit OpenFile(int descriptor) : descriptor_(descriptor) {}
  ~OpenFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  [[nodiscard]] int descriptor() const { return descriptor_; }
  [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }

 private:
  int descriptor_;
};

class SystemFileOperations final : public FileOperations {
 public:
  std::error_code createFolders(const fs::path& folder) override {
    if (folder.empty()) return {};
    std::error_code ignored;  // whatever hinders the look also hinders the creation, which reports it
    if (fs::is_directory(folder, ignored)) return {};
    if (folder.parent_path() != folder) {
      if (const auto error = createFolders(folder.parent_path())) return error;
    }
    if (::mkdir(folder.c_str(), 0700) == 0) return {};
    const std::error_code error = lastError();
    if (error != std::errc::file_exists) return error;
    // Another program may have created it meanwhile; a trailing slash names a folder created just before.
    return fs::is_directory(folder, ignored) ? std::error_code{}
                                             : std::make_error_code(std::errc::not_a_directory);
  }

  std::error_code createFile(const fs::path& file, int& descriptor) override {
    descriptor = uninterrupted(
        [&] { return ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600); });
    return descriptor < 0 ? lastError() : std::error_code{};
  }

  std::error_code write(int descriptor, std::string_view bytes, std::size_t& written) override {
    const auto count = uninterrupted([&] { return ::write(descriptor, bytes.data(), bytes.size()); });
    written = count < 0 ? 0 : static_cast<std::size_t>(count);
    if (count < 0) return lastError();
    if (count == 0 && !bytes.empty()) return std::make_error_code(std::errc::io_error);
    return {};
  }

  std::error_code flush(int descriptor) override {
#ifdef F_FULLFSYNC
    // On macOS fsync stops at the drive's cache. Not every file system knows the stronger call.
    if (::fcntl(descriptor, F_FULLFSYNC) == 0) return {};
#endif
    return uninterrupted([&] { return ::fsync(descriptor); }) < 0 ? lastError() : std::error_code{};
  }

  std::error_code close(int descriptor) override {
    // Interrupted or not, the descriptor is gone, and what matters was flushed.
    return ::close(descriptor) < 0 && errno != EINTR ? lastError() : std::error_code{};
  }

  std::error_code restrictToOwner(const fs::path& file) override {
    return ::chmod(file.c_str(), 0600) < 0 ? lastError() : std::error_code{};
  }

  std::error_code rename(const fs::path& from, const fs::path& to) override {
    return ::rename(from.c_str(), to.c_str()) < 0 ? lastError() : std::error_code{};
  }

  std::error_code flushFile(const fs::path& file) override {
    // Not blocking, so that a pipe without a writer cannot hold the program up.
    return flushOpened(file, O_NONBLOCK | O_NOCTTY);
  }

  std::error_code flushFolder(const fs::path& folder) override {
    return flushOpened(folder, O_DIRECTORY);
  }

  std::error_code remove(const fs::path& file) override {
    return ::unlink(file.c_str()) < 0 && errno != ENOENT ? lastError() : std::error_code{};
  }

  std::vector<std::string> names(const fs::path& folder) override {
    std::vector<std::string> result;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; entry != end; entry.increment(error)) {
      result.push_back(entry->path().filename().string());
    }
    return result;
  }

  std::error_code read(const fs::path& file, std::size_t limit, std::string& content) override {
    // Not blocking, so that a pipe without a writer cannot hold the program up.
    const OpenFile opened(
        uninterrupted([&] { return ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
    if (!opened.isOpen()) return lastError();
    struct stat status {};
    if (::fstat(opened.descriptor(), &status) < 0) return lastError();
    if (S_ISDIR(status.st_mode)) return std::make_error_code(std::errc::is_a_directory);
    if (!S_ISREG(status.st_mode)) return std::make_error_code(std::errc::not_supported);
    std::array<char, 65536> buffer;
    content.clear();
    for (;;) {
      const auto count =
          uninterrupted([&] { return ::read(opened.descriptor(), buffer.data(), buffer.size()); });
      if (count < 0) return lastError();
      if (count == 0) return {};
      content.append(buffer.data(), static_cast<std::size_t>(count));
      if (content.size() > limit) return std::make_error_code(std::errc::file_too_large);
    }
  }

 private:
  std::error_code flushOpened(const fs::path& path, int flags) {
    const OpenFile opened(uninterrupted([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | flags); }));
    if (!opened.isOpen()) return lastError();
    const std::error_code error = flush(opened.descriptor());
    // Some file systems keep no such thing for folders, and some for no file at all.
    return error == std::errc::invalid_argument ? std::error_code{} : error;
  }
};

}  // namespace

FileOperations& systemFileOperations() {
  static SystemFileOperations operations;
  return operations;
}

}  // namespace pellar
