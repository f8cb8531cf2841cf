#pragma once

#include "platform/Application.h"

namespace pellar {

// What this build was told of itself, for systems whose programs carry no description.
[[nodiscard]] BundleInfo builtBundle();

}  // namespace pellar
