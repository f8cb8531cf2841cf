#include "platform/linux/documents/DocumentLookUp.h"

#include <algorithm>
#include <array>
#include <climits>
#include <fstream>
#include <set>
#include <system_error>

#include "core/FileUrl.h"

namespace pellar::DocumentLookUp {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;

// A title beyond this names no file.
constexpr std::size_t longestTitle = PATH_MAX + NAME_MAX;
// Of a title that goes on and on, only so many parts are looked at.
constexpr std::size_t mostParts = 8;
constexpr std::size_t mostOpenFiles = 4096;
constexpr std::size_t mostArgumentBytes = 1 << 18;

constexpr std::array separators{" - "sv, " – "sv, " — "sv, " | "sv};
// What programs put before and after the name of a document with changes in it.
constexpr std::array leadingMarks{"*"sv, "●"sv, "•"sv, "[*]"sv, " "sv};
constexpr std::array trailingMarks{"*"sv, " +"sv, "●"sv, "•"sv, " "sv};

struct Part {
  std::size_t begin;
  std::size_t end;
};

// The stretches between separators.
std::vector<Part> partsOf(std::string_view title) {
  std::vector<Part> parts{{0, title.size()}};
  for (std::size_t at = 0; at < title.size() && parts.size() < mostParts;) {
    const auto found = std::ranges::find_if(
        separators, [&](std::string_view each) { return title.substr(at).starts_with(each); });
    if (found == separators.end()) {
      ++at;
      continue;
    }
    parts.back().end = at;
    at += found->size();
    parts.push_back({at, title.size()});
  }
  return parts;
}

// Without marks and notes ("[Read Only]") around it.
std::string_view withoutMarks(std::string_view text) {
  for (bool shorter = true; shorter;) {
    shorter = false;
    for (const auto mark : leadingMarks) {
      if (!text.starts_with(mark)) continue;
      text.remove_prefix(mark.size());
      shorter = true;
    }
    for (const auto mark : trailingMarks) {
      if (!text.ends_with(mark)) continue;
      text.remove_suffix(mark.size());
      shorter = true;
    }
    if (const auto note = text.rfind(" ["); text.ends_with(']') && note != std::string_view::npos) {
      text = text.substr(0, note);
      shorter = true;
    }
  }
  return text;
}

// "/dir" and "~/dir" as an absolute path.
std::optional<fs::path> absolute(std::string_view text, const fs::path& home) {
  if (text.starts_with('/')) return fs::path(text);
  if (text == "~"sv) return home;
  if (text.starts_with("~/"sv)) return home / text.substr(2);
  return std::nullopt;
}

bool isFileName(std::string_view text) {
  return !text.empty() && text.size() <= NAME_MAX && text.find('/') == std::string_view::npos &&
         text != "."sv && text != ".."sv;
}

class Reader {
 public:
  explicit Reader(const fs::path& home) : home_(home) {}

  void add(std::string_view text) {
    take(text);
    if (const auto bare = withoutMarks(text); bare != text) take(bare);
  }
  void addInFolder(std::string_view name, std::string_view folder) {
    const auto path = absolute(folder, home_);
    if (!path) return;
    for (const auto each : {name, withoutMarks(name)}) {
      if (!isFileName(each)) continue;
      addPath(*path / each);
      addName(each);
    }
  }
  [[nodiscard]] TitleReading result() && { return std::move(reading_); }

 private:
  void take(std::string_view text) {
    if (const auto path = absolute(text, home_)) addPath(*path);
    if (const auto folder = text.rfind(" ("); text.ends_with(')') && folder != std::string_view::npos) {
      addInFolder(text.substr(0, folder), text.substr(folder + 2, text.size() - folder - 3));
      addName(withoutMarks(text.substr(0, folder)));
    }
    addName(text);
  }
  void addPath(const fs::path& path) {
    std::string text = path.lexically_normal().string();
    if (text.size() < PATH_MAX && std::ranges::find(reading_.paths, text) == reading_.paths.end())
      reading_.paths.push_back(std::move(text));
  }
  void addName(std::string_view name) {
    if (isFileName(name) && std::ranges::find(reading_.names, name) == reading_.names.end())
      reading_.names.emplace_back(name);
  }

  const fs::path& home_;
  TitleReading reading_;
};

bool isRegularFile(const fs::path& path) {
  std::error_code error;
  return fs::is_regular_file(path, error);
}

}  // namespace

TitleReading read(std::string_view title, const fs::path& home) {
  if (title.empty() || title.size() > longestTitle || title.find('\0') != std::string_view::npos) return {};
  const auto parts = partsOf(title);
  Reader reader(home);
  for (std::size_t first = 0; first < parts.size(); ++first) {
    // The longest first: a name may have a separator in it.
    for (std::size_t last = parts.size(); last-- > first;)
      reader.add(title.substr(parts[first].begin, parts[last].end - parts[first].begin));
  }
  for (std::size_t part = 0; part + 1 < parts.size(); ++part) {
    const auto text = [&](std::size_t index) {
      return title.substr(parts[index].begin, parts[index].end - parts[index].begin);
    };
    reader.addInFolder(text(part), text(part + 1));
  }
  return std::move(reader).result();
}

FileFinder::PathsByName FileFinder::openPaths(const fs::path& process) {
  PathsByName paths;
  std::error_code error;
  fs::directory_iterator entry(process / "fd", error);
  for (std::size_t seen = 0; !error && entry != fs::directory_iterator() && seen < mostOpenFiles; ++seen) {
    std::error_code unreadable;
    // Files that are deleted, and what is no file, have no such name in the file system.
    const fs::path target = fs::read_symlink(entry->path(), unreadable);
    if (!unreadable && target.is_absolute()) paths.emplace(target.filename().string(), target.string());
    entry.increment(error);
  }
  return paths;
}

FileFinder::PathsByName FileFinder::argumentPaths(const fs::path& process) {
  std::ifstream stream(process / "cmdline", std::ios::binary);
  std::string line(mostArgumentBytes, '\0');
  stream.read(line.data(), static_cast<std::streamsize>(line.size()));
  line.resize(static_cast<std::size_t>(std::max<std::streamsize>(stream.gcount(), 0)));

  PathsByName paths;
  bool isProgram = true;
  for (std::size_t at = 0; at < line.size();) {
    const auto end = std::min(line.find('\0', at), line.size());
    const std::string argument = line.substr(at, end - at);
    at = end + 1;
    if (std::exchange(isProgram, false)) continue;
    fs::path path = pathOfFileUrl(argument).value_or(argument);
    if (path.is_relative()) {
      std::error_code error;
      const fs::path folder = fs::read_symlink(process / "cwd", error);
      if (error) continue;
      path = folder / path;
    }
    path = path.lexically_normal();
    paths.emplace(path.filename().string(), path.string());
  }
  return paths;
}

std::optional<std::string> FileFinder::find(std::string_view title, std::optional<ProcessId> process) {
  const TitleReading reading = read(title, places_.home);
  const auto named =
      std::ranges::find_if(reading.paths, [](const auto& path) { return isRegularFile(path); });
  if (named != reading.paths.end()) return *named;
  if (!process || *process <= 0 || reading.names.empty()) return std::nullopt;

  const auto existing = [&reading](const PathsByName& paths) {
    std::set<std::string> files;
    for (const auto& name : reading.names) {
      const auto [first, last] = paths.equal_range(name);
      for (auto each = first; each != last; ++each)
        if (isRegularFile(each->second)) files.insert(each->second);
    }
    return files;
  };
  const fs::path folder = places_.processes / std::to_string(*process);
  if (!open_.contains(*process)) open_.emplace(*process, openPaths(folder));
  auto found = existing(open_.at(*process));
  if (found.empty()) {
    if (!arguments_.contains(*process)) arguments_.emplace(*process, argumentPaths(folder));
    found = existing(arguments_.at(*process));
  }
  // Of several, any may be meant.
  return found.size() == 1 ? std::optional(*found.begin()) : std::nullopt;
}

}  // namespace pellar::DocumentLookUp
