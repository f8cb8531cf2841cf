#include "bench/linux/Gestures.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/follow/Samples.h"
#include "tests/e2e/Keys.h"
#include "tests/e2e/PopUpMenu.h"
#include "tests/e2e/RecentPanel.h"
#include "tests/e2e/SidePanel.h"
#include "tests/e2e/Strip.h"

namespace pellar::bench {
namespace {

constexpr std::chrono::milliseconds rest{200};
// More tabs than a strip has room for run on under its tools and take their clicks: a tool is clicked between
// two tabs. With windows of this width there is such a place in the middle of the search.
constexpr int windowWidth = 1115;
constexpr std::size_t mostBesideTools = 20;

int searchBetweenTabs(int stripWidth) {
  constexpr int searchToRightEdge = 164;
  constexpr int firstGap = 32;
  constexpr int pitch = 30;
  constexpr int half = 2;  // of a gap
  const int search = stripWidth - searchToRightEdge;
  return firstGap + (search - firstGap + pitch - 1) / pitch * pitch + half;
}

// Pellar over the last of many windows.
class Gestures {
 public:
  Gestures(e2e::Desktop& desktop, int applications, int windows) : desktop_(desktop), strip_(desktop) {
    for (int application = 0; application < applications; ++application) {
      programs_.push_back(
          std::make_unique<e2e::Application>(desktop, "editor" + std::to_string(application)));
      for (int window = 0; window < windows; ++window) {
        last_ = programs_.back()->openWithoutWaiting("Document " + std::to_string(window) + " - Editor",
                                                     {100, 200, windowWidth, 300});
      }
    }
    const auto all = static_cast<std::size_t>(applications) * static_cast<std::size_t>(windows);
    desktop.observer().waitUntil(
        "all windows are there", [&] { return desktop.observer().clients().size() == all; }, patience);
    desktop.observer().waitUntil(
        "the last is shown", [this] { return desktop_.observer().isViewable(last_.id); }, patience);
    // A window manager that has to show so many is busy for longer than other tests wait.
    desktop.observer().sendToRoot(last_.id, "_NET_ACTIVE_WINDOW", {2, desktop.observer().serverTime(), 0});
    desktop.observer().waitUntil(
        "the last is active", [this] { return desktop_.isActive(last_); }, patience);
    desktop.folders().settleIn();
    pellar_ = desktop.start({e2e::builtProgram("pellar")}, "pellar");
    desktop.observer().waitUntil(
        "the strip is there", [&] { return strip_.isOver(last_); }, patience);
    waitUntilIdle();
  }
  ~Gestures() {
    pellar_->end();
    for (const auto& each : programs_) each->quit();
    desktop_.observer().waitUntil(
        "the desktop is empty", [this] { return desktop_.observer().clients().empty(); }, patience);
  }
  Gestures(const Gestures&) = delete;
  Gestures& operator=(const Gestures&) = delete;

  void openTabMenu() {
    const auto box = *strip_.box();
    desktop_.observer().click(box.x + 10, box.y + e2e::Strip::height / 2, 3);
    menu().waitUntilOpen();
  }
  void closeTabMenu() {
    desktop_.observer().strike(e2e::escapeKey);
    menu().waitUntilClosed();
  }
  void showCard() {
    const auto box = *strip_.box();
    desktop_.observer().movePointer(box.x + 10, box.y + e2e::Strip::height / 2);
    e2e::SidePanel::card(desktop_, strip_).waitUntilShown();
  }
  void leave() {
    desktop_.observer().movePointer(5, 890);
    e2e::SidePanel::card(desktop_, strip_).waitUntilGone();
  }
  void openDropDown() {
    e2e::RecentPanel recent(desktop_, strip_);
    if (recent.field()) return recent.openByClickOnTheField();
    if (strip_.tabs().size() <= mostBesideTools) return recent.openByClickOnTheMagnifier();
    const auto box = *strip_.box();
    desktop_.observer().click(box.x + searchBetweenTabs(box.width), box.y + e2e::Strip::height / 2);
    recent.waitUntilOpen();
  }
  void closeDropDown() {
    desktop_.observer().strike(e2e::escapeKey);
    e2e::RecentPanel(desktop_, strip_).waitUntilClosed();
  }

  // Milliseconds that Pellar's main thread had a processor for a deed, and for what came of it at once.
  template <class Deed>
  double worked(Deed deed) {
    const double before = processorTime();
    deed();
    waitUntilIdle();
    return processorTime() - before;
  }

 private:
  [[nodiscard]] e2e::PopUpMenu menu() { return {desktop_, *pellar_}; }
  void waitUntilIdle() {
    for (long before = -1; before != pellar_->voluntarySwitches();) {
      before = pellar_->voluntarySwitches();
      if (pellar_->waitForEnd(rest)) throw std::runtime_error("Pellar has ended: " + pellar_->errors());
    }
  }
  [[nodiscard]] double processorTime() const {
    const auto pid = std::to_string(pellar_->pid());
    double nanoseconds = 0;
    std::ifstream("/proc/" + pid + "/task/" + pid + "/schedstat") >> nanoseconds;
    return nanoseconds / 1e6;
  }

  e2e::Desktop& desktop_;
  e2e::Strip strip_;
  std::vector<std::unique_ptr<e2e::Application>> programs_;
  e2e::Window last_;
  std::unique_ptr<e2e::Process> pellar_;
};

}  // namespace

void measureGestures(e2e::Desktop& desktop, int applications, int windows, int rounds) {
  Gestures gestures(desktop, applications, windows);
  const auto print = [&](const char* what, const auto& begin, const auto& end) {
    std::vector<double> costs;
    for (int round = 0; round < rounds; ++round) {
      costs.push_back(gestures.worked(begin));
      gestures.worked(end);
    }
    std::printf("%12d %8d  %-22s %9.2f %9.2f\n", applications, windows, what, median(costs),
                *std::ranges::max_element(costs));
  };
  print(
      "right click", [&] { gestures.openTabMenu(); }, [&] { gestures.closeTabMenu(); });
  gestures.worked([&] { gestures.leave(); });
  print(
      "card", [&] { gestures.showCard(); }, [&] { gestures.leave(); });
  print(
      "drop-down", [&] { gestures.openDropDown(); }, [&] { gestures.closeDropDown(); });
}

}  // namespace pellar::bench
