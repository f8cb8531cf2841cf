#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "core/OfficeApp.h"
#include "core/TrackedApp.h"

namespace pellar {

// What the user chose. The defaults also stand for whatever the state file leaves out.
struct Settings {
  // Whether an Office application's windows get a strip, by its raw value.
  std::map<std::string, bool> apps{{"word", true}, {"excel", true}, {"powerpoint", true}, {"outlook", true}};
  bool launchAtLogin = false;
  std::int64_t autoSaveMinutes = 0;     // 0, or anything below, means off
  bool allApps = true;                  // whether applications other than the four are followed
  std::vector<std::string> hiddenApps;  // identifiers of applications the user switched off
  bool autoUpdateCheck = true;
  std::string acceptedEulaVersion;  // the version of the terms last accepted; empty for none

  // Whether changed documents are saved every few minutes.
  [[nodiscard]] bool autoSaves() const { return autoSaveMinutes > 0; }
  // True unless the user switched the Office application off.
  [[nodiscard]] bool isEnabled(OfficeApp app) const;
  // Whether the strip is shown for the application.
  [[nodiscard]] bool follows(const TrackedApp& app) const;

  friend bool operator==(const Settings&, const Settings&) = default;
};

}  // namespace pellar
