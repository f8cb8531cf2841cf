#include "tests/simulation/ShortStory.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace pellar {

std::vector<unsigned> shortened(std::vector<unsigned> steps,
                                const std::function<bool(const std::vector<unsigned>&)>& isFound) {
  std::size_t part = (steps.size() + 1) / 2;
  while (!steps.empty()) {
    bool dropped = false;
    for (std::size_t from = 0; from < steps.size();) {
      std::vector<unsigned> fewer = steps;
      const auto begin = fewer.begin() + static_cast<std::ptrdiff_t>(from);
      fewer.erase(begin, begin + static_cast<std::ptrdiff_t>(std::min(part, steps.size() - from)));
      if (isFound(fewer)) {
        steps = std::move(fewer);
        dropped = true;
      } else {
        from += part;
      }
    }
    if (part == 1 && !dropped) break;
    part = std::max<std::size_t>(1, part / 2);
  }
  return steps;
}

std::vector<unsigned> everyStep() {
  std::vector<unsigned> steps(RandomDay::stepsPerDay);
  std::iota(steps.begin(), steps.end(), 0U);
  return steps;
}

std::optional<Finding> findingOf(unsigned seed, const std::vector<unsigned>& steps) {
  return RandomDay(seed).live(steps);
}

std::string whatIsFound(unsigned seed, const std::vector<unsigned>& steps) {
  const auto finding = findingOf(seed, steps);
  return finding ? "step " + std::to_string(finding->step) + ": " + finding->what : std::string();
}

std::string shortStory(unsigned seed) {
  const auto steps =
      shortened(everyStep(), [&](const auto& fewer) { return findingOf(seed, fewer).has_value(); });
  const auto finding = RandomDay(seed).live(steps, /*toBeRead=*/true);
  if (!finding) return "day " + std::to_string(seed) + " is another when it is lived again";
  std::string numbers;
  for (const unsigned step : steps) numbers += (numbers.empty() ? "" : ", ") + std::to_string(step);
  std::string story = "day " + std::to_string(seed) + ": " + finding->what + "\n";
  story += "TEST(ShortDays, SayWhatTheUserSaw) {\n  EXPECT_EQ(whatIsFound(" + std::to_string(seed) + ", {" +
           numbers + "}), \"\");\n}\n";
  for (const auto& each : finding->trail) story += "  " + each + "\n";
  return story;
}

}  // namespace pellar
