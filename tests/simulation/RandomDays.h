#pragma once

namespace pellar {

// The days to live, by their seeds. The first thirty unless the command line says --days=FIRST-LAST.
struct RandomDays {
  unsigned first = 1;
  unsigned last = 30;
  unsigned current = 0;  // the one that is being lived
};
RandomDays& randomDays();

}  // namespace pellar
