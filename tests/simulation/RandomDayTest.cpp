// Days on which everything happens at any time: windows, applications and displays come and go while the user
// works the strip with mouse and keyboard, also under open menus, questions and drags. Each day is the same
// whenever it is run.

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "platform/sim/faults/ForwardingAccessibility.h"
#include "tests/support/StripStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr unsigned days = 30;
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
  bool perform(const Element& element, std::string_view action) override {
    interrupt();
    const bool performed = ForwardingAccessibility::perform(element, action);
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

class RandomDay {
 public:
  explicit RandomDay(unsigned seed) : random_(seed) {
    // Every other day.
    if (seed % 2 == 0) {
      interrupted_.happening = [this] {
        if (chance(6)) happen();
        if (chance(6) && pellar_) pellar_->tracker().refresh();
        if (chance(6)) mac_.settle();
      };
    }
    std::filesystem::create_directories(mac_.platform().folders.logFile.parent_path());
    std::filesystem::create_directories(mac_.home() / "Documents");
    acceptTerms(*pellar_);
    for (const char* name : {"Plan.txt", "Report.txt", "Budget.docx"}) {
      const std::string path = mac_.home() / name;
      std::ofstream(path) << "text";
      pellar_->store().update([&](AppState& state) { state.touchRecent(path, "org.example.editor", 1); });
    }
    mac_.workspace().onOpen = [this](const std::string& path) {
      if (chance(2)) open(path.substr(path.rfind('/') + 1));
    };
    mac_.office().beforeEvent = [this](const std::string&) {
      if (chance(20)) happen();
    };
    for (std::size_t i = 0; i < names.size(); ++i) launch(i);
    pellar_->applicationDidFinishLaunching();
    mac_.settle();
  }

  void live() {
    for (int step = 0; step < stepsPerDay; ++step) {
      expectUserAtMenusAndQuestions();
      chance(2) ? happen() : act();
      if (chance(60)) restart();
      if (chance(4)) mac_.advance(std::chrono::milliseconds(below(900)));
      if (chance(40)) mac_.advance(31s);
      mac_.settle();
      expectOrder();
      if (testing::Test::HasFailure()) {
        std::string told;
        for (const auto& each : trail_) told += each + "\n";
        FAIL() << "step " << step << " of the day:\n" << told;
      }
    }
    mac_.pointer().moveTo({-3000, -3000});
    mac_.advance(10s);
    EXPECT_LE(mac_.mainLoop().activeTimers(), 2U) << "the looks for updates, and auto-save where it is on";
    EXPECT_EQ(StateStore(pellar_->store().url()).state(), pellar_->store().state()) << "all of it is saved";
  }

 private:
  static constexpr std::array names{"org.example.editor", "org.example.viewer", "com.microsoft.Word"};

  std::size_t below(std::size_t bound) {
    return bound == 0 ? 0 : std::uniform_int_distribution<std::size_t>(0, bound - 1)(random_);
  }
  bool chance(std::size_t outOf) { return below(outOf) == 0; }
  template <class T>
  T& any(std::vector<T>& all) {
    return all[below(all.size())];
  }
  void told(const std::string& what) { trail_.push_back(what); }
  [[nodiscard]] StripReader strip() { return mac_.strip(); }

  // In the middle of whatever is shown or waited for.
  void restart() {
    told("restarts");
    pellar_.reset();
    EXPECT_TRUE(mac_.panels().all().empty());
    EXPECT_FALSE(mac_.eventMonitors().watched());
    EXPECT_EQ(mac_.eventTaps().count(), 0U);
    EXPECT_EQ(mac_.accessibility().liveObservers(), 0);
    if (chance(2)) happen();
    mac_.settle();
    pellar_.emplace(mac_.platformWith(interrupted_));
    pellar_->applicationDidFinishLaunching();
    mac_.settle();
  }

  // --- what applications and displays do ---

  void launch(std::size_t which) {
    auto application = mac_.launch({.bundleId = names[which], .name = names[which]});
    application.quirks().listsWindowsByCreation = chance(2);
    if (applications_.size() <= which) {
      applications_.push_back(application);
    } else {
      applications_[which] = application;
    }
    if (!chance(4)) open("First");
  }
  AxRect frame() {
    const double x = static_cast<double>(below(1600)) - 200;
    const double y = static_cast<double>(below(700)) - 50;
    return {x, y, 150 + static_cast<double>(below(1300)), 100 + static_cast<double>(below(700))};
  }
  void open(const std::string& title) {
    auto& application = any(applications_);
    if (!application.isRunning()) return;
    if (applications_.size() == names.size() && application == applications_.back() && chance(2)) {
      const auto document = mac_.office().openInWindow(
          application,
          {.name = title, .path = chance(3) ? "" : (mac_.home() / "Documents" / title).string()});
      if (document->window) windows_.push_back(*document->window);
      return;
    }
    windows_.push_back(application.open(title, frame()));
    if (chance(2)) windows_.back().setDocument("file:///Users/ann/" + title);
    if (chance(8)) windows_.back().quirks().asksBeforeClosing = true;
    if (chance(8)) windows_.back().quirks().minimumSize = {400, 300};
    if (chance(8)) {
      windows_.back().quirks().refusesMoves = true;
    } else if (chance(8)) {
      windows_.back().quirks().frameDelay = 200ms;
    }
  }
  void happen() {
    const std::size_t what = below(20);
    told("happens " + std::to_string(what));
    if (what < 4 || windows_.empty()) return open("Window " + std::to_string(below(30)) + ".docx");
    auto window = any(windows_);
    auto& application = any(applications_);
    switch (what) {
      case 4:
      case 5:
        return window.close();
      case 6:
        return window.minimise();
      case 7:
        return window.restore();
      case 8:
        return window.enterFullScreen();
      case 9:
        return window.leaveFullScreen();
      case 10:
        return window.retitle(chance(5) ? std::string(300, 'x') : "Renamed " + std::to_string(below(9)));
      case 11:
        return window.setFrame(frame());
      case 12:
        if (window.exists()) application.focus(window);
        return;
      case 13:
      case 14:
        return mac_.activate(application);
      case 15:
        mac_.terminate(application);
        return launch(static_cast<std::size_t>(&application - applications_.data()));
      case 16:
        return chance(2) ? mac_.leaveNobodyInFront() : mac_.activatePellar();
      case 17:
        return chance(2) ? application.hide() : application.show();
      case 18:
        changeDisplays();
        // The system moves windows then, or says something else about them.
        if (pellar_) pellar_->tracker().refresh();
        return;
      default:
        application.freeze();
        if (chance(2)) act();
        application.resume();
    }
  }
  void changeDisplays() {
    const auto first = SimScreens::screen({0, 0, 1440, 900}, 25, 0);
    const auto left = SimScreens::screen({-1200, -300, 1200, 1000}, 25, 70);
    switch (below(4)) {
      case 0:
        return mac_.screens().set({});
      case 1:
        return mac_.screens().set({left});
      case 2:
        return mac_.screens().set({first, left});
      default:
        return mac_.screens().set({first});
    }
  }

  // --- what the user does ---

  ScreenPoint anywhere() { return {static_cast<double>(below(1600)) - 100, static_cast<double>(below(900))}; }
  // Mostly on the strip, also on the panels beside it.
  ScreenPoint somewhere() {
    std::vector<ScreenRect> shown;
    for (const auto* panel : mac_.panels().all())
      if (panel->isVisible()) shown.push_back(panel->frame());
    if (shown.empty() || chance(6)) return anywhere();
    const ScreenRect& rect = any(shown);
    return {rect.x + static_cast<double>(below(static_cast<std::size_t>(rect.width) + 1)),
            rect.y + static_cast<double>(below(static_cast<std::size_t>(rect.height) + 1))};
  }
  void act() {
    const std::size_t what = below(14);
    told("acts " + std::to_string(what));
    switch (what) {
      case 0:
      case 1:
      case 2:
        return mac_.pointer().click(somewhere());
      case 3:
        return mac_.pointer().doubleClick(somewhere());
      case 4:
        return mac_.pointer().rightClick(somewhere());
      case 5:
        return chance(2) ? mac_.pointer().middleClick(somewhere()) : mac_.pointer().controlClick(somewhere());
      case 6:
      case 7:
        mac_.pointer().moveTo(somewhere());
        return mac_.advance(std::chrono::milliseconds(below(700)));
      case 8:
      case 9:
        return drag();
      case 10:
        return mac_.type(chance(2) ? "p" : "t");
      case 11:
        return mac_.pressKey(
            std::array{"moveDown:", "moveUp:", "insertNewline:", "cancelOperation:"}[below(4)]);
      default:
        return mac_.pressKey(48, KeyFlags::control | (chance(2) ? KeyFlags::shift : 0));
    }
  }
  void drag() {
    mac_.pointer().press(somewhere());
    for (std::size_t moves = below(5); moves > 0; --moves) {
      mac_.pointer().moveTo(chance(2) ? somewhere() : anywhere());
      if (chance(4)) happen();
    }
    if (!chance(10)) return mac_.pointer().release();
    // Somebody else takes the release.
    mac_.settle();
    mac_.pointer().release();
  }
  void expectUserAtMenusAndQuestions() {
    if (mac_.menus().awaited() == 0) {
      mac_.menus().next([this](SimOpenMenu& menu) {
        if (chance(2)) happen();
        mac_.settle();
        chooseAny(menu);
      });
    }
    if (mac_.alerts().awaited() == 0) {
      mac_.alerts().next([this](const TextAlert&) {
        if (chance(2)) happen();
        mac_.settle();
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
    for (const auto* panel : mac_.panels().all())
      if (panel->style().contentSize == contentSize) return panel->isVisible();
    return false;
  }
  void expectOrder() {
    const bool shown = strip().visible();
    const bool dropdown = isShown({480, 300});
    EXPECT_EQ(mac_.eventMonitors().watched(), dropdown);
    if (!shown) {
      EXPECT_FALSE(dropdown);
      EXPECT_FALSE(isShown({200, 58})) << "the card";
      EXPECT_FALSE(isShown({372, 150})) << "the picker";
    }
    const auto& tracker = pellar_->tracker();
    const auto frontmost = mac_.workspace().frontmostApplication();
    if (!tracker.app() && frontmost && frontmost->bundleId == mac_.workspace().ownBundleId()) return;
    const auto& front = tracker.front();
    const bool wanted =
        tracker.app() && front && !front->minimized && !front->fullscreen && front->frame.width > 0;
    EXPECT_EQ(shown, wanted);
    if (!shown || !wanted) return;
    EXPECT_EQ(strip().frame(), StripGeometry::stripFrame(front->frame, mac_.screens().screens()));
    EXPECT_FALSE(strip().panel().drawing().isTorn());
    if (tracker.windows().size() <= 5) {
      EXPECT_EQ(strip().tabs().size(), tracker.windows().size());
      EXPECT_TRUE(strip().activeTabIndex().has_value());
    }
  }

  std::mt19937 random_;
  SimMac mac_;
  InterruptedCalls interrupted_{mac_.accessibility()};  // depends-on: mac_
  std::optional<AppDelegate> pellar_{std::in_place,
                                     mac_.platformWith(interrupted_)};  // depends-on: interrupted_
  std::vector<SimApplication> applications_;
  std::vector<SimWindow> windows_;
  std::vector<std::string> trail_;
};

TEST(RandomDays, LeaveTheStripWhereItBelongs) {
  for (unsigned seed = 1; seed <= days; ++seed) {
    SCOPED_TRACE("day " + std::to_string(seed));
    RandomDay(seed).live();
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace pellar
