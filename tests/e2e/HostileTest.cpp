// Windows and applications that behave badly.

#include <gtest/gtest.h>
#include <signal.h>

#include "tests/e2e/DesktopTest.h"
#include "tests/support/Named.h"

namespace pellar::e2e {

namespace {

class Hostile : public DesktopTest {
 protected:
  // A good window, and the strip over it.
  Window startWithGoodWindow() {
    const auto good = editor().open("Good", {60, 160, 700, 400});
    startPellar();
    strip.waitUntilOver(good);
    linesBefore_ = logLines();
    return good;
  }
  // Lines written since; the ones that a working desktop explains are not counted.
  [[nodiscard]] int newLogLines() const { return logLines() - linesBefore_; }

 private:
  int linesBefore_ = 0;
};

using Title = test::Named<std::string>;

class AWindowTitle : public Hostile, public ::testing::WithParamInterface<Title> {};

TEST_P(AWindowTitle, MayBeAnything) {
  const auto good = startWithGoodWindow();
  const auto odd = editor().open("Odd", {300, 300, 700, 400});
  strip.waitUntilOver(odd);
  editor().setTitle(odd, GetParam().value);
  strip.waitUntilTabs(2);
  strip.clickTab(0);
  strip.waitUntilOver(good);
  strip.clickTab(1);
  strip.waitUntilOver(odd);
  desktop.move(odd, 330, 360);
  strip.waitUntilOver(odd);
  EXPECT_LE(newLogLines(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Titles, AWindowTitle,
    ::testing::Values(Title{"empty", ""}, Title{"blank", "   "}, Title{"of100kB", std::string(100000, 'x')},
                      Title{"rightToLeft", "\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d \xe2\x80\xae gnp.exe"},
                      Title{"invalidUtf8", "R\xff\xfe\xc3(port \xed\xa0\x80\xf5"},
                      Title{"controlCharacters", "a\nb\tc\x01\x1b[31m\x7f d\r"},
                      Title{"manyCombiningMarks",
                            [] {
                              std::string text = "Z";
                              for (int count = 0; count < 2000; ++count) text += "\xcc\x81";
                              return text;
                            }()}),
    test::byName<std::string>);

TEST_F(Hostile, AThousandTitlesASecondDoNotHoldUpTheStrip) {
  const auto good = startWithGoodWindow();
  const auto restless = editor().open("Restless", {300, 300, 700, 400});
  strip.waitUntilOver(restless);
  editor().tellWithoutWaiting(restless, "storm 3000 1000");
  // While it goes on, the strip still follows and its tabs still work.
  for (const int x : {340, 380, 420}) {
    desktop.move(restless, x, 320);
    strip.waitUntilOver(restless);
  }
  strip.clickTab(0);
  strip.waitUntilOver(good);
  editor().waitUntilDone();
  strip.waitUntilTabs(2);
  EXPECT_LE(newLogLines(), 1);
}

TEST_F(Hostile, WindowsThatAreGoneAtOnceLeaveTheStripRight) {
  const auto good = startWithGoodWindow();
  editor().churn(300);
  desktop.observer().waitUntil("only the good window is left",
                               [&] { return desktop.observer().clients() == std::vector{good.id}; });
  desktop.activate(good);
  strip.waitUntilOver(good);
  strip.waitUntilTabs(1);
  EXPECT_LE(newLogLines(), 1);
}

TEST_F(Hostile, TheFrontWindowDestroyedWhileItMovesLeavesTheStripRight) {
  const auto good = startWithGoodWindow();
  for (int round = 0; round < 20; ++round) {
    const auto brief = editor().open("Brief", {300, 300, 700, 400});
    desktop.observer().configure(brief.id, XCB_CONFIG_WINDOW_X, {400});
    editor().tell(brief, "destroy");
  }
  desktop.activate(good);
  strip.waitUntilOver(good);
  strip.waitUntilTabs(1);
  EXPECT_LE(newLogLines(), 1);
}

TEST_F(Hostile, AWindowThatRefusesEverySizeIsStillMovedBelowTheStrip) {
  startWithGoodWindow();
  const auto rigid = editor().open("Rigid", {300, 300, 500, 300});
  editor().tell(rigid, "fixed");
  strip.waitUntilOver(rigid);
  desktop.observer().configure(rigid.id, XCB_CONFIG_WINDOW_Y, {0});
  desktop.observer().waitUntil("the window stands under the strip",
                               [&] { return desktop.frame(rigid).y >= Strip::height; });
  strip.waitUntilOver(rigid);
  EXPECT_LE(newLogLines(), 1);
}

TEST_F(Hostile, AWindowThatGoesBackWhereItWasKeepsItsStrip) {
  startWithGoodWindow();
  const auto stubborn = editor().open("Stubborn", {300, 300, 600, 300});
  editor().tell(stubborn, "stubborn 300 300");
  const auto home = desktop.frame(stubborn);
  for (const std::uint32_t x : {500U, 20U, 700U}) {
    desktop.observer().configure(stubborn.id, XCB_CONFIG_WINDOW_X, {x});
    desktop.observer().waitUntil("the window is back", [&] { return desktop.frame(stubborn) == home; });
    strip.waitUntilOver(stubborn);
  }
  EXPECT_LE(newLogLines(), 1);
}

TEST_F(Hostile, AWindowThatInsistsOnTheTopOfTheScreenHoldsNothingUp) {
  const auto good = startWithGoodWindow();
  desktop.activate(good);
  const auto insistent = editor().open("Insistent", {300, 300, 600, 300});
  editor().tell(insistent, "stubborn 300 0");
  strip.waitUntilTabs(2);
  desktop.observer().waitUntil("the good window is in front again", [&] {
    desktop.observer().sendToRoot(good.id, "_NET_ACTIVE_WINDOW", {2, XCB_CURRENT_TIME, 0});
    return desktop.isActive(good);
  });
  strip.waitUntilOver(good);
  desktop.move(good, 90, 200);
  strip.waitUntilOver(good);
  EXPECT_LE(newLogLines(), 1);
}

TEST_F(Hostile, AStoppedApplicationHoldsNothingUp) {
  const auto good = startWithGoodWindow();
  const auto second = editor().open("Second", {120, 240, 700, 400});
  Application terminal(desktop, "terminal");
  const auto shell = terminal.open("Shell", {760, 300, 600, 400});
  strip.waitUntilOver(shell);

  editor().process().signal(SIGSTOP);
  desktop.activate(second);
  strip.waitUntilOver(second);
  desktop.move(second, 150, 300);
  strip.waitUntilOver(second);
  strip.clickTab(0);
  strip.waitUntilOver(good);
  strip.clickTab(1, 2);  // asked to close, it cannot answer
  desktop.activate(shell);
  strip.waitUntilOver(shell);
  strip.waitUntilTabs(1);
  desktop.activate(good);
  strip.waitUntilOver(good);
  // The time of the story: nothing gives up and nothing ends while the application does not answer.
  EXPECT_FALSE(pellar->waitForEnd(std::chrono::seconds(10)).has_value());
  strip.waitUntilOver(good);
  strip.waitUntilTabs(2);
  editor().process().signal(SIGCONT);
  desktop.observer().waitUntil("the window closes after all",
                               [&] { return !desktop.observer().box(second.id); });
  strip.waitUntilTabs(1);
  EXPECT_LE(newLogLines(), 1);
}

TEST_F(Hostile, AnApplicationKilledWhileItIsStoppedLeavesNoStrip) {
  const auto good = startWithGoodWindow();
  editor().process().signal(SIGSTOP);
  desktop.move(good, 100, 200);
  strip.waitUntilOver(good);
  editor().process().signal(SIGKILL);
  strip.waitUntilHidden();
}

}  // namespace

}  // namespace pellar::e2e
