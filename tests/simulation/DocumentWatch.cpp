#include "tests/simulation/DocumentWatch.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "tests/support/Files.h"

namespace pellar {

DocumentWatch::Files DocumentWatch::look() const {
  Files files;
  std::error_code ignored;  // then there are no documents
  for (const auto& folder : {home_, home_ / "Documents"})
    for (const auto& entry : std::filesystem::directory_iterator(folder, ignored))
      if (entry.is_regular_file()) files.emplace(entry.path().string(), test::content(entry.path()));
  return files;
}

std::optional<std::string> DocumentWatch::strayFile() const {
  constexpr std::array<std::string_view, 2> own{"state.json", "state.json.unreadable"};
  std::error_code ignored;  // then there is no folder yet
  for (const auto& entry : std::filesystem::directory_iterator(programFolder_, ignored))
    if (std::ranges::find(own, entry.path().filename().string()) == own.end()) return entry.path().string();
  return std::nullopt;
}

std::optional<std::string> DocumentWatch::compare() {
  if (const auto stray = strayFile()) return "a file is left beside the state: " + *stray;
  Files now = look();
  std::optional<std::string> wrong;
  std::set<std::string_view> contents;
  for (const auto& [path, content] : now) contents.insert(content);
  const auto wasAnswered = [&](const std::string& path) {
    return names_.contains(std::filesystem::path(path).stem().string());
  };
  for (const auto& [path, content] : last_) {
    const auto found = now.find(path);
    if (!content.empty() && !contents.contains(content) && !put_.contains(path))
      wrong = "the content of " + path + " is gone";
    if (found == now.end() && names_.empty()) wrong = path + " is gone though nothing was renamed";
  }
  for (const auto& [path, content] : now) {
    if (!last_.contains(path) && !put_.contains(path) && !wasAnswered(path))
      wrong = "a file came that the user did not name: " + path;
  }
  put_.clear();
  last_ = std::move(now);
  return wrong;
}

}  // namespace pellar
