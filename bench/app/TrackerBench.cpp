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

// One refresh of an application with many windows, nothing having changed since the last.
void refresh(benchmark::State& state, const char* bundleId) {
  SimMac mac;
  auto application = mac.launch({.bundleId = bundleId, .name = "Editor"});
  const auto count = static_cast<int>(state.range(0));
  for (int i = 0; i < count; ++i) application.open("Document " + std::to_string(i));
  Platform& platform = mac.platform();
  const auto delegate = std::make_shared<IdleDelegate>();
  const auto tracker = WindowTracker::create(platform.accessibility, platform.workspace, platform.mainLoop);
  tracker->delegate = delegate;
  tracker->start();
  mac.settle();
  if (delegate->tabs != static_cast<std::size_t>(count)) {
    state.SkipWithError("the tracker does not see every window");
    return;
  }

  mac.accessibility().forgetRoundTrips();
  tracker->refresh();
  const RoundTrips trips = mac.accessibility().roundTrips();
  for (auto _ : state) {
    tracker->refresh();
    // What was fetched is good until the loop turns; a real refresh has a turn of its own.
    mac.mainLoop().post([] {});
    mac.settle();
  }
  state.counters["round_trips"] = trips.total();
  state.counters["single_reads"] = trips.reads;
  state.counters["fetches"] = trips.batches;
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

}  // namespace
}  // namespace pellar
