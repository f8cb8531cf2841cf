#pragma once

#include <chrono>

#include "tests/e2e/Desktop.h"

namespace pellar::bench {

// How long some hundred windows may take to come or go.
inline constexpr std::chrono::seconds patience{120};

// What the user's gestures cost over as many windows: the program as users start it, on the desktop given,
// with `applications` programs of `windows` windows each. Prints a line for each gesture.
void measureGestures(e2e::Desktop& desktop, int applications, int windows, int rounds);

}  // namespace pellar::bench
