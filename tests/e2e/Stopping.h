#pragma once

#include "tests/e2e/Process.h"
#include "tests/e2e/XObserver.h"

namespace pellar::e2e {

// Stops a program of the desktop (SIGSTOP), as if it hung, at a moment at which it neither has the X server
// for itself nor has asked for that: stopped then, it would stop everybody.
void stop(const Process& program, XObserver& observer);

}  // namespace pellar::e2e
