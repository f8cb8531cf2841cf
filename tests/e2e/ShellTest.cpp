// The program around the strip: its first start, its menu where there is no tray, several copies of it.

#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <memory>
#include <sstream>

#include "tests/e2e/Keys.h"
#include "tests/e2e/ShellFixture.h"

namespace pellar::e2e {

namespace {

// Items of the menu that can be chosen, counted from the top, while a plain program is in front.
constexpr int hideForItem = 2;
constexpr int startAtLoginItem = 8;
constexpr int showLogItem = 12;
constexpr int quitItem = 13;
// While nobody is followed and one application is hidden.
constexpr int hiddenAppsItem = 2;

class FirstStart : public Shell, public ::testing::WithParamInterface<WindowManager> {
 protected:
  FirstStart() : Shell(GetParam()) {}

  void quitInTheTermsBy(std::uint32_t key) {
    openEditor();
    startFresh();
    const auto terms = waitForOwnWindow(termsTitle);
    // From "I Agree" back to "Quit".
    moveFocus(terms, /*backward=*/true);
    strike(key);
    const auto ending = pellar->waitForEnd();
    ASSERT_TRUE(ending.has_value());
    EXPECT_EQ(ending->exitCode, 0);
    EXPECT_FALSE(stateHas("acceptedEulaVersion\": \"1"));
    pellar.reset();
  }
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(FirstStart);

TEST_P(FirstStart, ShowsTheTermsAndNoStripUntilTheyAreAccepted) {
  const auto report = openEditor();
  startFresh();
  const auto terms = waitForOwnWindow(termsTitle);
  EXPECT_TRUE(desktop.observer().hasState(terms.id, "_NET_WM_STATE_ABOVE"));
  // It does not close without a choice, and stays in sight while the user works elsewhere.
  strike(escapeKey);
  desktop.observer().sendToRoot(terms.id, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, 2});
  desktop.activate(report);
  EXPECT_FALSE(strip.window().has_value());
  EXPECT_TRUE(isOnScreen(termsTitle));
  desktop.activate(terms);
  // By now it has heard all that came before.
  moveFocus(terms, /*backward=*/true);
  EXPECT_TRUE(isOnScreen(termsTitle));
  EXPECT_FALSE(stateHas("acceptedEulaVersion\": \"1"));

  // Return agrees, wherever the focus is but on "Quit".
  moveFocus(terms, /*backward=*/false);
  strike(returnKey);
  waitUntilGone(termsTitle);
  desktop.activate(report);
  strip.waitUntilOver(report);
  EXPECT_TRUE(stateHas("\"acceptedEulaVersion\": \"1\""));
  EXPECT_EQ(logLines("terms accepted: v1"), 1);

  stopPellar();
  startPellar();
  strip.waitUntilOver(report);
  EXPECT_FALSE(isOnScreen(termsTitle));
}

TEST_P(FirstStart, QuittingInTheTermsEndsTheProgramAndRecordsNothing) {
  quitInTheTermsBy(spaceKey);
}

TEST_P(FirstStart, ReturnOnQuitInTheTermsQuits) {
  quitInTheTermsBy(returnKey);
}

TEST_P(FirstStart, TheMenuIsThereBeforeTheTermsAreAccepted) {
  startFresh();
  waitForOwnWindow(termsTitle);
  openMenuBySecondStart();
  // From the top up is the last item, "Quit Pellar".
  strike(upKey);
  desktop.observer().waitUntil("an item is marked", [this] { return menu->marked().has_value(); });
  strike(returnKey);
  const auto ending = pellar->waitForEnd();
  ASSERT_TRUE(ending.has_value());
  EXPECT_EQ(ending->exitCode, 0);
  pellar.reset();
}

class WithoutATray : public Shell, public ::testing::WithParamInterface<WindowManager> {
 protected:
  WithoutATray() : Shell(GetParam()) {}
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(WithoutATray);

TEST_P(WithoutATray, ASecondStartOpensTheMenuOfTheFirstAndEnds) {
  startWithStrip();
  const auto before = state();
  openMenuBySecondStart();
  EXPECT_EQ(state(), before);
  strike(escapeKey);
  menu->waitUntilClosed();
  chooseBySecondStart(hideForItem);
  strip.waitUntilHidden();
  waitUntilStateHas("\"hiddenApps\": [\n");
  openMenuBySecondStart();
  menu->openSubmenu(hiddenAppsItem);
  menu->choose(0);
  menu->waitUntilClosed();
  waitUntilStripIsBack();
  waitUntilStateHas("\"hiddenApps\": []");
}

TEST_P(WithoutATray, APressElsewhereClosesTheMenu) {
  startWithStrip();
  openMenuBySecondStart();
  desktop.observer().click(20, 880);
  menu->waitUntilClosed();
  openMenuBySecondStart();
  strike(escapeKey);
  menu->waitUntilClosed();
}

TEST_F(Shell, AThirdStartWhileTheMenuIsOpenLeavesItOpen) {
  startWithStrip();
  openMenuBySecondStart();
  const auto third = desktop.start({builtProgram("pellar")}, "third");
  const auto ending = third->waitForEnd();
  ASSERT_TRUE(ending.has_value());
  EXPECT_EQ(ending->exitCode, 0);
  EXPECT_EQ(menu->windows().size(), 1U);
  menu->choose(hideForItem);
  menu->waitUntilClosed();
  strip.waitUntilHidden();
}

TEST_F(Shell, EndsInOrderWhileItsMenuIsOpen) {
  startWithStrip();
  openMenuBySecondStart();
  stopPellar();
  menu->waitUntilClosed();
}

TEST_F(Shell, TheMenuQuitsTheProgram) {
  startWithStrip();
  chooseBySecondStart(quitItem);
  const auto ending = pellar->waitForEnd();
  ASSERT_TRUE(ending.has_value());
  EXPECT_EQ(ending->exitCode, 0);
  EXPECT_EQ(pellar->errors(), "");
  pellar.reset();
}

TEST_F(Shell, TheMenuShowsTheLog) {
  const auto report = openEditor();
  startIn(environmentWithOpener());
  strip.waitUntilOver(report);
  chooseBySecondStart(showLogItem);
  EXPECT_EQ(waitForOpened(), "file://" + desktop.folders().logFile().string() + "\n");
}

TEST_F(Shell, ASecondStartSaysWhenTheFirstDoesNotAnswer) {
  startWithStrip();
  pellar->signal(SIGSTOP);
  const auto second = desktop.start({builtProgram("pellar")}, "second");
  const auto ending = second->waitForEnd();
  pellar->signal(SIGCONT);
  ASSERT_TRUE(ending.has_value());
  EXPECT_EQ(ending->exitCode, 1);
  EXPECT_EQ(second->errors(), "Pellar is already running, but it does not answer.\n");
  // It was asked all the same.
  menu->waitUntilOpen();
  strike(escapeKey);
  menu->waitUntilClosed();
}

TEST_F(Shell, ASecondStartGoesOnWhenTheFirstEndsMeanwhile) {
  const auto report = openEditor();
  startPellar();
  strip.waitUntilOver(report);
  const auto hasStarted = [this](int times) { return logLines("tracking started") == times; };
  desktop.observer().waitUntil("it has started", [&] { return hasStarted(1); });
  pellar->signal(SIGSTOP);
  auto second = desktop.start({builtProgram("pellar")}, "second");
  // It waits for an answer when it does nothing for a while.
  const auto rests = [&] {
    const auto before = second->voluntarySwitches();
    return !second->waitForEnd(std::chrono::milliseconds(300)) && second->voluntarySwitches() == before;
  };
  for (int look = 0; look < 10 && !rests(); ++look) continue;
  pellar->signal(SIGKILL);
  ASSERT_TRUE(pellar->waitForEnd().has_value());
  pellar = std::move(second);
  desktop.observer().waitUntil("the other one has started", [&] { return hasStarted(2); });
  strip.waitUntilOver(report);
}

TEST_F(Shell, OfTwoCopiesStartedAtTheSameMomentOneRuns) {
  const auto report = openEditor();
  const auto before = state();
  std::array<std::unique_ptr<Process>, 2> copies;
  for (auto& copy : copies)
    copy = desktop.start({builtProgram("pellar")}, "pellar" + std::to_string(&copy - copies.data()));
  int ended = -1;
  desktop.observer().waitUntil("one of them ends", [&] {
    for (int each = 0; each < 2; ++each)
      if (copies[static_cast<std::size_t>(each)]->waitForEnd(std::chrono::milliseconds(0))) ended = each;
    return ended >= 0;
  });
  EXPECT_EQ(copies[static_cast<std::size_t>(ended)]->waitForEnd()->exitCode, 0);
  EXPECT_EQ(copies[static_cast<std::size_t>(ended)]->errors(),
            "Pellar is already running; its menu is open.\n");
  pellar = std::move(copies[static_cast<std::size_t>(1 - ended)]);
  menu.emplace(desktop, *pellar);
  strip.waitUntilOver(report);
  desktop.observer().waitUntil("the menu is open", [this] { return menu->windows().size() == 1; });
  strike(escapeKey);
  menu->waitUntilClosed();
  EXPECT_EQ(state(), before);
  EXPECT_EQ(logLines("tracking started"), 1);
}

TEST_F(Shell, ACopyOnAnotherDisplayOfTheSameUserSaysSoAndLeavesTheStateAlone) {
  startWithStrip();
  const auto before = state();
  Desktop other(WindowManager::openbox);
  auto environment = desktop.environment();
  environment["DISPLAY"] = other.display();
  Process second({builtProgram("pellar")}, environment, desktop.folders().root() / "second.errors");
  const auto ending = second.waitForEnd();
  ASSERT_TRUE(ending.has_value());
  EXPECT_EQ(ending->exitCode, 1);
  EXPECT_EQ(second.errors(), "Pellar is already running on another display and keeps its settings there.\n");
  EXPECT_EQ(state(), before);

  // Somebody with a home of his own is not concerned.
  auto theirs = other.start({builtProgram("pellar")}, "pellar");
  Application letters(other, "letters");
  Strip otherStrip(other);
  const auto letter = letters.open("Letter", {200, 200, 800, 400});
  otherStrip.waitUntilOver(letter);
  EXPECT_EQ(theirs->end().exitCode, 0);
  letters.quit();
}

TEST_F(Shell, AFirstCopyThatDiedIsNotInTheWayOfTheNext) {
  const auto report = openEditor();
  startPellar();
  strip.waitUntilOver(report);
  pellar->signal(SIGKILL);
  ASSERT_TRUE(pellar->waitForEnd().has_value());
  startPellar();
  strip.waitUntilOver(report);
}

// The lines of the one group of a desktop entry; fails the test at anything that the format does not allow.
std::map<std::string, std::string> entriesOf(const std::string& file) {
  std::map<std::string, std::string> entries;
  EXPECT_TRUE(file.ends_with('\n'));
  std::istringstream lines(file);
  std::string line;
  std::getline(lines, line);
  EXPECT_EQ(line, "[Desktop Entry]");
  while (std::getline(lines, line)) {
    const auto equals = line.find('=');
    const auto key = line.substr(0, equals);
    EXPECT_NE(equals, std::string::npos) << line;
    EXPECT_FALSE(key.empty());
    EXPECT_EQ(key.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-"),
              std::string::npos)
        << line;
    EXPECT_TRUE(entries.emplace(key, line.substr(equals + 1)).second) << "twice: " << line;
  }
  return entries;
}

// The command line of an "Exec" key whose arguments are all quoted.
std::vector<std::string> commandOf(const std::string& exec) {
  std::string value;
  for (std::size_t at = 0; at < exec.size(); ++at) {
    // The escapes of any text value.
    if (exec[at] == '\\') {
      EXPECT_LT(at + 1, exec.size());
      EXPECT_EQ(exec[++at], '\\');
    }
    value += exec[at];
  }
  EXPECT_TRUE(value.size() > 1 && value.front() == '"' && value.back() == '"') << exec;
  std::string argument;
  for (std::size_t at = 1; at + 1 < value.size(); ++at) {
    if (value[at] == '%') {
      EXPECT_EQ(value[at + 1], '%') << "a field code";
    }
    if (value[at] == '\\' || value[at] == '%') ++at;
    argument += value[at];
  }
  return {argument};
}

TEST_F(Shell, StartAtLoginWritesAnEntryThatStartsItAndTakesItAway) {
  startWithStrip();
  const auto folder = desktop.folders().config() / "autostart";
  const auto entry = folder / "app.pellar.Pellar.desktop";
  chooseBySecondStart(startAtLoginItem);
  desktop.observer().waitUntil("the entry is written", [&] { return std::filesystem::exists(entry); });
  const auto entries = entriesOf(Folders::read(entry));
  EXPECT_EQ(entries.at("Type"), "Application");
  EXPECT_EQ(entries.at("Name"), "Pellar");
  EXPECT_EQ(entries.at("Terminal"), "false");
  const auto command = commandOf(entries.at("Exec"));
  EXPECT_EQ(command, std::vector{builtProgram("pellar")});

  stopPellar();
  pellar = desktop.start(command, "login");
  menu.emplace(desktop, *pellar);
  waitUntilStripIsBack();
  chooseBySecondStart(startAtLoginItem);
  desktop.observer().waitUntil("the entry is gone", [&] { return !std::filesystem::exists(entry); });
  EXPECT_TRUE(std::filesystem::is_empty(folder));
}

TEST_F(Shell, TheSessionsManagerIsNotAskedToStartItAgain) {
  const auto report = openEditor();
  sockaddr_un place{};
  place.sun_family = AF_UNIX;
  const auto path = (desktop.folders().root() / "session").string();
  ASSERT_LT(path.size(), sizeof place.sun_path);
  std::copy(path.begin(), path.end(), place.sun_path);
  const int manager = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  ASSERT_EQ(bind(manager, reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
  ASSERT_EQ(listen(manager, 1), 0);
  startIn({{"SESSION_MANAGER", "local/here:" + path}});
  strip.waitUntilOver(report);
  pollfd entry{manager, POLLIN, 0};
  EXPECT_EQ(poll(&entry, 1, 0), 0) << "somebody came";
  close(manager);
}

TEST_F(Shell, StartAtLoginThatCannotBeWrittenIsLogged) {
  desktop.folders().write(desktop.folders().config() / "autostart", "in the way");
  startWithStrip();
  chooseBySecondStart(startAtLoginItem);
  desktop.observer().waitUntil("the log says it",
                               [this] { return logLines("launch at login toggle failed: ") == 1; });
  EXPECT_EQ(Folders::read(desktop.folders().config() / "autostart"), "in the way");
}

}  // namespace

}  // namespace pellar::e2e
