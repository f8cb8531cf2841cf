#include <gtest/gtest.h>
#include <signal.h>

#include <QElapsedTimer>
#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/desktop/DesktopNotifications.h"
#include "platform/linux/system/QtMainLoop.h"
#include "platform/linux/system/SessionBus.h"
#include "tests/e2e/Desktop.h"
#include "tests/e2e/Folders.h"
#include "tests/e2e/Process.h"
#include "tests/platform/linux/ToolkitLoop.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// A session bus of its own, at first without anybody who shows notifications.
class Notifying : public testing::Test {
 protected:
  Notifying() {
    environment["DBUS_SESSION_BUS_ADDRESS"] = bus.readLine();
    qputenv("DBUS_SESSION_BUS_ADDRESS", environment.at("DBUS_SESSION_BUS_ADDRESS").c_str());
  }
  ~Notifying() override { qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); }

  void startServer() {
    server = std::make_unique<e2e::Process>(std::vector{e2e::builtProgram("e2e_notifications")}, environment,
                                            folders.root() / "notifications.errors");
    ASSERT_EQ(server->readLine(), "ready");
  }
  std::optional<bool> asked() {
    std::optional<bool> granted;
    const auto question = notifications.requestAuthorization([&](bool answer) { granted = answer; });
    EXPECT_FALSE(granted.has_value()) << "never inside the call";
    EXPECT_TRUE(test::runToolkitAsAProgramUntil([&] { return granted.has_value(); }));
    return granted;
  }
  // What the desktop shows after this.
  std::string shownAfter(const UserNotification& notification) {
    notifications.add(notification);
    // Calls leave by the loop.
    test::runToolkitAsAProgramUntil([] { return false; }, 100ms);
    return server->readLine();
  }

  e2e::Folders folders;
  e2e::Environment environment = folders.environment("");
  e2e::Process bus{folders.busCommand(), environment, folders.root() / "bus.errors"};
  std::unique_ptr<e2e::Process> server;
  QtMainLoop loop;
  DesktopNotifications notifications{loop};
};

TEST_F(Notifying, IsGrantedWhereADesktopShowsNotifications) {
  EXPECT_EQ(asked(), false);
  startServer();
  EXPECT_EQ(asked(), true);
}

TEST_F(Notifying, ShowsTitleAndBodyWithoutReadingMarkupIntoThem) {
  startServer();
  EXPECT_EQ(shownAfter({.identifier = "a", .title = "Pellar 2 is available", .body = "You have 1 <b>&</b>."}),
            "1: Pellar 2 is available | You have 1 &lt;b&gt;&amp;&lt;/b&gt;.");
}

TEST_F(Notifying, OfAnAbsurdVersionShowsTheBeginningAndTheEnd) {
  startServer();
  const std::string absurd(1 << 20, '9');
  const std::string text = shownAfter({.identifier = absurd,
                                       .title = "Pellar " + absurd + " is available",
                                       .body = "You have " + absurd + "."});
  EXPECT_TRUE(text.starts_with("1: Pellar 999")) << text.substr(0, 40);
  EXPECT_NE(text.find("999 is available | You have 999"), std::string::npos);
  EXPECT_TRUE(text.ends_with("999.")) << text.substr(std::max<std::size_t>(text.size(), 40) - 40);
  EXPECT_LT(text.size(), 2100U);
}

TEST_F(Notifying, OneOfTheSameIdentifierTakesTheFirstOnesPlace) {
  startServer();
  EXPECT_EQ(shownAfter({.identifier = "a", .title = "first", .body = ""}), "1: first | ");
  EXPECT_EQ(shownAfter({.identifier = "b", .title = "other", .body = ""}), "2: other | ");
  EXPECT_EQ(shownAfter({.identifier = "a", .title = "again", .body = ""}), "1: again | ");
}

TEST_F(Notifying, IsNotGrantedWithoutABus) {
  qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
  EXPECT_EQ(asked(), false);
  bus.end();
  qputenv("DBUS_SESSION_BUS_ADDRESS", environment.at("DBUS_SESSION_BUS_ADDRESS").c_str());
  EXPECT_EQ(asked(), false);
  notifications.add({.identifier = "a", .title = "to nobody", .body = ""});
}

TEST_F(Notifying, NoBusIsStartedForIt) {
  qputenv("DBUS_SESSION_BUS_ADDRESS", "autolaunch:");
  EXPECT_EQ(SessionBus::address(), std::nullopt);
  EXPECT_EQ(asked(), false);
}

TEST_F(Notifying, ABusThatHangsHoldsNobodyUp) {
  bus.signal(SIGSTOP);
  QElapsedTimer clock;
  clock.start();
  EXPECT_EQ(asked(), false);
  EXPECT_LT(clock.elapsed(), 2000);
  bus.signal(SIGCONT);
}

TEST_F(Notifying, AQuestionThatIsDroppedIsNeverAnswered) {
  startServer();
  int answers = 0;
  {
    const auto question = notifications.requestAuthorization([&](bool) { ++answers; });
  }
  EXPECT_FALSE(test::runToolkitAsAProgramUntil([&] { return answers > 0; }, 300ms));
}

}  // namespace
}  // namespace pellar
