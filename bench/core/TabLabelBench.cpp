#include <benchmark/benchmark.h>

#include <optional>
#include <string>

#include "core/TabLabel.h"

namespace pellar {
namespace {

void label(benchmark::State& state, const std::string& title) {
  for (auto _ : state) benchmark::DoNotOptimize(TabLabel::label(title, std::nullopt));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(title.size()));
}

void labelOfPath(benchmark::State& state, const std::string& path) {
  for (auto _ : state) benchmark::DoNotOptimize(TabLabel::label("Report", path));
}

void tagKey(benchmark::State& state, const std::string& title) {
  for (auto _ : state) benchmark::DoNotOptimize(TabLabel::tagKey(title, std::nullopt));
}

BENCHMARK_CAPTURE(label, plain, std::string("Quarterly report"));
BENCHMARK_CAPTURE(label, suffixed,
                  std::string("Quarterly report.docx  -  Compatibility Mode - Saved - Word"));
BENCHMARK_CAPTURE(label, unicode, std::string("Übersicht für März – 四半期報告.docx - Word"));
BENCHMARK_CAPTURE(label, invalid, std::string("Report \xff\xfe\xc3.docx - Word"));
BENCHMARK_CAPTURE(label, hundredKilobytes, std::string(100'000, '-'));
BENCHMARK_CAPTURE(labelOfPath, office, std::string("/home/ann/Documents/2024/Quarterly report.docx"));
BENCHMARK_CAPTURE(tagKey, suffixed,
                  std::string("Quarterly report.docx  -  Compatibility Mode - Saved - Word"));

}  // namespace
}  // namespace pellar
