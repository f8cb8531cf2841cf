#include "core/Recent.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "core/PathExtension.h"
#include "core/Utf8.h"

namespace pellar::Recent {

namespace {

// A time that is no number counts as the oldest, so that the order is total.
double orderedTime(double time) {
  return std::isnan(time) ? -std::numeric_limits<double>::infinity() : time;
}

std::map<std::string, double> merged(const std::map<std::string, double>& own,
                                     const std::map<std::string, double>& seeds) {
  std::map<std::string, double> result = seeds;
  for (const auto& [path, time] : own) {
    double& known = result.try_emplace(path, 0.0).first->second;
    if (time > known || std::isnan(known)) known = time;
  }
  return result;
}

bool belongs(const std::string& path, std::optional<OfficeApp> app, const std::optional<std::string>& appKey,
             const std::map<std::string, std::string>& apps) {
  if (app) {
    const auto known = extensions(*app);
    return std::find(known.begin(), known.end(), lowerPathExtension(path)) != known.end();
  }
  if (!appKey) return true;
  const auto entry = apps.find(path);
  return entry != apps.end() && entry->second == *appKey;
}

}  // namespace

std::vector<std::string> list(const std::map<std::string, double>& own,
                              const std::map<std::string, double>& seeds, std::string_view query,
                              std::optional<OfficeApp> app, const std::optional<std::string>& appKey,
                              const std::map<std::string, std::string>& apps,
                              const std::function<bool(const std::string&)>& exists) {
  const std::string typed = Utf8::repaired(query);
  const std::string wanted = Utf8::folded(Utf8::trimmed(typed));

  std::vector<std::pair<std::string, double>> kept;
  for (const auto& [path, time] : merged(own, seeds)) {
    if (!belongs(path, app, appKey, apps)) continue;
    if (!wanted.empty() && Utf8::folded(path).find(wanted) == std::string::npos) continue;
    if (!exists(path)) continue;
    kept.emplace_back(path, orderedTime(time));
  }
  std::stable_sort(kept.begin(), kept.end(),
                   [](const auto& left, const auto& right) { return left.second > right.second; });

  std::vector<std::string> paths;
  paths.reserve(kept.size());
  for (auto& entry : kept) paths.push_back(std::move(entry.first));
  return paths;
}

}  // namespace pellar::Recent
