#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "app/strip/tabs/TabStripView.h"
#include "bench/BenchViewHost.h"
#include "platform/sim/drawing/SimTextMeasure.h"

namespace pellar {
namespace {

constexpr Size stripSize{1900, 32};

// Drawing on it costs nothing, so that what remains is the view's own work.
class IdleCanvas final : public Canvas {
 public:
  void fillRoundedRect(const ViewRect&, double, const Color&) override { ++calls; }
  void drawText(std::string_view, ViewPoint, const Font&, const Color&) override { ++calls; }
  void drawTruncatedText(std::string_view, const ViewRect&, const Font&, const Color&) override { ++calls; }
  void drawMiddleTruncatedText(std::string_view, const ViewRect&, const Font&, const Color&) override {
    ++calls;
  }
  void drawWrappedText(std::string_view, const ViewRect&, int, const Font&, const Color&) override {
    ++calls;
  }
  void drawCenteredText(std::string_view, const ViewRect&, const Font&, const Color&) override { ++calls; }
  void drawSymbol(Symbol, const ViewRect&, const Color&) override { ++calls; }
  [[nodiscard]] bool increasesContrast() const override { return false; }
  std::int64_t calls = 0;
};

struct Strip {
  explicit Strip(std::size_t count) : tabs(benchTabs(count)) {
    view.setTabs(tabs);
    view.layout();
    static_cast<void>(host.takeDirty());
  }
  SimTextMeasure measure;
  BenchViewHost host{stripSize, measure};
  TabStripView view{host};
  std::vector<TabItem> tabs;
};

void layout(benchmark::State& state) {
  Strip strip(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    strip.view.layout();
    const auto rects = strip.view.geometry().tabRects();
    benchmark::DoNotOptimize(rects.data());
  }
}
BENCHMARK(layout)->Arg(1)->Arg(10)->Arg(100)->Arg(500);

void fullRedraw(benchmark::State& state) {
  Strip strip(static_cast<std::size_t>(state.range(0)));
  IdleCanvas canvas;
  strip.view.draw(canvas, strip.host.bounds());
  const auto calls = canvas.calls;
  for (auto _ : state) strip.view.draw(canvas, strip.host.bounds());
  benchmark::DoNotOptimize(canvas.calls);
  state.counters["canvas_calls"] = static_cast<double>(calls);
}
BENCHMARK(fullRedraw)->Arg(1)->Arg(10)->Arg(100)->Arg(500);

// A report in which one title differs, and the redraw it leads to.
void oneTitle(benchmark::State& state) {
  Strip strip(static_cast<std::size_t>(state.range(0)));
  IdleCanvas canvas;
  const std::string titles[] = {"Draft", "Draft *"};
  std::size_t turn = 0;
  double pixels = 0;
  for (auto _ : state) {
    strip.tabs.back().label = titles[++turn % 2];
    strip.view.setTabs(strip.tabs);
    pixels = 0;
    for (const ViewRect& dirty : strip.host.takeDirty()) {
      strip.view.draw(canvas, dirty);
      pixels += dirty.width * dirty.height;
    }
  }
  benchmark::DoNotOptimize(canvas.calls);
  state.counters["redrawn_pixels"] = pixels;
}
BENCHMARK(oneTitle)->Arg(1)->Arg(10)->Arg(100)->Arg(500);

}  // namespace
}  // namespace pellar
