#pragma once

#include "tests/e2e/Desktop.h"

namespace pellar::bench {

// What the user's gestures cost over as many windows: the program as users start it, on the desktop given,
// with `applications` programs of `windows` windows each. Prints a line for each gesture.
void measureGestures(e2e::Desktop& desktop, int applications, int windows, int rounds);

}  // namespace pellar::bench
