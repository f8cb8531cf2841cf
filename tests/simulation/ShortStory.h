#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/simulation/RandomDay.h"

namespace pellar {

// The numbers of all steps of a day.
[[nodiscard]] std::vector<unsigned> everyStep();

// What is found when these steps of a day are lived and no others.
[[nodiscard]] std::optional<Finding> findingOf(unsigned seed, const std::vector<unsigned>& steps);

// The same in words, empty when nothing is found.
[[nodiscard]] std::string whatIsFound(unsigned seed, const std::vector<unsigned>& steps);

// Drops parts, first halves and then smaller ones, as long as something is found still. What is found may be
// another consequence of the same fault.
[[nodiscard]] std::vector<unsigned> shortened(
    std::vector<unsigned> steps, const std::function<bool(const std::vector<unsigned>&)>& isFound);

// The fewest steps of a day on which something is found that dropping steps leads to, as a test to be pasted
// and with what happens in them.
[[nodiscard]] std::string shortStory(unsigned seed);

}  // namespace pellar
