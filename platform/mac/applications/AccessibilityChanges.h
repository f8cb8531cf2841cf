#pragma once

#include <functional>

#include "platform/Subscription.h"

namespace pellar {

// The user changed which programs may use the Accessibility interface. Whether this one may shows a moment
// later. Called on the main thread.
[[nodiscard]] Subscription onAccessibilityChanged(std::function<void()> callback);

}  // namespace pellar
