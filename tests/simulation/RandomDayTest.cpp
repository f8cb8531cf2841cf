// Days on which everything happens at any time: windows, applications, spaces and displays come and go while
// the user works the strip with mouse and keyboard, also under open menus, questions and drags. Each day is
// the same whenever it is run.

#include <gtest/gtest.h>

#include <iostream>

#include "tests/simulation/RandomDay.h"
#include "tests/simulation/RandomDays.h"
#include "tests/simulation/ShortStory.h"

namespace pellar {
namespace {

// Each is shortened, which takes as long as some hundred days.
constexpr int mostFindings = 5;

TEST(RandomDays, LeaveEverythingAsItShouldBe) {
  Judge::Count count;
  int findings = 0;
  for (unsigned seed = randomDays().first; seed <= randomDays().last; ++seed) {
    randomDays().current = seed;
    RandomDay day(seed);
    if (day.live(everyStep())) {
      ADD_FAILURE() << shortStory(seed);
      if (++findings == mostFindings) break;
    }
    count += day.judge().count();
  }
  std::cout << "looked at the strip " << count.all() << " times: judged whole " << count.whole << ", in part "
            << count.partly << ", hidden " << count.hidden << "\n";
}

}  // namespace
}  // namespace pellar
