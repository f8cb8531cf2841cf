#include <algorithm>
#include <map>
#include <stdexcept>

#include "platform/sim/SimMac.h"
#include "tests/contract/World.h"

namespace pellar::contract {

namespace {

// The simulated Mac as a world of the contract tests.
class SimWorld final : public World {
 public:
  Platform& platform() override { return mac_.platform(); }

  bool wait(const std::function<bool()>& condition, std::chrono::milliseconds deadline) override {
    return mac_.mainLoop().runUntil(condition, deadline);
  }

  ProcessId launch(const std::string& name) override {
    const auto application = mac_.launch({.bundleId = "com.example." + name, .name = name, .inFront = false});
    applications_.emplace(application.pid(), application);
    return application.pid();
  }
  void terminate(ProcessId application) override { mac_.terminate(applications_.at(application)); }

  WorldWindow open(ProcessId application, const std::string& title, const AxRect& frame) override {
    auto& owner = applications_.at(application);
    windows_.push_back({owner, owner.open(title, frame)});
    mac_.activate(owner);
    return static_cast<WorldWindow>(windows_.size() - 1);
  }
  void retitle(WorldWindow window, const std::string& title) override { at(window).window.retitle(title); }
  void moveTo(WorldWindow window, AxPoint origin) override { at(window).window.moveTo(origin); }
  void minimise(WorldWindow window) override { at(window).window.minimise(); }
  void restore(WorldWindow window) override { at(window).window.restore(); }
  void destroy(WorldWindow window) override { at(window).window.close(); }
  void focus(WorldWindow window) override {
    at(window).owner.focus(at(window).window);
    mac_.activate(at(window).owner);
  }

  void movePointer(ScreenPoint point) override { mac_.pointer().moveTo(point); }
  void pressLeft(ScreenPoint point) override {
    const auto now = mac_.mainLoop().uptime();
    const bool again =
        lastPress_ && *lastPress_ == point && now - lastPressAt_ < std::chrono::milliseconds(500);
    lastPress_ = point;
    lastPressAt_ = now;
    mac_.pointer().press(point, again ? 2 : 1);
  }
  void releaseLeft() override { mac_.pointer().release(); }
  void clickRight(ScreenPoint point) override { mac_.pointer().rightClick(point); }
  void clickMiddle(ScreenPoint point) override { mac_.pointer().middleClick(point); }
  void type(std::string_view text) override { mac_.type(text); }
  void pressEscape() override { mac_.pressKey("cancelOperation:"); }
  void press(Key key) override {
    switch (key) {
      case Key::up:
        return mac_.pressKey("moveUp:");
      case Key::down:
        return mac_.pressKey("moveDown:");
      case Key::enter:
        return mac_.pressKey("insertNewline:");
    }
  }
  void turnWheel(ScreenPoint point, int notches) override { mac_.pointer().scroll(point, notches); }
  void pressTab(const HeldKeys& held) override {
    mac_.pressKey(tabKey, (held.shift ? KeyFlags::shift : 0) | (held.control ? KeyFlags::control : 0) |
                              (held.command ? KeyFlags::command : 0));
  }
  int tabsReceived(WorldWindow window) override {
    const auto& keys = at(window).owner.keysDown();
    return static_cast<int>(std::ranges::count(keys, tabKey, &SimKey::keyCode));
  }

  void workNextMenu(std::optional<int> place) override {
    mac_.menus().next([place](SimOpenMenu& menu) {
      if (!place) return;
      auto rows = menu.rows();
      std::erase_if(rows, [](const std::string& row) { return row == "---" || row.starts_with('('); });
      std::string title = rows.at(static_cast<std::size_t>(*place));
      constexpr std::string_view mark = "✓ ";
      if (title.starts_with(mark)) title.erase(0, mark.size());
      menu.choose({title});
    });
  }
  void answerNextQuestion(std::optional<std::string> text) override {
    if (!text) return mac_.alerts().nextCancel();
    if (!text->empty()) return mac_.alerts().nextType(*text);
    mac_.alerts().next([](const TextAlert& alert) {
      return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, alert.fieldText};
    });
  }
  std::string pasted() override { return mac_.pasteboard().string(); }

  Color colorAt(ScreenPoint point) override {
    constexpr Color glass{0.12, 0.12, 0.12, 1, std::nullopt};
    const SimPanel* const panel = mac_.panels().at(point);
    if (panel == nullptr) throw std::runtime_error("no panel stands there");
    return panel->drawing().colorAt(panel->simHost().fromScreen(point), glass);
  }

 private:
  static constexpr std::uint16_t tabKey = 48;

  struct Opened {
    SimApplication owner;
    SimWindow window;
  };
  Opened& at(WorldWindow window) { return windows_.at(static_cast<std::size_t>(window)); }

  SimMac mac_;
  std::map<ProcessId, SimApplication> applications_;
  std::vector<Opened> windows_;
  std::optional<ScreenPoint> lastPress_;
  std::chrono::nanoseconds lastPressAt_{0};
};

}  // namespace

std::unique_ptr<World> makeWorld() {
  return std::make_unique<SimWorld>();
}

}  // namespace pellar::contract
