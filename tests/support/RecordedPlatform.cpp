#include "tests/support/RecordedPlatform.h"

#include <algorithm>
#include <utility>

#include "platform/EventTap.h"
#include "platform/StatusBar.h"
#include "platform/Windows.h"
#include "platform/sim/applications/SimElement.h"
#include "platform/sim/faults/ForwardingAccessibility.h"
#include "platform/sim/faults/ForwardingWorkspace.h"

namespace pellar {
namespace {

using Calls = std::vector<std::string>;

// What the user would call it.
std::string nameOf(const Element& element) {
  const auto& object = dynamic_cast<const SimElement&>(element.handle());
  switch (object.kind()) {
    case SimElement::Kind::window:
      return object.window()->title;
    case SimElement::Kind::closeButton:
      return "close button of " + object.window()->title;
    case SimElement::Kind::menu:
      return object.menu()->title.value_or("a menu");
    case SimElement::Kind::application:
      break;
  }
  return "the application";
}

class RecordedObserver final : public ElementObserver {
 public:
  RecordedObserver(std::unique_ptr<ElementObserver> sound, Calls& registrations)
      : sound_(std::move(sound)), registrations_(registrations) {}
  Registration add(const Element& element, std::string_view notification) override {
    registrations_.push_back(std::string(notification) + " on " + nameOf(element));
    return sound_->add(element, notification);
  }
  void remove(const Element& element, std::string_view notification) override {
    sound_->remove(element, notification);
  }

 private:
  std::unique_ptr<ElementObserver> sound_;
  Calls& registrations_;
};

class RecordedLoop final : public MainLoop {
 public:
  RecordedLoop(MainLoop& sound, Calls& calls) : sound_(sound), calls_(calls) {}
  void post(Callback block) override { sound_.post(std::move(block)); }
  Subscription after(std::chrono::milliseconds delay, Callback tick) override {
    calls_.push_back("after " + std::to_string(delay.count()) + " ms");
    return sound_.after(delay, std::move(tick));
  }
  Subscription every(std::chrono::milliseconds interval, Callback tick) override {
    calls_.push_back("every " + std::to_string(interval.count()) + " ms");
    return sound_.every(interval, std::move(tick));
  }
  [[nodiscard]] double secondsSince1970() const override { return sound_.secondsSince1970(); }
  [[nodiscard]] std::chrono::nanoseconds uptime() const override { return sound_.uptime(); }

 private:
  MainLoop& sound_;
  Calls& calls_;
};

class RecordedAccessibility final : public ForwardingAccessibility {
 public:
  RecordedAccessibility(Accessibility& sound, Calls& calls, Calls& reads, Calls& registrations)
      : ForwardingAccessibility(sound), calls_(calls), reads_(reads), registrations_(registrations) {}
  [[nodiscard]] bool isTrusted() const override {
    calls_.emplace_back("trusted?");
    return ForwardingAccessibility::isTrusted();
  }
  bool isTrustedPromptingUser() override {
    calls_.emplace_back("ask the user for trust");
    return ForwardingAccessibility::isTrustedPromptingUser();
  }
  [[nodiscard]] std::optional<AttributeValue> attribute(const Element& element,
                                                        std::string_view name) override {
    reads_.push_back(std::string(name) + " of " + nameOf(element));
    return ForwardingAccessibility::attribute(element, name);
  }
  void set(const Element& element, std::string_view name, const AttributeValue& value) override {
    const auto* flag = std::get_if<bool>(&value);
    calls_.push_back("write " + std::string(name) + (flag != nullptr && *flag ? " true" : "") + ": " +
                     nameOf(element));
    ForwardingAccessibility::set(element, name, value);
  }
  Performed perform(const Element& element, std::string_view action) override {
    calls_.push_back(std::string(action) + ": " + nameOf(element));
    return ForwardingAccessibility::perform(element, action);
  }
  [[nodiscard]] std::unique_ptr<ElementObserver> observe(ProcessId pid,
                                                         std::function<void()> onNotification) override {
    calls_.emplace_back("observe the application in front");
    auto observer = ForwardingAccessibility::observe(pid, std::move(onNotification));
    if (!observer) return nullptr;
    return std::make_unique<RecordedObserver>(std::move(observer), registrations_);
  }

 private:
  Calls& calls_;
  Calls& reads_;
  Calls& registrations_;
};

class RecordedWorkspace final : public ForwardingWorkspace {
 public:
  RecordedWorkspace(Workspace& sound, Calls& calls) : ForwardingWorkspace(sound), calls_(calls) {}
  void activate(ProcessId pid) override {
    calls_.push_back("activate " + std::to_string(pid));
    ForwardingWorkspace::activate(pid);
  }
  void open(const std::string& path) override {
    calls_.push_back("open " + path);
    ForwardingWorkspace::open(path);
  }

 private:
  Calls& calls_;
};

class RecordedStatusBar final : public StatusBar {
 public:
  RecordedStatusBar(StatusBar& sound, Calls& calls) : sound_(sound), calls_(calls) {}
  Subscription addItem(const StatusItemLook& look, std::function<Menu()> menu) override {
    calls_.emplace_back("status item");
    return sound_.addItem(look, std::move(menu));
  }
  void openMenu() override { sound_.openMenu(); }

 private:
  StatusBar& sound_;
  Calls& calls_;
};

class RecordedWindows final : public Windows {
 public:
  RecordedWindows(SimMac& mac, Calls& calls) : mac_(mac), calls_(calls) {}
  std::unique_ptr<PlainWindow> makeWindow(const WindowDescription& description) override {
    const bool panels =
        std::ranges::any_of(mac_.panels().all(), [](const auto* each) { return each->isVisible(); });
    calls_.push_back("window \"" + description.title + "\"" + (panels ? " over the strip" : ""));
    return mac_.windows().makeWindow(description);
  }

 private:
  SimMac& mac_;
  Calls& calls_;
};

class RecordedTaps final : public EventTaps {
 public:
  RecordedTaps(SimMac& mac, Calls& calls) : mac_(mac), calls_(calls) {}
  std::unique_ptr<EventTap> tapKeyDowns(const KeyCombination& wanted, Handler handler) override {
    calls_.emplace_back(mac_.windows().visible().empty() ? "hotkey tap" : "hotkey tap beside a window");
    return mac_.eventTaps().tapKeyDowns(wanted, std::move(handler));
  }

 private:
  SimMac& mac_;
  Calls& calls_;
};

}  // namespace

struct RecordedPlatform::Ports {
  RecordedLoop loop;
  RecordedAccessibility accessibility;
  RecordedWorkspace workspace;
  RecordedStatusBar statusBar;
  RecordedWindows windows;
  RecordedTaps taps;
};

RecordedPlatform::RecordedPlatform(SimMac& mac)
    : mac_(mac),
      ports_(new Ports{{mac.mainLoop(), calls_},
                       {mac.accessibility(), calls_, reads_, registrations_},
                       {mac.workspace(), calls_},
                       {mac.statusBar(), calls_},
                       {mac, calls_},
                       {mac, calls_}}) {}

RecordedPlatform::~RecordedPlatform() = default;

Platform RecordedPlatform::platform() {
  const Platform& sound = mac_.platform();
  return {.mainLoop = ports_->loop,
          .accessibility = ports_->accessibility,
          .workspace = ports_->workspace,
          .screens = sound.screens,
          .panels = sound.panels,
          .eventMonitors = sound.eventMonitors,
          .eventTaps = ports_->taps,
          .menus = sound.menus,
          .alerts = sound.alerts,
          .pasteboard = sound.pasteboard,
          .propertyLists = sound.propertyLists,
          .scripts = sound.scripts,
          .statusBar = ports_->statusBar,
          .windows = ports_->windows,
          .loginItem = sound.loginItem,
          .httpClient = sound.httpClient,
          .notifications = sound.notifications,
          .application = sound.application,
          .bundle = sound.bundle,
          .folders = sound.folders};
}

}  // namespace pellar
