#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/shell/AppDelegate.h"
#include "core/StateStore.h"
#include "platform/sim/SimMac.h"
#include "tests/support/LogReader.h"
#include "tests/support/StripTools.h"

namespace pellar {

// A simulated Mac with an editor in front, on which the program is started, quit and started again.
class ShellStory : public testing::Test {
 protected:
  using Rows = std::vector<std::string>;
  static constexpr const char* termsTitle = "Pellar End User Agreement";
  static constexpr const char* aboutTitle = "About Pellar";
  static constexpr const char* onboardingTitle = "Pellar needs Accessibility access";

  ShellStory() {
    std::filesystem::create_directories(mac.platform().folders.logFile.parent_path());
    change([](Settings& settings) { settings.acceptedEulaVersion = "1"; });
  }

  // Changes the settings in the state file, before the program is started.
  void change(const std::function<void(Settings&)>& change) {
    StateStore store(StateStore::defaultURL(mac.platform().folders.applicationSupport));
    store.update([&](AppState& state) { change(state.settings); });
  }
  // The user has not read the terms yet.
  void forgetTerms() {
    change([](Settings& settings) { settings.acceptedEulaVersion.clear(); });
  }
  // The web site requires these terms (an object of its answer), and the user looks for updates.
  void announceTerms(const std::string& terms) {
    mac.web().answer(R"({"latest":"1.4.0","eula":)" + terms + "}");
    mac.statusBar().choose({"Check for updates now"});
    mac.advance(std::chrono::seconds(1));
  }
  void start() {
    pellar.emplace(mac.platform());
    pellar->applicationDidFinishLaunching();
    mac.settle();
  }
  // The settings that a program started now would read.
  [[nodiscard]] Settings saved() const {
    return StateStore(StateStore::defaultURL(mac.home() / "Library" / "Application Support"))
        .state()
        .settings;
  }
  [[nodiscard]] Rows menu(const std::string& submenu = {}) { return mac.statusBar().rows(submenu); }
  // The user goes to an application.
  void goTo(const SimApplication& application) {
    mac.activate(application);
    mac.settle();
  }
  [[nodiscard]] bool stripShown() {
    mac.settle();
    return pellar->strip() != nullptr && mac.strip().visible();
  }
  [[nodiscard]] SimPlainWindow& window(const std::string& title) { return mac.windows().titled(title); }

  SimMac mac;
  SimApplication editor = mac.launch({.bundleId = "org.example.editor", .name = "Editor"});
  std::optional<AppDelegate> pellar;  // depends-on: mac
  LogReader log{mac.platform().folders.logFile};
};

}  // namespace pellar
