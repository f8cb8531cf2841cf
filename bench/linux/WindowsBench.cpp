// bench_windows [ROUNDS | --moment]: what gestures over many windows cost the program's main thread, and what
// the strip's first pictures of an application cost on a private X server, on the main thread and from the
// tracker's first read to the panel on the screen, with as many real windows as stand in the first column.

#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "app/automation/Automation.h"
#include "app/strip/StripController.h"
#include "app/strip/documents/DocumentPaths.h"
#include "app/tracking/PlaceInFront.h"
#include "app/tracking/WindowTracker.h"
#include "bench/follow/Samples.h"
#include "bench/linux/Gestures.h"
#include "core/StateStore.h"
#include "platform/linux/LinuxPlatform.h"
#include "tests/e2e/Process.h"
#include "tests/platform/linux/SharedDesktop.h"

namespace pellar::bench {
namespace {

double processorTime() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

// Microseconds.
struct Cost {
  double waited = 0;  // by the clock
  double worked = 0;  // of the main thread's processor
};

Cost costOf(const auto& deed) {
  const auto begun = Clock::now();
  const double before = processorTime();
  deed();
  return {microseconds(Clock::now() - begun), processorTime() - before};
}

enum class Titles { plain, paths, openFiles };

const char* nameOf(Titles titles) {
  switch (titles) {
    case Titles::plain:
      return "no document";
    case Titles::paths:
      return "path in the title";
    case Titles::openFiles:
      return "name of an open file";
  }
  return "";
}

class OpenFile {
 public:
  explicit OpenFile(const std::filesystem::path& path) : descriptor_(open(path.c_str(), O_RDONLY)) {}
  ~OpenFile() { close(descriptor_); }
  OpenFile(OpenFile&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  OpenFile& operator=(OpenFile&&) = delete;
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

 private:
  int descriptor_;
};

// Many windows of one application on a desktop, and pictures of them by programs that have just started.
class ManyWindows {
 public:
  ManyWindows(int count, Titles titles) : desktop_(contract::SharedDesktop::get()), count_(count) {
    const auto folder = desktop_.folders().home() / "Documents";
    std::vector<std::string> names;
    for (int index = 0; index < count; ++index) {
      const std::string name = "Document " + std::to_string(index) + ".txt";
      if (titles != Titles::plain) desktop_.folders().write(folder / name, "Text.\n");
      names.push_back(titles == Titles::paths ? (folder / name).string() : name);
    }
    {
      // The editor takes over what is open here when it starts.
      std::vector<OpenFile> open;
      if (titles == Titles::openFiles)
        for (const auto& name : names) open.emplace_back(folder / name);
      editor_ = std::make_unique<e2e::Application>(desktop_, "editor");
    }
    for (const auto& name : names)
      last_ = editor_->openWithoutWaiting(name + " - Editor", {100, 200, 600, 300});
    desktop_.observer().waitUntil(
        "all windows are there",
        [this] { return desktop_.observer().clients().size() == static_cast<std::size_t>(count_); },
        patience);
    desktop_.observer().waitUntil(
        "the last is shown", [this] { return desktop_.observer().isViewable(last_.id); }, patience);
    desktop_.observer().waitUntil(
        "one is active", [this] { return desktop_.observer().activeWindow() != XCB_NONE; }, patience);
    desktop_.activate(last_);
  }
  ~ManyWindows() {
    editor_->quit();
    desktop_.observer().waitUntil(
        "the desktop is empty", [this] { return desktop_.observer().clients().empty(); }, patience);
  }
  ManyWindows(const ManyWindows&) = delete;
  ManyWindows& operator=(const ManyWindows&) = delete;

  // Of a program that has just started, its first picture and the next.
  std::pair<Cost, Cost> pictures() {
    auto opened = X11Connection::open();
    auto* connection = std::get_if<std::unique_ptr<X11Connection>>(&opened);
    if (connection == nullptr) throw std::runtime_error("no connection to the display");
    LinuxPlatform linuxPlatform(std::move(*connection), [] {});
    const Platform& platform = linuxPlatform.platform();
    const auto store = std::make_shared<StateStore>(desktop_.folders().home() / "state.json");
    const auto place = PlaceInFront::create(platform.workspace);
    const auto tracker = WindowTracker::create(platform.accessibility, platform.workspace, platform.mainLoop);
    const auto automation = std::make_shared<Automation>(platform);
    const auto paths = std::make_shared<DocumentPaths>(platform, tracker, automation);
    const auto strip = StripController::create(tracker, store, paths, automation, place, platform);
    const Cost first = costOf([&] { tracker->start(); });
    if (tracker->windows().size() != static_cast<std::size_t>(count_))
      throw std::runtime_error("the tracker does not see every window");
    const Cost next = costOf([&] { tracker->refresh(); });
    return {first, next};
  }

 private:
  e2e::Desktop& desktop_;
  int count_;
  std::unique_ptr<e2e::Application> editor_;
  e2e::Window last_;
};

void print(const char* what, int count, Titles titles, const std::vector<Cost>& costs) {
  std::vector<double> waited;
  std::vector<double> worked;
  for (const auto& each : costs) {
    waited.push_back(each.waited / 1000);
    worked.push_back(each.worked / 1000);
  }
  std::printf("%7d  %-22s %-14s %9.2f %9.2f %9.2f\n", count, nameOf(titles), what, median(waited),
              quantile(waited, 1), median(worked));
}

void measure(const std::vector<int>& counts, int rounds) {
  std::printf("%7s  %-22s %-14s %9s %9s %9s\n", "windows", "titles", "ms", "median", "longest", "worked");
  for (const int count : counts) {
    for (const auto titles : {Titles::plain, Titles::paths, Titles::openFiles}) {
      ManyWindows windows(count, titles);
      std::vector<Cost> first;
      std::vector<Cost> next;
      for (int round = 0; round < rounds; ++round) {
        const auto [cold, warm] = windows.pictures();
        first.push_back(cold);
        next.push_back(warm);
      }
      print("first picture", count, titles, first);
      print("the next", count, titles, next);
    }
  }
}

void measureGesturesOver(const std::vector<std::pair<int, int>>& desktops, int rounds) {
  std::printf("%12s %8s  %-22s %9s %9s\n", "applications", "windows", "main thread, ms", "median", "longest");
  for (const auto& [applications, windows] : desktops)
    measureGestures(contract::SharedDesktop::get(), applications, windows, rounds);
}

}  // namespace
}  // namespace pellar::bench

int main(int argc, char** argv) {
  int code = 0;
  try {
    pellar::e2e::adoptOrphans();
    if (argc > 1 && std::string_view(argv[1]) == "--moment") {
      pellar::bench::measureGesturesOver({{2, 3}}, 1);
      pellar::bench::measure({10}, 1);
    } else {
      const int rounds = argc > 1 ? std::stoi(argv[1]) : 9;
      pellar::bench::measureGesturesOver({{1, 10}, {60, 1}, {1, 500}}, rounds);
      pellar::bench::measure({10, 100, 500}, rounds);
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_windows: %s\n", failure.what());
    code = 1;
  }
  pellar::contract::SharedDesktop::end();
  pellar::e2e::killChildrenLeft();
  return code;
}
