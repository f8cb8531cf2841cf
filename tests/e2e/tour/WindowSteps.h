#pragma once

#include <vector>

#include "tests/e2e/tour/Stage.h"
#include "tests/e2e/tour/Step.h"

namespace pellar::e2e {

// The strip while its window has a dialog, and while it is maximised. It begins where firstStartSteps() ended
// and leaves everything as it was. The stage must outlive the steps.
[[nodiscard]] std::vector<Step> windowSteps(Stage& stage);

}  // namespace pellar::e2e
