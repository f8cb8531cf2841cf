#pragma once

#include <optional>
#include <string>

namespace pellar {

// What the program's bundle says of it.
struct BundleInfo {
  std::optional<std::string> shortVersion;  // CFBundleShortVersionString, dotted numbers
  std::optional<std::string> version;       // CFBundleVersion, of the build
  std::string webSite;                      // the product's web site, without a slash at its end
};

// This program as the system runs it. Main thread only.
class Application {
 public:
  virtual ~Application() = default;

  // Ends the program. May return first; the main loop then ends with the present turn.
  virtual void terminate() = 0;
};

}  // namespace pellar
