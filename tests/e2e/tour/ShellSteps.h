#pragma once

#include <vector>

#include "tests/e2e/tour/Stage.h"
#include "tests/e2e/tour/Step.h"

namespace pellar::e2e {

// The first start of all: the terms, and no strip before they are accepted. Nothing is asked of any web site.
// The stage must outlive the steps.
[[nodiscard]] std::vector<Step> firstStartSteps(Stage& stage);

// The program's own menu, and About. They begin where panelSteps() ended. The stage must outlive the steps.
[[nodiscard]] std::vector<Step> shellSteps(Stage& stage);

}  // namespace pellar::e2e
