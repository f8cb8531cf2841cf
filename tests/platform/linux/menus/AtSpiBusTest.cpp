// Coming to the accessibility bus, and to one that is not there.

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/menus/AtSpiBus.h"
#include "tests/platform/linux/X11WorldTest.h"
#include "tests/platform/linux/menus/MenuWaits.h"
#include "tests/platform/linux/menus/SessionBusVariable.h"

namespace pellar::contract {
namespace {

// Whether the session's programs are asked to come to the accessibility bus.
bool isInviting(QDBusConnection bus) {
  auto call = QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                             QStringLiteral("org.freedesktop.DBus.Properties"),
                                             QStringLiteral("Get"));
  call << QStringLiteral("org.a11y.Status") << QStringLiteral("IsEnabled");
  return QDBusReply<QDBusVariant>(bus.call(call)).value().variant().toBool();
}

// Programs of this toolkit look when they start whether they are wanted.
TEST(AtSpiInvitationTest, ProgramsAreInvitedWhenTheFirstIsMissedAndForAsLongAsPellarRuns) {
  const SessionBusVariable variable;
  e2e::Desktop& desktop = SharedDesktop::get();
  auto bus = QDBusConnection::connectToBus(
      QString::fromStdString(desktop.environment().at("DBUS_SESSION_BUS_ADDRESS")),
      QStringLiteral("observer"));
  const auto startProgram = [&desktop](const std::string& name) {
    const auto file = desktop.folders().home() / name;
    desktop.folders().write(file, "");
    auto program = desktop.start({e2e::builtProgram("qt_program"), file.string()}, "qt_program");
    desktop.waitForWindow(name);
    return program;
  };
  std::unique_ptr<e2e::Process> early;
  std::unique_ptr<e2e::Process> late;
  {
    LinuxWorld world;
    auto& accessibility = world.platform().accessibility;
    const auto menuBar = [&accessibility](const e2e::Process& program) {
      return accessibility.attribute(accessibility.applicationElement(program.pid()), "AXMenuBar");
    };
    const auto children = [&accessibility](const Element& parent) {
      return std::get<std::vector<Element>>(accessibility.attribute(parent, "AXChildren").value());
    };
    const auto isKnown = [&](const e2e::Process& program) {
      return accessibility.attribute(accessibility.applicationElement(program.pid()), "AXWindows")
          .has_value();
    };
    early = startProgram("early.txt");
    ASSERT_TRUE(world.wait([&] { return isKnown(*early); }));
    EXPECT_FALSE(isInviting(bus));
    EXPECT_FALSE(AtSpiBus::hasInvited());
    static_cast<void>(menuBar(*early));
    EXPECT_TRUE(isInviting(bus));
    EXPECT_TRUE(AtSpiBus::hasInvited()) << "and Pellar must not follow its own invitation";
    early->end();

    late = startProgram("letter.txt");
    ASSERT_TRUE(world.wait([&] { return isKnown(*late) && menuBar(*late).has_value(); }));
    const auto items = children(std::get<Element>(*menuBar(*late)));
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(accessibility.attribute(items[1], "AXTitle"), AttributeValue("File"));
    const auto menu = children(children(items[1]).front());
    ASSERT_EQ(menu.size(), 3U);
    EXPECT_EQ(accessibility.attribute(menu[1], "AXTitle"), AttributeValue("Save"));
    EXPECT_EQ(accessibility.attribute(menu[1], "AXEnabled"), AttributeValue(true));
    EXPECT_EQ(accessibility.perform(menu[1], "AXPress"), Performed::done);
    EXPECT_TRUE(
        world.wait([&] { return e2e::Folders::read(desktop.folders().home() / "letter.txt") == "saved\n"; }));
    EXPECT_EQ(accessibility.attribute(menu[2], "AXTitle"), AttributeValue("New Kind"));
    EXPECT_EQ(accessibility.perform(menu[2], "AXPress"), Performed::done)
        << "the usual one behind it is chosen";
    EXPECT_TRUE(
        world.wait([&] { return e2e::Folders::read(desktop.folders().home() / "letter.txt") == "letter"; }));
    late->end();
  }
  EXPECT_FALSE(isInviting(bus)) << "the setting is the user's again";
  EXPECT_FALSE(AtSpiBus::hasInvited());
  QDBusConnection::disconnectFromBus(QStringLiteral("observer"));
}

class DeadBusTest : public X11WorldTest {
 protected:
  // The time until it is clear that a window has no menu bar.
  std::chrono::milliseconds timeWithBus(const std::string& address) {
    setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
    const auto pid = world().launch("Plain");
    world().open(pid, "Plain", {200, 200, 400, 300});
    elementOf(pid, "Plain");
    const auto time = timeOf([&] {
      EXPECT_FALSE(read<Element>(accessibility().applicationElement(pid), "AXMenuBar").has_value());
    });
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    return time;
  }
};

TEST_F(DeadBusTest, ABusThatIsNotThereIsNoMenuBar) {
  EXPECT_LT(timeWithBus("unix:path=/nowhere/at/all"), wholeWalk);
}

TEST_F(DeadBusTest, ABusThatHangsIsNotWaitedForAndDoesNotHoldUpTheEnd) {
  const auto bus = desktop().start(desktop().folders().busCommand(), "stopped-bus");
  const auto address = bus->readLine();
  bus->signal(SIGSTOP);
  EXPECT_LT(timeWithBus(address), wholeWalk);
  EXPECT_LT(timeWithBus(address), noWait) << "and not tried again at once";
  bus->signal(SIGCONT);
}

}  // namespace
}  // namespace pellar::contract
