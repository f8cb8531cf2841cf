#pragma once

#include <vector>

#include "tests/e2e/tour/Stage.h"
#include "tests/e2e/tour/Step.h"

namespace pellar::e2e {

// What comes up beside the strip, and the shortcut: a card, the picker of layouts, recent files, Control-Tab.
// It begins where menuSteps() ended. The stage must outlive the steps.
[[nodiscard]] std::vector<Step> panelSteps(Stage& stage);

}  // namespace pellar::e2e
