#pragma once

#include <vector>

#include "tests/e2e/tour/Stage.h"
#include "tests/e2e/tour/Step.h"

namespace pellar::e2e {

// The strip's menus and its question: a tab is tagged, its window tiled, the open documents are saved as a
// group. It begins where stripSteps() ended. The stage must outlive the steps.
[[nodiscard]] std::vector<Step> menuSteps(Stage& stage);

}  // namespace pellar::e2e
