#pragma once

// The simulated Mac keeps its home in one as well, so it is defined there.
#include "platform/sim/system/TemporaryFolder.h"
