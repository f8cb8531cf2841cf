#pragma once

#include <functional>

#include "platform/Subscription.h"

namespace pellar {

// Runs the callback once no mouse button is held any more: at once when none is, else from the main loop, in
// whatever mode it runs. Dropping the result is silence.
[[nodiscard]] Subscription whenNoButtonIsDown(std::function<void()> callback);

}  // namespace pellar
