#include <benchmark/benchmark.h>

#include <memory>
#include <optional>
#include <string>

#include "app/tracking/WindowTracker.h"
#include "platform/sim/SimMac.h"

namespace pellar {
namespace {

// Takes the pictures and does nothing with them.
class IdleDelegate final : public WindowTrackerDelegate {
 public:
  void tracker(WindowTracker&, const std::optional<TrackedApp>&, const WindowList& windows,
               const std::shared_ptr<OfficeWindow>&) override {
    tabs = windows.size();
  }
  std::size_t tabs = 0;
};

// A tracker over an application with many windows.
struct Tracked {
  Tracked(const char* bundleId, int count) {
    application.emplace(mac.launch({.bundleId = bundleId, .name = "Editor"}));
    for (int i = 0; i < count; ++i) application->open("Document " + std::to_string(i));
    Platform& platform = mac.platform();
    tracker = WindowTracker::create(platform.accessibility, platform.workspace, platform.mainLoop);
    tracker->delegate = delegate;
    tracker->start();
    mac.settle();
  }
  void count(benchmark::State& state) {
    const RoundTrips trips = mac.accessibility().roundTrips();
    state.counters["round_trips"] = trips.total();
    state.counters["single_reads"] = trips.reads;
    state.counters["fetches"] = trips.batches;
  }

  SimMac mac;
  std::optional<SimApplication> application;
  std::shared_ptr<IdleDelegate> delegate = std::make_shared<IdleDelegate>();
  std::shared_ptr<WindowTracker> tracker;
};

// One refresh, nothing having changed since the last.
void refresh(benchmark::State& state, const char* bundleId) {
  const auto count = static_cast<int>(state.range(0));
  Tracked tracked(bundleId, count);
  if (tracked.delegate->tabs != static_cast<std::size_t>(count)) {
    state.SkipWithError("the tracker does not see every window");
    return;
  }
  tracked.mac.accessibility().forgetRoundTrips();
  tracked.tracker->refresh();
  tracked.count(state);
  for (auto _ : state) {
    tracked.tracker->refresh();
    // What was fetched is good until the loop turns; a real refresh has a turn of its own.
    tracked.mac.mainLoop().post([] {});
    tracked.mac.settle();
  }
}

// The first refresh after the user has come back from another application.
void firstRefresh(benchmark::State& state, const char* bundleId) {
  Tracked tracked(bundleId, static_cast<int>(state.range(0)));
  const auto other = tracked.mac.launch({.bundleId = "org.example.other", .name = "Other"});
  const auto leave = [&] {
    tracked.mac.activate(other);
    tracked.mac.settle();
    tracked.mac.activate(*tracked.application);
  };
  leave();
  tracked.mac.accessibility().forgetRoundTrips();
  tracked.tracker->refresh();
  tracked.count(state);
  for (auto _ : state) {
    state.PauseTiming();
    leave();
    state.ResumeTiming();
    tracked.tracker->refresh();
  }
}

BENCHMARK_CAPTURE(refresh, anyApplication, "org.example.editor")
    ->Arg(1)
    ->Arg(10)
    ->Arg(100)
    ->Arg(500)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(refresh, office, "com.microsoft.Word")
    ->Arg(1)
    ->Arg(10)
    ->Arg(100)
    ->Arg(500)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(firstRefresh, anyApplication, "org.example.editor")
    ->Arg(1)
    ->Arg(10)
    ->Arg(100)
    ->Arg(500)
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace pellar
