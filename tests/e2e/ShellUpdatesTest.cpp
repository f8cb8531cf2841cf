// Updates that a server announces, from the request to the page that is opened.

#include <gtest/gtest.h>

#include "tests/e2e/ShellFixture.h"
#include "tests/e2e/Tray.h"
#include "tests/support/LoopbackServer.h"

namespace pellar::e2e {

namespace {

class AnUpdate : public Shell {
 protected:
  using Rows = Tray::Rows;
  // Where the line about updates stands in the About window.
  static constexpr int statusTop = 124;
  static constexpr int statusBottom = 150;

  AnUpdate() : notifications(desktop.start({builtProgram("e2e_notifications")}, "notifications")) {}

  // A user with these settings, and a web site on this machine.
  void startWithServer(const std::string& settings) {
    ASSERT_EQ(notifications->readLine(), "ready");
    const auto report = openEditor();
    desktop.folders().write(desktop.folders().stateFile(), R"({"settings":{)" + settings + "}}");
    auto environment = environmentWithOpener();
    environment["E2E_WEB_SITE"] = server.address();
    startIn(environment, "with_site/pellar");
    strip.waitUntilOver(report);
    tray.waitForItem();
  }
  Window openAbout() {
    tray.choose("About Pellar");
    return waitForOwnWindow(aboutTitle);
  }
  [[nodiscard]] int statusPixels(Window about) { return darkPixels(about, statusTop, statusBottom); }
  void waitUntilAsked(std::size_t times) {
    desktop.observer().waitUntil("the server is asked", [&] { return server.asked().size() == times; });
  }

  LoopbackServer server;
  Tray tray{desktop};
  std::unique_ptr<Process> notifications;  // depends-on: tray, which opens the bus
};

TEST_F(AnUpdate, IsAnnouncedOfferedInTheMenuAndSaidInAbout) {
  server.answerBody(R"({"latest":"9.0.0","url":"http://127.0.0.1/get?a=b&c=d#e"})");
  startWithServer(R"("acceptedEulaVersion":"1")");
  EXPECT_EQ(tray.rows().front(), "✓ All apps");
  const auto about = openAbout();
  EXPECT_EQ(statusPixels(about), 0);
  EXPECT_EQ(notifications->readLine(), "1: Pellar 9.0.0 is available | You have " PELLAR_VERSION
                                       ". Open Pellar to download the update.");
  EXPECT_EQ(server.asked(), Rows{"/v1/update"});
  desktop.observer().waitUntil("About says so", [&] { return statusPixels(about) > 50; });
  strike(escapeKey);
  waitUntilGone(aboutTitle);

  const auto rows = tray.rows();
  EXPECT_EQ(Rows(rows.begin(), rows.begin() + 3), (Rows{"Update to 9.0.0 — Download", "---", "✓ All apps"}));
  tray.choose("Update to 9.0.0 — Download");
  EXPECT_EQ(waitForOpened(), "http://127.0.0.1/get?a=b&c=d#e\n");
  EXPECT_EQ(logLines("update available: 9.0.0 (running " PELLAR_VERSION "), notify=true"), 1);
  EXPECT_EQ(logLines("update notification auth granted=true; posting for 9.0.0"), 1);
  // Opened again, About says it at once.
  EXPECT_GT(statusPixels(openAbout()), 50);
}

TEST_F(AnUpdate, StandsOutInTheMenu) {
  server.answerBody(R"({"latest":"9.0.0"})");
  startWithServer(R"("acceptedEulaVersion":"1","autoUpdateCheck":false)");
  tray.choose("Check for updates now");
  desktop.observer().waitUntil("the menu offers it",
                               [&] { return tray.rows().front() == "Update to 9.0.0 — Download"; });
  openMenuBySecondStart();
  const auto coloured = [&] {
    const auto picture = desktop.observer().picture(menu->windows().front());
    std::vector<int> rows;
    for (int y = 0; picture && y < picture->height; ++y)
      for (int x = 0; x < picture->width; ++x) {
        const auto pixel = picture->at(x, y);
        if ((pixel & 255) > 150 && (pixel & 255) > (pixel >> 16 & 255) + 100) rows.push_back(y);
      }
    return rows;
  };
  desktop.observer().waitUntil("its title is in the accent colour", [&] { return coloured().size() > 100; });
  // Nothing else is.
  EXPECT_LT(coloured().back(), 24);
  strike(escapeKey);
  menu->waitUntilClosed();
}

TEST_F(AnUpdate, IsLookedForFromAboutWithTheKeyboard) {
  server.answerBody(R"({"latest":"0.0.1"})");
  startWithServer(R"("acceptedEulaVersion":"1","autoUpdateCheck":false)");
  const auto about = openAbout();
  EXPECT_EQ(statusPixels(about), 0);
  // "Check for updates" is the first button.
  strike(spaceKey);
  desktop.observer().waitUntil("it says that it checks", [&] { return statusPixels(about) > 20; });
  const int checking = statusPixels(about);
  waitUntilAsked(1);
  // "You are on the latest version." is much longer than "Checking…".
  desktop.observer().waitUntil("it says what came of it", [&] { return statusPixels(about) > 2 * checking; });
  EXPECT_EQ(logLines("update"), 0);
  // "Website", "Terms"
  moveFocus(about);
  moveFocus(about);
  strike(spaceKey);
  EXPECT_EQ(waitForOpened(), server.address() + "/terms\n");
}

TEST_F(AnUpdate, IsLookedForAtOnceWhenTheAutomaticIsTurnedOn) {
  server.answerBody(R"({"latest":"9.0.0"})");
  startWithServer(R"("acceptedEulaVersion":"1","autoUpdateCheck":false)");
  tray.choose("Automatically check for updates");
  desktop.observer().waitUntil("the menu offers it",
                               [&] { return tray.rows().front() == "Update to 9.0.0 — Download"; });
  EXPECT_EQ(logLines("update available: 9.0.0 (running " PELLAR_VERSION "), notify=false"), 1);
  EXPECT_EQ(logLines("update notification auth"), 0);
  // Without an address in the answer it is the site's own page.
  tray.choose("Update to 9.0.0 — Download");
  EXPECT_EQ(waitForOpened(), server.address() + "/#download\n");
}

TEST_F(AnUpdate, WithNewerTermsTakesTheStripAway) {
  server.answerBody(R"({"latest":"0.0.1","eula":{"version":"2","url":"http://127.0.0.1/terms-2"}})");
  startWithServer(R"("acceptedEulaVersion":"1","autoUpdateCheck":false)");
  tray.choose("Check for updates now");
  const auto terms = waitForOwnWindow(termsTitle);
  EXPECT_FALSE(strip.window().has_value());
  // "Quit", "Read full terms online"
  moveFocus(terms, /*backward=*/true);
  moveFocus(terms, /*backward=*/true);
  strike(spaceKey);
  EXPECT_EQ(waitForOpened(), "http://127.0.0.1/terms-2\n");
  agreeToTerms();
  waitUntilStripIsBack();
  EXPECT_FALSE(isOnScreen(termsTitle));
  EXPECT_TRUE(stateHas("\"acceptedEulaVersion\": \"2\""));
}

TEST_F(AnUpdate, IsOfferedToAUserWithoutNotifications) {
  notifications->end();
  notifications = desktop.start({builtProgram("e2e_notifications"), "none"}, "notifications");
  server.answerBody(R"({"latest":"9.0.0"})");
  startWithServer(R"("acceptedEulaVersion":"1")");
  desktop.observer().waitUntil("the log says it", [&] {
    return logLines("update notification auth granted=false; posting for 9.0.0") == 1;
  });
  EXPECT_EQ(tray.rows().front(), "Update to 9.0.0 — Download");
}

TEST_F(AnUpdate, OfAnAbsurdVersionDisturbsNobody) {
  std::string version = "9";
  for (int number = 0; number < 100'000; ++number) version += ".1";
  server.answerBody(R"({"latest":")" + version + R"(","eula":{"version":")" + version + R"("}})");
  startWithServer(R"("acceptedEulaVersion":"1","autoUpdateCheck":false)");
  tray.choose("Check for updates now");
  const auto terms = waitForOwnWindow(termsTitle);
  EXPECT_EQ(desktop.observer().box(terms.id)->width, 440);
  agreeToTerms();
  waitUntilStripIsBack();
  EXPECT_LT(tray.rows().front().size(), 200U);
  const auto about = openAbout();
  EXPECT_EQ(desktop.observer().box(about.id)->width, 360);
  EXPECT_GT(statusPixels(about), 50);
  strike(escapeKey);
  waitUntilGone(aboutTitle);
}

TEST_F(AnUpdate, ThatIsNoneLeavesEverythingAsItWas) {
  server.answer([](const std::string&) { return std::string("HTTP/1.1 200 OK\r\n\r\n{\"latest\":\"9"); });
  startWithServer(R"("acceptedEulaVersion":"1","autoUpdateCheck":false)");
  const auto before = tray.rows();
  const auto about = openAbout();
  strike(spaceKey);
  desktop.observer().waitUntil("it says that it checks", [&] { return statusPixels(about) > 20; });
  const int checking = statusPixels(about);
  desktop.observer().waitUntil("it says what came of it", [&] { return statusPixels(about) > 2 * checking; });
  strike(escapeKey);
  waitUntilGone(aboutTitle);
  desktop.observer().waitUntil("the menu is as before", [&] { return tray.rows() == before; });
  EXPECT_EQ(logLines("update"), 0);
}

}  // namespace

}  // namespace pellar::e2e
