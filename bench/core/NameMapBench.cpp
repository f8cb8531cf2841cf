#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

#include "core/NameMap.h"

namespace pellar {
namespace {

using PlainMap = std::map<std::string, double>;

// As a state file holds them: plain names mostly, every fourth with a letter that is composed or not.
std::vector<std::string> paths(int count) {
  static const char* const names[] = {"Quarterly report ", "Budget ", "Notes ", "Übersicht "};
  std::vector<std::string> result;
  for (int i = 0; i < count; ++i)
    result.push_back(std::string("/home/ann/Documents/") + names[i % 4] + std::to_string(i) + ".docx");
  return result;
}

template <class Map>
Map filled(const std::vector<std::string>& names) {
  Map map;
  for (const auto& name : names) map.try_emplace(name, 1.0);
  return map;
}

template <class Map>
void fill(benchmark::State& state) {
  const auto names = paths(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(filled<Map>(names).size());
}

template <class Map>
void lookUp(benchmark::State& state) {
  const auto names = paths(static_cast<int>(state.range(0)));
  const auto map = filled<Map>(names);
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(map.find(names[next]) != map.end());
    next = (next + 1) % names.size();
  }
}

BENCHMARK(fill<NameMap<double>>)->Arg(600)->Unit(benchmark::kMicrosecond);
BENCHMARK(fill<PlainMap>)->Arg(600)->Unit(benchmark::kMicrosecond);
BENCHMARK(lookUp<NameMap<double>>)->Arg(600)->Arg(100'000);
BENCHMARK(lookUp<PlainMap>)->Arg(600)->Arg(100'000);

}  // namespace
}  // namespace pellar
