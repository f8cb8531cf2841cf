#include "platform/shared/system/BuiltBundle.h"

namespace pellar {

BundleInfo builtBundle() {
  return {.shortVersion = PELLAR_VERSION, .version = PELLAR_VERSION, .webSite = PELLAR_WEB_SITE};
}

}  // namespace pellar
