#pragma once

#include <string>

#include "tests/e2e/XObserver.h"

namespace pellar::e2e {

// What is on the screen, for whoever reads why a story failed: the focus, the pointer, and a line for each
// window, from the bottom up.
std::string describeDesktop(XObserver& observer);

}  // namespace pellar::e2e
