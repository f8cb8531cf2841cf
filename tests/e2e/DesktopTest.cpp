#include "tests/e2e/DesktopTest.h"

#include <chrono>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "tests/e2e/DesktopReport.h"
#include "tests/e2e/Keys.h"

namespace pellar::e2e {

void DesktopTest::startPellar() {
  desktop.folders().settleIn();
  pellar = desktop.start({builtProgram("pellar")}, "pellar");
}

void DesktopTest::acceptTerms() {
  const auto terms = desktop.waitForWindow("Pellar End User Agreement");
  desktop.observer().strike(returnKey);
  desktop.observer().waitUntil("the terms are gone",
                               [&] { return !desktop.observer().isViewable(terms.id); });
}

void DesktopTest::waitUntilIdle() const {
  constexpr std::chrono::milliseconds rest{200};
  for (long before = -1; before != pellar->voluntarySwitches();) {
    before = pellar->voluntarySwitches();
    if (pellar->waitForEnd(rest)) throw std::runtime_error("Pellar has ended");
  }
}

Window DesktopTest::waitUntilSettled() {
  waitUntilIdle();
  const Window front{desktop.observer().activeWindow()};
  strip.waitUntilOver(front);
  return front;
}

Application& DesktopTest::editor() {
  if (!editor_) editor_ = std::make_unique<Application>(desktop, "editor");
  return *editor_;
}

int DesktopTest::logLines(const std::string& part) const {
  std::istringstream log(Folders::read(desktop.folders().logFile()));
  std::string line;
  int count = 0;
  while (std::getline(log, line)) {
    if (line.find(part) != std::string::npos) ++count;
  }
  return count;
}

void DesktopTest::waitUntilStateHas(const std::string& text) {
  desktop.observer().waitUntil("the state file has " + text, [&] { return stateHas(text); });
}

void DesktopTest::stopPellar() {
  if (!pellar) return;
  const auto ending = pellar->end();
  EXPECT_EQ(ending.exitCode, 0) << "ended by signal " << ending.signal.value_or(0)
                                << ", errors: " << pellar->errors();
  EXPECT_EQ(pellar->errors(), "");
  pellar.reset();
}

void DesktopTest::reportFailure() {
  if (!HasFailure()) return;
  std::cout << "Seen when the story failed:\n"
            << describeDesktop(desktop.observer()) << "Pellar's log:\n"
            << Folders::read(desktop.folders().logFile()) << std::flush;
}

void DesktopTest::TearDown() {
  reportFailure();
  if (pellar) {
    desktop.observer().takeEvents();
    const auto dock = desktop.observer().atom("_NET_WM_WINDOW_TYPE_DOCK");
    for (const auto window : strip.allWindows()) {
      EXPECT_FALSE(desktop.observer().everActive().contains(window)) << "the strip had the focus";
      // What reserves room is listed as panels are, which no task bar shows.
      if (desktop.observer().numbers(window, "_NET_WM_WINDOW_TYPE") == std::vector{dock}) continue;
      EXPECT_FALSE(desktop.observer().everListed().contains(window))
          << "the strip was in the list of windows";
    }
    stopPellar();
  }
  editor_.reset();
}

}  // namespace pellar::e2e
