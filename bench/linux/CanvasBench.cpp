#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <QRect>
#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "app/strip/tabs/TabStripView.h"
#include "bench/BenchViewHost.h"
#include "platform/linux/drawing/QtCanvas.h"
#include "platform/linux/drawing/QtTextMeasure.h"
#include "platform/linux/drawing/SpriteCache.h"

namespace pellar {
namespace {

constexpr Size stripSize{1900, 32};
// More than the processor's own caches hold of one program.
constexpr std::size_t otherWorkBytes = 8'000'000;

// A strip painted into a picture, as a panel does it.
struct PaintedStrip {
  explicit PaintedStrip(std::size_t count) : tabs(benchTabs(count)) {
    view.setTabs(tabs);
    view.layout();
    static_cast<void>(host.takeDirty());
    paint(host.bounds());
  }

  void paint(const ViewRect& dirty) {
    const QRect clip = QRectF(dirty.x, dirty.y, dirty.width, dirty.height).toAlignedRect();
    fill(picture, clip, qRgba(30, 30, 30, 255));
    QtCanvas canvas(picture, clip, 1, measure, sprites);
    view.draw(canvas, dirty);
  }
  void paintChanges() {
    for (const ViewRect& dirty : host.takeDirty()) paint(dirty);
  }

  QtTextMeasure measure;
  SpriteCache sprites;
  BenchViewHost host{stripSize, measure};
  TabStripView view{host};
  std::vector<TabItem> tabs;
  QImage picture{static_cast<int>(stripSize.width), static_cast<int>(stripSize.height),
                 QImage::Format_ARGB32_Premultiplied};
};

void fullRedraw(benchmark::State& state) {
  PaintedStrip strip(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) strip.paint(strip.host.bounds());
}
BENCHMARK(fullRedraw)->Arg(1)->Arg(10)->Arg(100)->Arg(500)->Unit(benchmark::kMicrosecond);

// A title that was shown before comes back.
void oneTitle(benchmark::State& state) {
  PaintedStrip strip(static_cast<std::size_t>(state.range(0)));
  const std::string titles[] = {"Draft", "Draft *"};
  std::size_t turn = 0;
  for (auto _ : state) {
    strip.tabs.back().label = titles[++turn % 2];
    strip.view.setTabs(strip.tabs);
    strip.paintChanges();
  }
}
BENCHMARK(oneTitle)->Arg(1)->Arg(10)->Arg(100)->Arg(500)->Unit(benchmark::kMicrosecond);

// A title that was never shown.
void newTitle(benchmark::State& state) {
  PaintedStrip strip(static_cast<std::size_t>(state.range(0)));
  std::size_t serial = 0;
  for (auto _ : state) {
    strip.tabs.back().label = "Draft " + std::to_string(++serial);
    strip.view.setTabs(strip.tabs);
    strip.paintChanges();
  }
}
BENCHMARK(newTitle)->Arg(1)->Arg(10)->Arg(100)->Arg(500)->Unit(benchmark::kMicrosecond);

// The same after other programs have had the processor, as it is whenever a user changes something.
void newTitleAfterPause(benchmark::State& state) {
  using Clock = std::chrono::steady_clock;
  PaintedStrip strip(static_cast<std::size_t>(state.range(0)));
  std::vector<unsigned char> otherWork(otherWorkBytes);
  std::size_t serial = 0;
  for (auto _ : state) {
    for (std::size_t i = 0; i < otherWork.size(); i += 64) ++otherWork[i];
    benchmark::DoNotOptimize(otherWork.data());
    benchmark::ClobberMemory();
    const auto start = Clock::now();
    strip.tabs.back().label = "Draft " + std::to_string(++serial);
    strip.view.setTabs(strip.tabs);
    strip.paintChanges();
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
  }
}
BENCHMARK(newTitleAfterPause)->Arg(1)->Arg(10)->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace pellar

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
