#include "core/Recent.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/PathParts.h"
#include "core/Utf8.h"

namespace pellar::Recent {

namespace {

// Calls `use(path, time)` for each path of either record, in the order of the paths, with the later of its
// times. A time of our own before 1970 counts as 1970.
template <class Use>
void forEach(const NameMap<double>& own, const NameMap<double>& seeds, Use use) {
  auto ours = own.begin();
  auto theirs = seeds.begin();
  while (ours != own.end() || theirs != seeds.end()) {
    const auto isFirst = own.key_comp();
    const int order = ours == own.end() || (theirs != seeds.end() && isFirst(theirs->first, ours->first)) ? 1
                      : theirs == seeds.end() || isFirst(ours->first, theirs->first)                      ? -1
                                                                                                          : 0;
    if (order > 0) {
      use(theirs->first, theirs->second);
      ++theirs;
      continue;
    }
    const double known = order == 0 ? theirs->second : 0;
    use(ours->first, ours->second > known || std::isnan(known) ? ours->second : known);
    ++ours;
    if (order == 0) ++theirs;
  }
}

bool belongs(const std::string& path, std::optional<OfficeApp> app, const std::optional<std::string>& appKey,
             const NameMap<std::string>& apps) {
  if (app) {
    const auto known = extensions(*app);
    return std::find(known.begin(), known.end(), lowerPathExtension(path)) != known.end();
  }
  if (!appKey) return true;
  const auto entry = apps.find(path);
  return entry != apps.end() && entry->second == *appKey;
}

}  // namespace

double orderedTime(double time) {
  return std::isnan(time) ? -std::numeric_limits<double>::infinity() : time;
}

std::vector<std::string> list(const NameMap<double>& own, const NameMap<double>& seeds,
                              std::string_view query, std::optional<OfficeApp> app,
                              const std::optional<std::string>& appKey, const NameMap<std::string>& apps,
                              const std::function<bool(const std::string&)>& exists) {
  const std::string typed = Utf8::repaired(query);
  const std::string wanted = Utf8::folded(Utf8::trimmed(typed));

  struct Kept {
    const std::string* path;
    double time;
  };
  std::vector<Kept> kept;
  forEach(own, seeds, [&](const std::string& path, double time) {
    if (!belongs(path, app, appKey, apps)) return;
    if (!wanted.empty() && Utf8::folded(path).find(wanted) == std::string::npos) return;
    if (exists(path)) kept.push_back({&path, orderedTime(time)});
  });
  std::stable_sort(kept.begin(), kept.end(),
                   [](const Kept& left, const Kept& right) { return left.time > right.time; });

  std::vector<std::string> paths;
  paths.reserve(kept.size());
  for (const Kept& entry : kept) paths.push_back(*entry.path);
  return paths;
}

}  // namespace pellar::Recent
