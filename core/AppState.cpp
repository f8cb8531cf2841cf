#include "core/AppState.h"

#include <algorithm>
#include <cstddef>

#include "core/Recent.h"

namespace pellar {

namespace {

constexpr std::size_t recentCapacity = 300;

constexpr std::array<std::string_view, allTagColors.size()> tagNames{"red",   "orange", "yellow",
                                                                     "green", "blue",   "purple"};

}  // namespace

std::string_view rawValue(TagColor color) {
  return tagNames[static_cast<std::size_t>(color)];
}

std::optional<TagColor> tagColorWithRawValue(std::string_view raw) {
  for (const TagColor color : allTagColors) {
    if (rawValue(color) == raw) return color;
  }
  return std::nullopt;
}

std::optional<TagColor> AppState::tag(const std::string& key) const {
  return tags.contains(key) ? tagColorWithRawValue(tags.at(key)) : std::nullopt;
}

void AppState::touchRecent(const std::string& path, const std::optional<std::string>& app, double now) {
  // A file system that tells spellings apart has the file under the last one.
  recent.erase(path);
  recent[path] = now;
  if (app) recentApp[path] = *app;
  if (recent.size() <= recentCapacity) return;

  using Entry = NameMap<double>::iterator;
  std::vector<Entry> entries;
  entries.reserve(recent.size());
  for (auto entry = recent.begin(); entry != recent.end(); ++entry) entries.push_back(entry);
  const auto surplus = static_cast<std::ptrdiff_t>(recent.size() - recentCapacity);
  std::nth_element(entries.begin(), entries.begin() + surplus, entries.end(), [](Entry left, Entry right) {
    return Recent::orderedTime(left->second) < Recent::orderedTime(right->second);
  });
  for (auto oldest = entries.begin(); oldest != entries.begin() + surplus; ++oldest) {
    recentApp.erase((*oldest)->first);
    recent.erase(*oldest);
  }
}

}  // namespace pellar
