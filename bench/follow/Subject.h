#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/follow/Samples.h"
#include "tests/e2e/Desktop.h"

namespace pellar::bench {

// A program that reacts to windows, and how its window is known.
struct Subject {
  std::string name;
  std::vector<std::string> command;
  std::string windowClass;  // first part of WM_CLASS
  bool follows = true;      // its window stands over the active one; a task bar stays where it is
};

// Its window on the screen; absent until it is shown. Of several the widest: programs also map tiny helper
// windows.
std::optional<xcb_window_t> shownWindow(e2e::XObserver& observer, const Subject& subject);

// Whether its window stands on the top edge of a window's frame.
bool isOver(e2e::XObserver& observer, xcb_window_t subjectWindow, xcb_window_t target);

// The process's own pages that are anonymous or were written (smaps_rollup), in megabytes. Pages that are as
// in their file do not count: the kernel shares them with other programs and drops them when it wants.
double writtenMemory(pid_t pid);

// The time that all threads of a process spent on a processor so far, in milliseconds.
double processorTime(pid_t pid);

}  // namespace pellar::bench
