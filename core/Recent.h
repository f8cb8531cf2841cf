#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/NameMap.h"
#include "core/OfficeApp.h"

namespace pellar::Recent {

// What a time of last use is ordered by: one that is no number counts as the oldest, so that the order is
// total.
double orderedTime(double time);

// The paths to show, newest first; equal times in the order of their paths.
//   own      AppState::recent
//   seeds    paths and times (seconds since 1970 UTC) remembered by Office
//   query    as typed; matches anywhere in the path, whatever its case and Unicode normalisation
//   app      keep the documents of this Office application, by extension
//   appKey   else keep those last used with this application; absent for all
//   apps     AppState::recentApp
//   exists   whether a file is still there; asked once for each path that passed everything else
std::vector<std::string> list(const NameMap<double>& own, const NameMap<double>& seeds,
                              std::string_view query, std::optional<OfficeApp> app,
                              const std::optional<std::string>& appKey, const NameMap<std::string>& apps,
                              const std::function<bool(const std::string&)>& exists);

}  // namespace pellar::Recent
