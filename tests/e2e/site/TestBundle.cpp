// Takes the place of what a build is told of itself: the program as it is, but for a web site that tests
// start on a port of this machine.

#include <cstdlib>

#include "platform/shared/system/BuiltBundle.h"

namespace pellar {

BundleInfo builtBundle() {
  const char* site = std::getenv("E2E_WEB_SITE");
  return {.shortVersion = PELLAR_VERSION,
          .version = PELLAR_VERSION,
          .webSite = site != nullptr ? site : "http://127.0.0.1:1"};
}

}  // namespace pellar
