#include "app/panels/OfficeSeeds.h"

#include <algorithm>
#include <array>
#include <string>

#include "core/FileUrl.h"
#include "core/OfficeApp.h"

namespace pellar {
namespace {

// The fourth application keeps no such file.
constexpr std::array keepers{OfficeApp::word, OfficeApp::excel, OfficeApp::powerpoint};

std::filesystem::path bookmarksOf(OfficeApp app, const std::filesystem::path& home) {
  const std::string id(bundleID(app));
  return home / "Library" / "Containers" / id / "Data" / "Library" / "Preferences" /
         (id + ".securebookmarks.plist");
}

std::string pathOf(const std::string& key) {
  if (!key.starts_with("file://")) return key;
  return pathOfFileUrl(key).value_or(key);
}

double lastUse(const PropertyListValue& bookmark) {
  static const std::string key = "kLastUsedDateKey";
  const auto* const entry = bookmark.as<PropertyListValue::Dictionary>();
  if (entry == nullptr || !entry->contains(key)) return 0;
  const auto* const date = entry->at(key).as<PropertyListDate>();
  return date == nullptr ? 0 : date->secondsSince1970;
}

}  // namespace

NameMap<double> officeSeeds(PropertyLists& propertyLists, const std::filesystem::path& home) {
  NameMap<double> seeds;
  for (const OfficeApp app : keepers) {
    const auto bookmarks = propertyLists.read(bookmarksOf(app, home));
    if (!bookmarks) continue;
    for (const auto& [key, bookmark] : *bookmarks) {
      double& time = seeds.try_emplace(pathOf(key), 0.0).first->second;
      time = std::max(time, lastUse(bookmark));
    }
  }
  return seeds;
}

}  // namespace pellar
