#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Accessibility.h"

// Which file a window shows, from what every program reveals. No program says it outright: it stands in the
// title, or the program was started with it, or has it open.
namespace pellar::DocumentLookUp {

// Where to look.
struct Places {
  std::filesystem::path home;  // what "~" stands for
  std::filesystem::path processes = "/proc";
};

// What a title may mean, the likeliest first.
struct TitleReading {
  std::vector<std::string> paths;  // absolute
  std::vector<std::string> names;  // file names without a folder
};

// Reads a title in the forms that editors use: "/dir/a.txt - Editor", "*~/dir/a.txt", "a.txt (/dir) -
// Editor", "a.txt - /dir - Editor", "a.txt [Read Only] — Editor". Any bytes will do.
[[nodiscard]] TitleReading read(std::string_view title, const std::filesystem::path& home);

// Finds files for a number of windows, reading what a process has open, and what it was started with, once
// for them all: for windows that are looked up in one go.
class FileFinder {
 public:
  explicit FileFinder(Places places) : places_(std::move(places)) {}

  // The absolute path of the existing regular file that a window of this title shows: one that the title
  // names whole, else the one of that name that the process has open, else the one that it was started with.
  // Absent when there is none, or several that may be meant. Asks the file system, so that it may take long.
  [[nodiscard]] std::optional<std::string> find(std::string_view title, std::optional<ProcessId> process);

 private:
  // Absolute paths by the name of the file, whether there is one or not.
  using PathsByName = std::multimap<std::string, std::string, std::less<>>;

  [[nodiscard]] static PathsByName openPaths(const std::filesystem::path& process);
  [[nodiscard]] static PathsByName argumentPaths(const std::filesystem::path& process);

  Places places_;
  std::map<ProcessId, PathsByName> open_;
  std::map<ProcessId, PathsByName> arguments_;
};

}  // namespace pellar::DocumentLookUp
