#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace pellar::e2e {

// A Debian of its own in a folder that goes with this object, with the package manager and nothing that was
// not installed there. Programs in it see this machine's X servers.
class CleanRoot {
 public:
  // Makes what all of them are copied from, in `folder`, where it is kept. Gives the reason where this
  // machine does not allow it; throws where it should have and did not work.
  static std::optional<std::string> prepare(const std::filesystem::path& folder);

  explicit CleanRoot(const std::filesystem::path& folder);
  ~CleanRoot();
  CleanRoot(const CleanRoot&) = delete;
  CleanRoot& operator=(const CleanRoot&) = delete;

  // A path in there, as seen from here.
  [[nodiscard]] std::filesystem::path operator/(const std::string& inside) const { return root_ / inside; }
  // The command by which a program is run there.
  [[nodiscard]] std::vector<std::string> inside(const std::vector<std::string>& command) const;
  // Runs a program to its end, as root, and gives what it said; throws that when it fails.
  std::string run(const std::vector<std::string>& command) const;
  // Installs a package from a file of this machine, and what it depends on.
  void install(const std::filesystem::path& package) const;

 private:
  std::filesystem::path folder_;
  std::filesystem::path root_;
};

}  // namespace pellar::e2e
