// Days on which everything happens at any time: windows, applications, spaces and displays come and go while
// the user works the strip with mouse and keyboard, also under open menus, questions and drags. Each day is
// the same whenever it is run.

#include <gtest/gtest.h>

#include "tests/simulation/RandomDay.h"
#include "tests/simulation/RandomDays.h"
#include "tests/simulation/ShortStory.h"

namespace pellar {
namespace {

TEST(RandomDays, LeaveEverythingAsItShouldBe) {
  for (unsigned seed = randomDays().first; seed <= randomDays().last; ++seed) {
    randomDays().current = seed;
    if (findingOf(seed, everyStep())) ADD_FAILURE() << shortStory(seed);
  }
}

}  // namespace
}  // namespace pellar
