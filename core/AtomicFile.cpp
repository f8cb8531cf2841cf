#include "core/AtomicFile.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <system_error>
#include <utility>

namespace pellar {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view temporarySuffix = ".tmp";

std::string failure(std::string_view step, const fs::path& path, const std::error_code& error) {
  return std::string(step) + " " + path.string() + ": " + error.message();
}

// Where the content belongs: what a symbolic link names in the end, else the file itself.
fs::path resolved(const fs::path& file, std::error_code& error) {
  fs::path result = file;
  // As many links as the system itself follows.
  for (int links = 0; links <= 40; ++links) {
    std::error_code noLink;
    const fs::path next = fs::read_symlink(result, noLink);
    if (noLink) return result;
    result = result.parent_path() / next;
  }
  error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
  return result;
}

fs::path folderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// Whether a process may still be writing. One of another user's refuses the question and lives.
bool isAlive(pid_t process) {
  return ::kill(process, 0) == 0 || errno == EPERM;
}

// "<name>.<process number>.tmp" of a process that has ended, as this and earlier runs name their temporary
// files.
bool isLeftoverOf(std::string_view name, std::string_view file) {
  if (!name.ends_with(temporarySuffix)) return false;
  name.remove_suffix(temporarySuffix.size());
  if (!name.starts_with(file)) return false;
  name.remove_prefix(file.size());
  if (!name.starts_with('.')) return false;
  const std::string_view digits = name.substr(1);
  pid_t process = 0;  // and stays so for what is no such number
  const auto* end = std::from_chars(digits.begin(), digits.end(), process).ptr;
  return end == digits.end() && process > 0 && !isAlive(process);
}

}  // namespace

AtomicFile::AtomicFile(fs::path file, FileOperations& operations)
    : file_(std::move(file)), operations_(operations) {}

std::optional<std::string> AtomicFile::replace(std::string_view content) {
  if (const auto error = operations_.createFolders(file_.parent_path())) {
    return failure("cannot create", file_.parent_path(), error);
  }
  std::error_code linkError;
  const fs::path target = resolved(file_, linkError);
  if (linkError) return failure("cannot follow", file_, linkError);
  removeLeftovers(target);

  // The process number keeps two running programs from writing into one another's temporary file.
  fs::path temporary = target;
  temporary += "." + std::to_string(::getpid());
  temporary += temporarySuffix;
  if (auto failed = writeTemporary(temporary, content)) {
    operations_.remove(temporary);  // what cannot be removed is a leftover for the next run
    return failed;
  }
  if (const auto error = operations_.rename(temporary, target)) {
    operations_.remove(temporary);
    return failure("cannot replace", target, error);
  }
  const fs::path folder = folderOf(target);
  const std::error_code error = operations_.flushFolder(folder);
  // A folder that may be written to and not be opened gives the program no way to flush it.
  if (error && error != std::errc::permission_denied) return failure("cannot flush", folder, error);
  return std::nullopt;
}

std::optional<std::string> AtomicFile::writeTemporary(const fs::path& temporary, std::string_view content) {
  if (const auto error = operations_.remove(temporary)) return failure("cannot remove", temporary, error);
  int descriptor = -1;
  if (const auto error = operations_.createFile(temporary, descriptor)) {
    return failure("cannot create", temporary, error);
  }
  std::error_code error;
  while (!content.empty() && !error) {
    std::size_t written = 0;
    error = operations_.write(descriptor, content, written);
    content.remove_prefix(written);
  }
  if (!error) error = operations_.flush(descriptor);
  const std::error_code closeError = operations_.close(descriptor);
  if (!error) error = closeError;
  if (error) return failure("cannot write", temporary, error);
  return std::nullopt;
}

// A run that crashed while it saved leaves its temporary file behind. That of a process which lives is its
// own: removed under its hands, its save would fail.
void AtomicFile::removeLeftovers(const fs::path& target) {
  if (leftoversRemoved_) return;
  leftoversRemoved_ = true;
  const std::string name = target.filename().string();
  const fs::path folder = folderOf(target);
  for (const std::string& other : operations_.names(folder)) {
    // A temporary file that stays does no harm.
    if (isLeftoverOf(other, name)) operations_.remove(folder / other);
  }
}

}  // namespace pellar
