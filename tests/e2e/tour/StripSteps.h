#pragma once

#include <vector>

#include "tests/e2e/tour/Stage.h"
#include "tests/e2e/tour/Step.h"

namespace pellar::e2e {

// The strip itself: it appears, its tabs are clicked, dragged and closed, it follows windows and
// applications. It begins with a fresh stage; Pellar runs at its end. The stage must outlive the steps.
[[nodiscard]] std::vector<Step> stripSteps(Stage& stage);

}  // namespace pellar::e2e
