#pragma once

#include <vector>

#include "tests/e2e/tour/Stage.h"
#include "tests/e2e/tour/Step.h"

namespace pellar::e2e {

// The strip on a second monitor. It begins where shellSteps() ended. The stage must outlive the steps.
[[nodiscard]] std::vector<Step> secondMonitorSteps(Stage& stage);

// A menu, the card of a tab and the recent files on a dense screen. It begins where firstStartSteps() ended,
// on a stage at a scale of its own. The stage must outlive the steps.
[[nodiscard]] std::vector<Step> doubleDensitySteps(Stage& stage);

}  // namespace pellar::e2e
