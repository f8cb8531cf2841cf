#include "bench/follow/Subject.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace pellar::bench {

std::optional<xcb_window_t> shownWindow(e2e::XObserver& observer, const Subject& subject) {
  std::optional<xcb_window_t> widest;
  int width = 1;
  // A task bar is managed: its window is inside a frame.
  auto windows = observer.topLevels();
  const auto managed = observer.clients();
  windows.insert(windows.end(), managed.begin(), managed.end());
  for (const auto window : windows) {
    if (!observer.text(window, "WM_CLASS").starts_with(subject.windowClass + '\0')) continue;
    const auto place = observer.box(window);
    if (!place || place->width <= width || !observer.isViewable(window)) continue;
    widest = window;
    width = place->width;
  }
  return widest;
}

bool isOver(e2e::XObserver& observer, xcb_window_t subjectWindow, xcb_window_t target) {
  const auto place = observer.box(subjectWindow);
  const auto frame = observer.frame(target);
  return place && frame && place->x == frame->x && place->y + place->height == frame->y;
}

double writtenMemory(pid_t pid) {
  constexpr double kilobytesPerMegabyte = 1024;
  std::ifstream file("/proc/" + std::to_string(pid) + "/smaps_rollup");
  double written = 0;
  std::string word;
  double kilobytes = 0;
  while (file >> word) {
    if (word == "Private_Dirty:" && file >> kilobytes) written += kilobytes / kilobytesPerMegabyte;
  }
  return written;
}

double processorTime(pid_t pid) {
  constexpr double nanosecondsPerMillisecond = 1e6;
  double spent = 0;
  std::error_code gone;
  for (const auto& thread :
       std::filesystem::directory_iterator("/proc/" + std::to_string(pid) + "/task", gone)) {
    std::ifstream file(thread.path() / "schedstat");
    double nanoseconds = 0;
    if (file >> nanoseconds) spent += nanoseconds / nanosecondsPerMillisecond;
  }
  return spent;
}

}  // namespace pellar::bench
