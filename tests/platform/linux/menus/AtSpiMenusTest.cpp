// The menus of real programs through the port.

#include <unistd.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>

#include "tests/e2e/Stopping.h"
#include "tests/platform/linux/X11WorldTest.h"
#include "tests/platform/linux/menus/MenuWaits.h"
#include "tests/platform/linux/menus/SessionBusVariable.h"

namespace pellar::contract {
namespace {

using namespace std::chrono_literals;
using Elements = std::vector<Element>;

class AtSpiMenusTest : private SessionBusVariable, public X11WorldTest {
 protected:
  std::filesystem::path document(const std::string& name) {
    auto file = desktop().folders().home() / name;
    desktop().folders().write(file, "Some text in " + name + ".\n");
    return file;
  }
  void startGtkEditor(const std::vector<std::string>& names) {
    std::vector<std::string> command{"mousepad", "--disable-server", "--opening-mode=window"};
    for (const auto& name : names) command.push_back(document(name));
    editor = desktop().start(command, "mousepad");
    for (const auto& name : names) desktop().waitForWindow(name);
    known(names.back());
  }
  void startQtEditor(const std::string& name) {
    editor = desktop().start({"featherpad", "--standalone", document(name)}, "featherpad");
    desktop().waitForWindow(name);
    known(name);
  }
  // Returns when the adapter knows the window.
  Element known(const std::string& titlePart) {
    const auto find = [&]() -> std::optional<Element> {
      for (const Element& each : windowsOf(editor->pid())) {
        const auto title = read<std::string>(each, "AXTitle");
        if (title && title->find(titlePart) != std::string::npos) return each;
      }
      return std::nullopt;
    };
    if (!wait([&] { return find().has_value(); })) throw std::runtime_error("no window " + titlePart);
    return *find();
  }

  [[nodiscard]] std::optional<Element> menuBar() {
    return read<Element>(accessibility().applicationElement(editor->pid()), "AXMenuBar");
  }
  // An element's children with their titles.
  Element child(const Element& parent, const std::string& title) {
    const auto all = read<Elements>(parent, "AXChildren");
    if (!all) throw std::runtime_error("no children");
    for (const Element& each : *all)
      if (read<std::string>(each, "AXTitle") == title) return each;
    throw std::runtime_error("nothing titled " + title);
  }
  Element fileMenuItem(const std::string& title) {
    const auto bar = menuBar();
    if (!bar) throw std::runtime_error("no menu bar");
    const auto menus = read<Elements>(child(*bar, "File"), "AXChildren");
    if (!menus || menus->size() != 1) throw std::runtime_error("no menu below File");
    return child(menus->front(), title);
  }
  [[nodiscard]] bool canSave() { return read<bool>(fileMenuItem("Save"), "AXEnabled").value_or(false); }
  // A program may still be setting its menus up when its window is there already.
  bool hasMenuBar() {
    return wait([this] { return menuBar().has_value(); });
  }

  void typeInto(const std::string& title, const std::string& text) {
    desktop().activate(desktop().waitForWindow(title));
    world().type(text);
  }
  std::string contents(const std::string& name) {
    return desktop().folders().read(desktop().folders().home() / name);
  }
  std::unique_ptr<e2e::Process> editor;
};

// An editor of a toolkit whose menus can be had in two ways.
class GtkMenusTest : public AtSpiMenusTest, public ::testing::WithParamInterface<bool> {
 protected:
  void startGtkEditor(const std::vector<std::string>& names) {
    AtSpiMenusTest::startGtkEditor(names);
    if (GetParam()) return;
    // As of a program that keeps its menus to itself.
    e2e::XObserver& observer = desktop().observer();
    for (const xcb_window_t window : observer.clients())
      xcb_delete_property(observer.connection(), window, observer.atom("_GTK_MENUBAR_OBJECT_PATH"));
    observer.fence();
  }
};

INSTANTIATE_TEST_SUITE_P(Ways, GtkMenusTest, ::testing::Bool(),
                         [](const auto& way) { return way.param ? "exported" : "accessibilityBus"; });

TEST_P(GtkMenusTest, TheBarStandsBehindAPlaceForTheSystemsOwnMenu) {
  startGtkEditor({"report.txt"});
  ASSERT_TRUE(hasMenuBar());
  const auto items = read<Elements>(*menuBar(), "AXChildren");
  ASSERT_TRUE(items.has_value());
  ASSERT_GE(items->size(), 3U);
  EXPECT_EQ(read<std::string>((*items)[0], "AXTitle"), "");
  EXPECT_EQ(read<Elements>((*items)[0], "AXChildren"), std::nullopt);
  EXPECT_EQ(read<std::string>((*items)[1], "AXTitle"), "File");
  EXPECT_EQ(read<std::string>((*items)[2], "AXTitle"), "Edit");
  EXPECT_NE((*items)[0], (*items)[1]);
  EXPECT_EQ((*items)[1], child(*menuBar(), "File"));
  EXPECT_EQ((*items)[1].hash(), child(*menuBar(), "File").hash());
}

TEST_P(GtkMenusTest, AGtkEditorsSaveIsEnabledWhenThereIsSomethingToSaveAndSaves) {
  startGtkEditor({"report.txt"});
  ASSERT_TRUE(hasMenuBar());
  EXPECT_FALSE(canSave());
  typeInto("report.txt", "x");
  ASSERT_TRUE(wait([this] { return canSave(); }));
  EXPECT_EQ(accessibility().perform(fileMenuItem("Save"), "AXPress"), Performed::done);
  EXPECT_TRUE(wait([this] { return contents("report.txt") == "xSome text in report.txt.\n"; }));
  EXPECT_TRUE(wait([this] { return !canSave(); }));
}

TEST_P(GtkMenusTest, TheMainWindowIsTheOneWhoseMenuActs) {
  startGtkEditor({"report.txt", "plan.txt"});
  ASSERT_TRUE(hasMenuBar());
  typeInto("report.txt", "x");
  desktop().activate(desktop().waitForWindow("plan.txt"));
  const Element report = known("report.txt");
  const Element plan = known("plan.txt");
  ASSERT_TRUE(wait([&] { return isFocused(editor->pid(), plan); }));
  EXPECT_TRUE(wait([this] { return !canSave(); })) << "the window in front is the main one";
  EXPECT_EQ(read<bool>(plan, "AXMain"), true);
  accessibility().set(report, "AXMain", true);
  EXPECT_EQ(read<bool>(report, "AXMain"), true);
  EXPECT_EQ(read<bool>(plan, "AXMain"), false);
  EXPECT_TRUE(canSave());
  EXPECT_EQ(accessibility().perform(fileMenuItem("Save"), "AXPress"), Performed::done);
  EXPECT_TRUE(wait([this] { return contents("report.txt").starts_with('x'); }));
  EXPECT_TRUE(isFocused(editor->pid(), plan)) << "nothing changed on the screen";
  // Another window that the user goes to is the main one again.
  desktop().activate(desktop().waitForWindow("report.txt"));
  ASSERT_TRUE(wait([&] { return isFocused(editor->pid(), report); }));
  desktop().activate(desktop().waitForWindow("plan.txt"));
  EXPECT_TRUE(wait([&] { return read<bool>(plan, "AXMain") == true; }));
}

TEST_F(AtSpiMenusTest, TheMenuMeantForAWindowThatIsGoneIsNotAnothers) {
  startGtkEditor({"report.txt", "plan.txt"});
  ASSERT_TRUE(hasMenuBar());
  const Element report = known("report.txt");
  desktop().close(desktop().waitForWindow("report.txt"));
  const Element plan = known("plan.txt");
  ASSERT_TRUE(wait([&] { return isFocused(editor->pid(), plan) && windowsOf(editor->pid()).size() == 1; }));
  accessibility().set(report, "AXMain", true);
  EXPECT_FALSE(menuBar().has_value());
  EXPECT_TRUE(hasMenuBar()) << "the next one is the remaining window's again";
}

TEST_F(AtSpiMenusTest, AQtEditorSaves) {
  startQtEditor("letter.txt");
  ASSERT_TRUE(hasMenuBar());
  EXPECT_FALSE(canSave());
  typeInto("letter.txt", "x");
  ASSERT_TRUE(wait([this] { return canSave(); }));
  EXPECT_EQ(accessibility().perform(fileMenuItem("Save"), "AXPress"), Performed::done);
  EXPECT_TRUE(wait([this] { return contents("letter.txt") == "xSome text in letter.txt.\n"; }));
}

TEST_F(AtSpiMenusTest, AProgramWithoutAccessibilityHasNoMenuBarAndCostsNoWait) {
  const auto pid = world().launch("Plain");
  world().open(pid, "Plain", {200, 200, 400, 300});
  elementOf(pid, "Plain");
  const auto bar = [&] { return read<Element>(accessibility().applicationElement(pid), "AXMenuBar"); };
  EXPECT_FALSE(bar().has_value());  // connects
  EXPECT_LT(timeOf([&] { EXPECT_FALSE(bar().has_value()); }), noWait);
}

TEST_P(GtkMenusTest, AStoppedProgramIsWaitedForOnceAndNotForLong) {
  startGtkEditor({"report.txt"});
  ASSERT_TRUE(hasMenuBar());
  const Element save = fileMenuItem("Save");
  e2e::stop(*editor, desktop().observer());
  int ticks = 0;
  auto timer = world().platform().mainLoop.every(20ms, [&] {
    ++ticks;
    EXPECT_FALSE(menuBar().has_value()) << "nothing is asked while something is";
  });
  EXPECT_LT(timeOf([this] { EXPECT_FALSE(menuBar().has_value()); }), wholeWalk);
  EXPECT_GT(ticks, 5) << "everything else goes on meanwhile";
  timer.cancel();
  EXPECT_LT(timeOf([this] {
              for (int window = 0; window < 10; ++window) EXPECT_FALSE(menuBar().has_value());
            }),
            noWait);
  EXPECT_LT(timeOf([&] { EXPECT_EQ(read<bool>(save, "AXEnabled"), std::nullopt); }), wholeWalk);
  EXPECT_LT(timeOf([&] { EXPECT_EQ(accessibility().perform(save, "AXPress"), Performed::refused); }),
            wholeWalk);
  editor->signal(SIGCONT);
  EXPECT_TRUE(hasMenuBar()) << "it is asked again when it is back";
}

// Two documents with changes in them, of a program that is then busy with the first.
class SlowWriterTest : public GtkMenusTest {
 protected:
  void startWithChanges() {
    startGtkEditor({"report.txt", "plan.txt"});
    ASSERT_TRUE(hasMenuBar());
    for (const char* name : {"report.txt", "plan.txt"}) typeInto(name, "x");
    for (const char* name : {"report.txt", "plan.txt"}) {
      accessibility().set(known(name), "AXMain", true);
      // The title goes one way and the menus another.
      ASSERT_TRUE(wait([this] { return menuBar() && canSave(); }));
    }
  }
  // It answers nobody for longer than a walk may take.
  [[nodiscard]] Subscription becomeBusy() {
    e2e::stop(*editor, desktop().observer());
    return world().platform().mainLoop.after(3s, [this] { editor->signal(SIGCONT); });
  }
  void saveNext(const std::string& name) {
    accessibility().set(known(name), "AXMain", true);
    EXPECT_EQ(accessibility().perform(fileMenuItem("Save"), "AXPress"), Performed::done);
    EXPECT_TRUE(wait([&] { return contents(name).starts_with('x'); }));
  }
};

INSTANTIATE_TEST_SUITE_P(Ways, SlowWriterTest, ::testing::Bool(),
                         [](const auto& way) { return way.param ? "exported" : "accessibilityBus"; });

TEST_P(SlowWriterTest, AfterALongSaveTheNextWindowIsSavedToo) {
  startWithChanges();
  accessibility().set(known("report.txt"), "AXMain", true);
  EXPECT_EQ(accessibility().perform(fileMenuItem("Save"), "AXPress"), Performed::done);
  const auto back = becomeBusy();
  int ticks = 0;
  const auto timer = world().platform().mainLoop.every(20ms, [&ticks] { ++ticks; });
  saveNext("plan.txt");
  EXPECT_GT(ticks, 50) << "everything else goes on meanwhile";
}

// Where the order to save is all that a press needs; one that first asks about the item is not sent.
class LateAnswerTest : public SlowWriterTest {};
INSTANTIATE_TEST_SUITE_P(Ways, LateAnswerTest, ::testing::Values(true),
                         [](const auto& /*way*/) { return "exported"; });

TEST_P(LateAnswerTest, ASaveThatIsAnsweredTooLateDoesNotLeaveOutTheNextWindow) {
  startWithChanges();
  accessibility().set(known("report.txt"), "AXMain", true);
  const Element save = fileMenuItem("Save");
  const auto back = becomeBusy();
  EXPECT_EQ(accessibility().perform(save, "AXPress"), Performed::unanswered);
  saveNext("plan.txt");
  EXPECT_TRUE(wait([&] { return contents("report.txt").starts_with('x'); }));
}

TEST_P(GtkMenusTest, AProgramThatEndedMeanwhileHasNothing) {
  startGtkEditor({"report.txt"});
  ASSERT_TRUE(hasMenuBar());
  const Element bar = *menuBar();
  const Element save = fileMenuItem("Save");
  editor->signal(SIGKILL);
  editor->waitForEnd();
  EXPECT_EQ(read<Elements>(bar, "AXChildren"), std::nullopt);
  EXPECT_EQ(read<bool>(save, "AXEnabled"), std::nullopt);
  EXPECT_EQ(accessibility().perform(save, "AXPress"), Performed::refused);
  EXPECT_FALSE(menuBar().has_value());
}

TEST_F(AtSpiMenusTest, ReadingWindowsConnectsToNoBus) {
  startGtkEditor({"report.txt"});
  auto bus = QDBusConnection::connectToBus(QString::fromUtf8(getenv("DBUS_SESSION_BUS_ADDRESS")),
                                           QStringLiteral("observer"));
  // This process's own: the editor may still be making some.
  const auto connections = [&] {
    const QStringList names = bus.interface()->registeredServiceNames().value();
    return std::ranges::count_if(names, [&](const QString& name) {
      return name.startsWith(QLatin1Char(':')) &&
             bus.interface()->servicePid(name).value() == static_cast<uint>(getpid());
    });
  };
  const auto before = connections();
  const Element window = known("report.txt");
  for (const auto* name : {"AXTitle", "AXDocument", "AXPosition", "AXSize", "AXMain", "AXSubrole"})
    EXPECT_TRUE(accessibility().attribute(window, name).has_value()) << name;
  EXPECT_EQ(connections(), before);
  static_cast<void>(menuBar());
  EXPECT_GT(connections(), before) << "this would have been seen";
  QDBusConnection::disconnectFromBus(QStringLiteral("observer"));
}

}  // namespace
}  // namespace pellar::contract
