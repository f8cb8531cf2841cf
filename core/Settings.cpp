#include "core/Settings.h"

#include <algorithm>

namespace pellar {

bool Settings::isEnabled(OfficeApp app) const {
  const auto entry = apps.find(std::string(rawValue(app)));
  return entry == apps.end() || entry->second;
}

bool Settings::follows(const TrackedApp& app) const {
  if (std::find(hiddenApps.begin(), hiddenApps.end(), app.id) != hiddenApps.end()) return false;
  return app.office ? isEnabled(*app.office) : allApps;
}

}  // namespace pellar
