#include <benchmark/benchmark.h>

#include <optional>
#include <string>

#include "core/Recent.h"

namespace pellar {
namespace {

constexpr int usualCount = 300;
constexpr int hostileCount = 100'000;  // as a foreign state file may hold

// Paths that share no name with those of another folder.
NameMap<double> pathsIn(const std::string& folder, int count) {
  static const char* const names[] = {"Quarterly report ", "Übersicht ", "Budget ", "Notes "};
  static const char* const extensions[] = {".docx", ".xlsx", ".pptx", ".txt"};
  NameMap<double> paths;
  for (int i = 0; i < count; ++i) {
    const std::string name = names[i % 4] + std::to_string(i) + extensions[i / 4 % 4];
    paths[folder + name] = 1'700'000'000.0 + i * 37 % 1000;
  }
  return paths;
}

// The drop-down's list while the user types, from as many paths of our own as of Office.
void list(benchmark::State& state, const std::string& query, int count) {
  const auto own = pathsIn("/home/ann/Documents/", count);
  const auto seeds = pathsIn("/home/ann/Library/Projects/", count);
  NameMap<std::string> apps;
  for (const auto& [path, time] : own) apps[path] = "org.example.editor";
  const auto exists = [](const std::string&) { return true; };
  std::size_t shown = 0;
  for (auto _ : state) {
    const auto paths = Recent::list(own, seeds, query, std::nullopt, std::nullopt, apps, exists);
    shown = paths.size();
    benchmark::DoNotOptimize(paths.data());
  }
  state.counters["shown"] = static_cast<double>(shown);
}

BENCHMARK_CAPTURE(list, noQuery, std::string(), usualCount);
BENCHMARK_CAPTURE(list, query, std::string("report"), usualCount);
BENCHMARK_CAPTURE(list, unicodeQuery, std::string("übersicht"), usualCount);
BENCHMARK_CAPTURE(list, noMatch, std::string("nothing is called this"), usualCount);
BENCHMARK_CAPTURE(list, hostileNoQuery, std::string(), hostileCount)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(list, hostileQuery, std::string("report"), hostileCount)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(list, hostileNoMatch, std::string("nothing is called this"), hostileCount)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace pellar
