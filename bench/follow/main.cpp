// bench_follow PELLAR [--rounds N] [--samples N] [--windows N]: how fast the strip follows windows on a
// private X server, beside a bare follower and a task bar measured in the same run.

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/follow/BareFollower.h"
#include "bench/follow/FollowBenchmark.h"

namespace pellar::bench {
namespace {

// A run that hangs anywhere ends by itself; its programs end with it.
constexpr unsigned longestRunSeconds = 600;

const char* const strip = "pellar";
const char* const bare = "bare";
const char* const taskBar = "tint2";

const char* const taskBarConfig =
    "panel_items = T\npanel_size = 100% 30\npanel_monitor = all\npanel_position = bottom center horizontal\n"
    "taskbar_mode = single_desktop\ntask_text = 1\ntask_icon = 0\ntask_maximum_size = 160 30\n"
    "rounded = 0\nbackground_color = #202020 100\nrounded = 0\nbackground_color = #606060 100\n"
    "panel_background_id = 1\ntask_background_id = 1\ntask_active_background_id = 2\n";

struct Row {
  Quantity quantity;
  const char* name;
};
constexpr Row rows[] = {
    {Quantity::moveFromFrame, "move: frame to strip, us"},
    {Quantity::moveFromRequest, "move: request to strip, us"},
    {Quantity::title, "title: change to drawing, us"},
    {Quantity::focusSameApp, "focus, same application, us"},
    {Quantity::focusOtherApp, "focus, other application, us"},
    {Quantity::dragged, "drag, processor time, ms/s"},
    {Quantity::mapped, "start: exec to mapped, ms"},
    {Quantity::drawn, "start: exec to drawn, ms"},
    {Quantity::writtenMemory, "memory, anonymous or written, MB"},
};

void printSamples(const FollowBenchmark& benchmark) {
  std::printf("%-30s %-8s %9s %21s %9s %6s %6s\n", "", "", "median", "medians of the rounds", "p99", "n",
              "missed");
  for (const auto& row : rows) {
    for (const auto& subject : benchmark.subjects()) {
      if (!benchmark.has(subject.name, row.quantity)) continue;
      const Samples& samples = benchmark.samples(subject.name, row.quantity);
      const auto all = samples.all();
      if (all.empty() && samples.missed == 0) continue;
      const auto medians = samples.medians();
      std::printf("%-30s %-8s %9.1f %10.1f..%9.1f %9.1f %6zu %6d\n", row.name, subject.name.c_str(),
                  median(medians), quantile(medians, 0), quantile(medians, 1), quantile(all, 0.99),
                  all.size(), samples.missed);
    }
  }
}

// The ratio within each round, then the median of the rounds: what disturbs a round disturbs both.
double ratio(const FollowBenchmark& benchmark, const char* over, const char* under, Quantity quantity) {
  const auto dividends = benchmark.samples(over, quantity).medians();
  const auto divisors = benchmark.samples(under, quantity).medians();
  std::vector<double> ratios;
  for (std::size_t i = 0; i < dividends.size() && i < divisors.size(); ++i) {
    if (divisors[i] > 0) ratios.push_back(dividends[i] / divisors[i]);
  }
  return median(ratios);
}

void printAim(const char* text, double value, bool met) {
  std::printf("%-62s %8.2f  %s\n", text, value, met ? "met" : "NOT MET");
}

void printAims(const FollowBenchmark& benchmark) {
  const double move = ratio(benchmark, strip, bare, Quantity::moveFromFrame);
  printAim("move within 1.15 times the bare follower", move, move <= 1.15);
  const double request = ratio(benchmark, strip, bare, Quantity::moveFromRequest);
  printAim("... and from the request within 1.08 times", request, request <= 1.08);
  const double title = ratio(benchmark, strip, bare, Quantity::title);
  printAim("title within 3 times the bare follower, which draws no text", title, title <= 3);
  for (const auto& [quantity, text] :
       {std::pair{Quantity::focusSameApp, "focus in the application within 1.15 times the bare follower"},
        std::pair{Quantity::focusOtherApp, "focus of another application within 1.15 times"}}) {
    if (!benchmark.has(strip, quantity)) continue;
    const double focus = ratio(benchmark, strip, bare, quantity);
    printAim(text, focus, focus <= 1.15);
  }
  const double dragged = median(benchmark.samples(strip, Quantity::dragged).medians());
  printAim("a drag of 125 steps a second under 2 ms of processor time", dragged, dragged <= 2);
  const double written = median(benchmark.samples(strip, Quantity::writtenMemory).medians());
  printAim("anonymous or written memory under 12 MB", written, written < 12);
  const double start = median(benchmark.samples(strip, Quantity::drawn).medians());
  printAim("a drawn strip within 150 ms of the start", start, start < 150);
}

int measure(const std::filesystem::path& program, const Extent& extent) {
  alarm(longestRunSeconds);
  e2e::Folders configuration;
  const auto taskBarFile = configuration.config() / "tint2rc";
  configuration.write(taskBarFile, taskBarConfig);
  const auto own = std::filesystem::read_symlink("/proc/self/exe");
  std::vector<Subject> subjects{{bare, {own.string(), "--bare"}, "bare", true}};
  subjects.push_back({taskBar, {"tint2", "-c", taskBarFile.string()}, "tint2", false});
  if (!program.empty()) subjects.push_back({strip, {program.string()}, "pellar", true});

  FollowBenchmark benchmark(subjects, extent);
  benchmark.run();
  printSamples(benchmark);
  if (!program.empty()) printAims(benchmark);
  return 0;
}

int run(const std::vector<std::string>& arguments) {
  std::filesystem::path program;
  Extent extent;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i] == "--bare") return runBareFollower();
    if (arguments[i] == "--rounds" && i + 1 < arguments.size()) {
      extent.rounds = std::stoi(arguments[++i]);
    } else if (arguments[i] == "--samples" && i + 1 < arguments.size()) {
      extent.samples = std::stoi(arguments[++i]);
    } else if (arguments[i] == "--windows" && i + 1 < arguments.size()) {
      extent.windows = std::max(2, std::stoi(arguments[++i]));
    } else {
      program = std::filesystem::absolute(arguments[i]);
    }
  }
  if (!program.empty() && !std::filesystem::exists(program)) {
    std::fprintf(stderr, "bench_follow: there is no %s\n", program.c_str());
    return 2;
  }
  e2e::adoptOrphans();
  const int code = measure(program, extent);
  for (const auto& left : e2e::childrenLeft()) {
    std::fprintf(stderr, "bench_follow: left running: %s\n", left.c_str());
  }
  e2e::killChildrenLeft();
  return code;
}

}  // namespace
}  // namespace pellar::bench

int main(int argc, char** argv) {
  try {
    return pellar::bench::run({argv + 1, argv + argc});
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_follow: %s\n", failure.what());
    return 1;
  }
}
