#include <benchmark/benchmark.h>

#include <string>

#include "core/AppState.h"
#include "core/StateCoding.h"
#include "core/StateStore.h"
#include "platform/sim/system/TemporaryFolder.h"

namespace pellar {
namespace {

// As full as a long-used state gets: 300 recent paths, each with its application, 500 tags, 50 groups of ten.
AppState fullState() {
  AppState state;
  const std::string folder = "/home/ann/Documents/Projects/";
  for (int i = 0; i < 300; ++i) {
    const std::string path = folder + "Quarterly report " + std::to_string(i) + ".docx";
    state.recent[path] = 1'700'000'000.25 + i;
    state.recentApp[path] = "org.example.editor";
  }
  for (int i = 0; i < 500; ++i) {
    state.tags[folder + "Tagged " + std::to_string(i) + ".xlsx"] =
        rawValue(allTagColors[static_cast<std::size_t>(i) % allTagColors.size()]);
  }
  for (int i = 0; i < 50; ++i) {
    auto& files = state.groups["Group " + std::to_string(i)];
    for (int j = 0; j < 10; ++j) files.push_back(folder + "Grouped " + std::to_string(i * 10 + j) + ".pptx");
  }
  return state;
}

void encode(benchmark::State& state) {
  const AppState full = fullState();
  std::size_t bytes = 0;
  for (auto _ : state) {
    const std::string text = encodeState(full);
    bytes = text.size();
    benchmark::DoNotOptimize(text.data());
  }
  state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(encode);

void decode(benchmark::State& state) {
  const std::string text = encodeState(fullState());
  for (auto _ : state) benchmark::DoNotOptimize(decodeState(text));
}
BENCHMARK(decode);

// Everything a change costs: the text, the temporary file, its way to the disk, the renaming. The clock on
// the wall counts, since the program waits for the disk.
void save(benchmark::State& state) {
  const TemporaryFolder folder;
  StateStore store(folder / "state.json");
  store.update([](AppState& live) { live = fullState(); });
  for (auto _ : state) store.save();
}
BENCHMARK(save)->UseRealTime()->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace pellar
