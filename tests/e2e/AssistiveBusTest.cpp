// The accessibility bus and those who listen on it come and go, and hang, while the user works.

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <optional>

#include "tests/e2e/AssistiveTest.h"
#include "tests/e2e/Hanging.h"
#include "tests/e2e/Keys.h"
#include "tests/e2e/PopUpMenu.h"
#include "tests/e2e/RecentPanel.h"

namespace pellar::e2e {
namespace {

using namespace std::chrono_literals;

// Kills a process and returns when it is gone.
void destroy(pid_t process) {
  const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
  kill(process, SIGKILL);
  pollfd entry{descriptor, POLLIN, 0};
  EXPECT_EQ(poll(&entry, 1, static_cast<int>(patience.count())), 1);
  close(descriptor);
}

class AssistiveBus : public Assistive {
 protected:
  AssistiveBus() : recent(desktop, strip) {}

  // A widget of the toolkit that is shown, has the keys, and goes.
  void searchAndLeave() {
    recent.openByClickOnTheField();
    desktop.observer().strike(escapeKey);
    recent.waitUntilClosed();
  }
  // Does all that within the time that a user would wait without a thought.
  void workSwiftly() {
    const auto begin = std::chrono::steady_clock::now();
    strip.clickTab(0);
    strip.waitUntilOver(report);
    searchAndLeave();
    strip.clickTab(1);
    strip.waitUntilOver(plan);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
  }
  RecentPanel recent;
};

INSTANTIATE_TEST_SUITE_P(WindowManagers, AssistiveBus, ::testing::Values(WindowManager::openbox),
                         [](const auto&) { return nameOf(WindowManager::openbox); });

TEST_P(AssistiveBus, WhileNobodyListensPellarIsNotOnTheBusWhateverTheUserDoes) {
  openTwo();
  searchAndLeave();
  PopUpMenu menu(desktop, *pellar);
  strip.clickTab(0, 3);
  menu.waitUntilOpen();
  desktop.observer().strike(escapeKey);
  menu.waitUntilClosed();
  waitUntilIdle();
  EXPECT_EQ(nameOnBus(), "-");
}

TEST_P(AssistiveBus, AReaderThatIsSwitchedOnAfterASearchFindsPellar) {
  openTwo();
  searchAndLeave();
  switchOn();
  EXPECT_EQ(element("Plan").states, "selected");
}

TEST_P(AssistiveBus, OnceTheReaderIsSwitchedOffPellarSaysNothingOfWhatTheUserDoes) {
  openTwo();
  switchOn();
  tell("off");
  desktop.observer().waitUntil("Pellar tells nothing", [this] { return ask("read") == "-"; });
  const std::string own = "sender='" + nameOnBus() + "'";
  const auto words = desktop.start({"dbus-monitor", "--address", ask("address"), own}, "dbus-monitor");
  // The monitor listens once it tells of itself.
  static_cast<void>(words->readLine());
  workSwiftly();
  waitUntilIdle();
  EXPECT_TRUE(isRegistered());
  std::string first = words->readLine();
  while (first.starts_with(' ') || first.find("sender=org.freedesktop.DBus") != std::string::npos)
    first = words->readLine();
  EXPECT_TRUE(first.starts_with("method return")) << "what it said before its answer to that: " << first;
}

// The bus may end by itself, or with its launcher.
TEST_P(AssistiveBus, WhenTheBusEndsTheUserWorksOnAndTheNextReaderFindsPellar) {
  openTwo();
  for (const bool byItself : {true, false}) {
    switchOn();
    const pid_t launcher = processOf("launcher");
    const pid_t bus = processOf("bus");
    if (!byItself) destroy(launcher);
    destroy(bus);
    reader->end();
    workSwiftly();
    waitUntilIdle();
    startReader();
  }
  switchOn();
  EXPECT_EQ(element("Plan").states, "selected");
  tell("press Report");
  strip.waitUntilOver(report);
  waitUntilSelected("Report");
  tell("abuse");
  waitUntilSelected("Report");
}

TEST_P(AssistiveBus, PellarStartsAndWorksWhileWhoKnowsTheBusHangs) {
  startReader();
  const Hanging launcher(processOf("launcher"));
  openWindows();
  const auto begin = std::chrono::steady_clock::now();
  startPellar();
  waitForStrip();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
  workSwiftly();
}

TEST_P(AssistiveBus, AReaderFindsPellarOnceTheLauncherAnswersAgain) {
  startReader();
  tell("on");
  std::optional<Hanging> launcher(processOf("launcher"));
  openWindows();
  startPellar();
  waitForStrip();
  workSwiftly();
  launcher.reset();
  waitUntilRead();
}

TEST_P(AssistiveBus, AReaderFindsPellarOnceTheRegistryAnswersAgain) {
  openTwo();
  tell("listen");
  std::optional<Hanging> registry(processOf("registry"));
  tell("on");
  workSwiftly();
  registry.reset();
  waitUntilRead();
}

TEST_P(AssistiveBus, AReaderFindsPellarOnceTheBusAnswersAgain) {
  openTwo();
  std::optional<Hanging> bus(processOf("bus"));
  tell("announce");
  workSwiftly();
  bus.reset();
  waitUntilRead();
}

TEST_P(AssistiveBus, WhenTheSessionsBusEndsTheUserWorksOn) {
  openTwo();
  switchOn();
  desktop.sessionBus().signal(SIGKILL);
  desktop.sessionBus().waitForEnd();
  workSwiftly();
  waitUntilIdle();
}

}  // namespace
}  // namespace pellar::e2e
