#include "tests/package/CleanRoot.h"

#include <stdlib.h>

#include <stdexcept>

#include "tests/e2e/Folders.h"
#include "tests/e2e/Process.h"

namespace pellar::e2e {

namespace {

namespace fs = std::filesystem;

// Many packages may have to be brought and unpacked.
constexpr std::chrono::minutes longest{10};
constexpr int notAllowed = 77;  // the exit code of clean-root where the machine lacks something

const Environment& rootsEnvironment() {
  static const Environment variables{{"PATH", "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin"},
                                     {"HOME", "/root"},
                                     {"LC_ALL", "C.UTF-8"},
                                     {"DEBIAN_FRONTEND", "noninteractive"}};
  return variables;
}

std::string script(const std::string& name) {
  return std::string(PELLAR_PACKAGE_TESTS) + "/" + name;
}

}  // namespace

std::optional<std::string> CleanRoot::prepare(const fs::path& folder) {
  fs::create_directories(folder);
  const auto errors = folder / "clean-root.errors";
  Process process({script("clean-root"), folder.string()}, rootsEnvironment(), errors);
  const auto ending = process.waitForEnd(longest);
  if (ending && ending->exitCode == 0) return std::nullopt;
  if (ending && ending->exitCode == notAllowed) return process.errors();
  throw std::runtime_error("no clean root: " + process.errors());
}

CleanRoot::CleanRoot(const fs::path& folder) : folder_(folder) {
  std::string name = (folder / "root.XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make " + name);
  root_ = name;
  Process copy({"cp", "-a", (folder / "base/.").string(), name}, rootsEnvironment(), folder / "copy.errors");
  const auto ending = copy.waitForEnd(longest);
  if (!ending || ending->exitCode != 0) throw std::runtime_error("no copy of the root: " + copy.errors());
}

CleanRoot::~CleanRoot() {
  std::error_code ignored;
  fs::remove_all(root_, ignored);
}

std::vector<std::string> CleanRoot::inside(const std::vector<std::string>& command) const {
  std::vector<std::string> result{script("in-root"), root_.string(), (folder_ / "archives").string()};
  result.insert(result.end(), command.begin(), command.end());
  return result;
}

std::string CleanRoot::run(const std::vector<std::string>& command) const {
  std::vector<std::string> heard{"sh", "-c", "exec \"$@\" >/tmp/said 2>&1", "sh"};
  heard.insert(heard.end(), command.begin(), command.end());
  Process process(inside(heard), rootsEnvironment(), root_ / "tmp/errors");
  const auto ending = process.waitForEnd(longest);
  const auto said = Folders::read(root_ / "tmp/said");
  if (!ending || ending->exitCode != 0)
    throw std::runtime_error(command.front() + " failed: " + process.errors() + said);
  return said;
}

void CleanRoot::install(const fs::path& package) const {
  fs::copy_file(package, root_ / "tmp" / package.filename(), fs::copy_options::overwrite_existing);
  run({"apt-get", "install", "-q", "-y", "--no-install-recommends", "/tmp/" + package.filename().string()});
}

}  // namespace pellar::e2e
