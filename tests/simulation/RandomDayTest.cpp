// Days on which everything happens at any time: windows, applications, spaces and displays come and go while
// the user works the strip with mouse and keyboard, also under open menus, questions and drags. Each day is
// the same whenever it is run.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/sim/faults/ForwardingAccessibility.h"
#include "tests/simulation/RandomDays.h"
#include "tests/simulation/RandomDesktop.h"
#include "tests/support/StripStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr int stepsPerDay = 120;

// Lets something happen inside writes and actions, as calls to other processes do that run a nested loop.
class InterruptedCalls final : public ForwardingAccessibility {
 public:
  using ForwardingAccessibility::ForwardingAccessibility;

  std::function<void()> happening;

  void set(const Element& element, std::string_view name, const AttributeValue& value) override {
    interrupt();
    ForwardingAccessibility::set(element, name, value);
    interrupt();
  }
  Performed perform(const Element& element, std::string_view action) override {
    interrupt();
    const Performed performed = ForwardingAccessibility::perform(element, action);
    interrupt();
    return performed;
  }

 private:
  void interrupt() {
    if (std::exchange(inside_, true)) return;
    if (happening) happening();
    inside_ = false;
  }
  bool inside_ = false;
};
class RandomDay : public RandomDesktop {
 public:
  explicit RandomDay(unsigned seed) : RandomDesktop(seed) {
    // Every other day.
    if (seed % 2 == 0) {
      interrupted_.happening = [this] {
        if (chance(6)) happen();
        if (chance(6) && pellar_) pellar_->tracker().refresh();
        if (chance(6)) mac().settle();
      };
    }
    act = [this] { useStrip(); };
    mac().scripts().answer = [this](const std::string& source) {
      EXPECT_EQ(++scriptsUnderWay_, 1) << "scripts ran inside one another";
      auto result = mac().scripts().interpret(source);
      --scriptsUnderWay_;
      return result;
    };
    acceptTerms(*pellar_);
    if (chance(2)) pellar_->store().update([](AppState& state) { state.settings.autoSaveMinutes = 1; });
    for (const char* name : {"Plan.txt", "Report.txt", "Budget.docx"}) {
      const std::string path = mac().home() / name;
      std::ofstream(path) << "text";
      pellar_->store().update([&](AppState& state) { state.touchRecent(path, "org.example.editor", 1); });
    }
    begin();
    pellar_->applicationDidFinishLaunching();
    mac().settle();
  }

  void live() {
    for (int step = 0; step < stepsPerDay; ++step) {
      expectUserAtMenusAndQuestions();
      chance(2) ? happen() : useStrip();
      if (chance(60)) restart();
      if (chance(4)) mac().advance(std::chrono::milliseconds(below(900)));
      if (chance(40)) mac().advance(31s);
      mac().settle();
      expectOrder();
      if (testing::Test::HasFailure()) {
        std::string told;
        for (const auto& each : trail()) told += each + "\n";
        FAIL() << "step " << step << " of the day:\n" << told;
      }
    }
    endTheDay();
  }

 private:
  [[nodiscard]] StripReader strip() { return mac().strip(); }

  void endTheDay() {
    calmDown();
    mac().pointer().moveTo({-3000, -3000});
    mac().advance(30s);
    for (auto& each : applications()) expectItsWindowsOnTheStrip(each);
    mac().advance(30s);
    EXPECT_EQ(mac().office().launches(), 0) << "a script brought an application back";
    EXPECT_LE(mac().mainLoop().activeTimers(), 2U) << "the looks for updates, and auto-save where it is on";
    EXPECT_EQ(StateStore(pellar_->store().url()).state(), pellar_->store().state()) << "all of it is saved";
  }
  // Once the user has come back to it.
  void expectItsWindowsOnTheStrip(SimApplication& application) {
    mac().leaveNobodyInFront();
    mac().settle();
    mac().activate(application);
    mac().advance(30s);
    // What is told to nobody is seen with the next picture.
    if (!application.quirks().untoldNotifications.empty()) pellar_->tracker().refresh();
    std::set<WindowId> there;
    for (const auto& window : application.windowsFrontToBack())
      if (window.isNamed() && window.frame().width >= 200) there.insert(window.id());
    std::set<WindowId> tabs;
    for (const auto& window : pellar_->tracker().windows()) tabs.insert(window->id());
    EXPECT_EQ(tabs, there);
    EXPECT_EQ(pellar_->tracker().pid(), application.pid());
  }

  // In the middle of whatever is shown or waited for.
  void restart() {
    told("restarts");
    pellar_.reset();
    EXPECT_TRUE(mac().panels().all().empty());
    EXPECT_FALSE(mac().eventMonitors().watched());
    EXPECT_EQ(mac().eventTaps().count(), 0U);
    EXPECT_EQ(mac().accessibility().liveObservers(), 0);
    if (chance(2)) happen();
    mac().settle();
    pellar_.emplace(mac().platformWith(interrupted_));
    pellar_->applicationDidFinishLaunching();
    mac().settle();
  }

  // --- what the user does ---

  ScreenPoint anywhere() { return {static_cast<double>(below(1600)) - 100, static_cast<double>(below(900))}; }
  // Mostly on the strip, also on the panels beside it.
  ScreenPoint somewhere() {
    std::vector<ScreenRect> shown;
    for (const auto* panel : mac().panels().all())
      if (panel->isVisible()) shown.push_back(panel->frame());
    if (shown.empty() || chance(6)) return anywhere();
    const ScreenRect& rect = any(shown);
    return {rect.x + static_cast<double>(below(static_cast<std::size_t>(rect.width) + 1)),
            rect.y + static_cast<double>(below(static_cast<std::size_t>(rect.height) + 1))};
  }
  void useStrip() {
    const std::size_t what = below(14);
    told("acts " + std::to_string(what));
    switch (what) {
      case 0:
      case 1:
      case 2:
        return mac().pointer().click(somewhere());
      case 3:
        return mac().pointer().doubleClick(somewhere());
      case 4:
        return mac().pointer().rightClick(somewhere());
      case 5:
        return chance(2) ? mac().pointer().middleClick(somewhere())
                         : mac().pointer().controlClick(somewhere());
      case 6:
      case 7:
        mac().pointer().moveTo(somewhere());
        return mac().advance(std::chrono::milliseconds(below(700)));
      case 8:
      case 9:
        return drag();
      case 10:
        return mac().type(chance(2) ? "p" : "t");
      case 11:
        return mac().pressKey(
            std::array{"moveDown:", "moveUp:", "insertNewline:", "cancelOperation:"}[below(4)]);
      default:
        return mac().pressKey(48, KeyFlags::control | (chance(2) ? KeyFlags::shift : 0));
    }
  }
  void drag() {
    mac().pointer().press(somewhere());
    for (std::size_t moves = below(5); moves > 0; --moves) {
      mac().pointer().moveTo(chance(2) ? somewhere() : anywhere());
      if (chance(4)) happen();
    }
    if (!chance(10)) return mac().pointer().release();
    // Somebody else takes the release.
    mac().settle();
    mac().pointer().release();
  }
  void expectUserAtMenusAndQuestions() {
    if (mac().menus().awaited() == 0) {
      mac().menus().next([this](SimOpenMenu& menu) {
        if (chance(2)) happen();
        mac().settle();
        chooseAny(menu);
      });
    }
    if (mac().alerts().awaited() == 0) {
      mac().alerts().next([this](const TextAlert&) {
        if (chance(2)) happen();
        mac().settle();
        const int button = TextAlertAnswer::firstButtonReturn + (chance(4) ? 1 : 0);
        return TextAlertAnswer{button, "Name " + std::to_string(below(5))};
      });
    }
  }
  void chooseAny(SimOpenMenu& menu) {
    const auto rows = menu.rows();
    const std::string row = rows[below(rows.size())];
    constexpr std::string_view submenu = " \u25B8";
    told("chooses " + row);
    if (row.ends_with(submenu)) {
      const std::string title = row.substr(0, row.size() - submenu.size());
      if (const auto item = titleOf(menu.rows({title})); !item.empty()) menu.choose({title, item});
    } else if (const auto item = titleOf({row}); !item.empty()) {
      menu.choose({item});
    }
  }
  // One that can be chosen; empty when there is none in its place.
  std::string titleOf(std::vector<std::string> rows) {
    constexpr std::string_view check = "\u2713 ";
    std::string row = any(rows);
    if (row == "---" || row.starts_with("(")) return {};
    return row.starts_with(check) ? row.substr(check.size()) : row;
  }

  // --- what must hold whatever happened ---

  [[nodiscard]] bool isShown(const Size& contentSize) {
    for (const auto* panel : mac().panels().all())
      if (panel->style().contentSize == contentSize) return panel->isVisible();
    return false;
  }
  void expectOrder() {
    const bool shown = strip().visible();
    const bool dropdown = isShown({480, 300});
    EXPECT_EQ(mac().eventMonitors().watched(), dropdown);
    if (!shown) {
      EXPECT_FALSE(dropdown);
      EXPECT_FALSE(isShown({200, 58})) << "the card";
      EXPECT_FALSE(isShown({372, 150})) << "the picker";
    }
    const auto& tracker = pellar_->tracker();
    const auto frontmost = mac().workspace().frontmostApplication();
    if (!tracker.app() && frontmost && frontmost->bundleId == mac().workspace().ownBundleId()) return;
    const auto& front = tracker.front();
    const bool wanted =
        tracker.app() && front && !front->minimized && !front->fullscreen && front->frame.width > 0;
    EXPECT_EQ(shown, wanted);
    if (!shown || !wanted) return;
    EXPECT_EQ(strip().frame(), StripGeometry::stripFrame(front->frame, mac().screens().screens()));
    EXPECT_FALSE(strip().panel().drawing().isTorn());
    if (tracker.windows().size() <= 5) {
      EXPECT_EQ(strip().tabs().size(), tracker.windows().size());
      EXPECT_TRUE(strip().activeTabIndex().has_value());
    }
  }

  InterruptedCalls interrupted_{mac().accessibility()};
  std::optional<AppDelegate> pellar_{std::in_place,
                                     mac().platformWith(interrupted_)};  // depends-on: interrupted_
  int scriptsUnderWay_ = 0;
};

TEST(RandomDays, LeaveTheStripWhereItBelongs) {
  for (unsigned seed = randomDays().first; seed <= randomDays().last; ++seed) {
    SCOPED_TRACE("day " + std::to_string(seed));
    RandomDay(seed).live();
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace pellar
