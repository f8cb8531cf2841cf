#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/shell/AppDelegate.h"
#include "app/strip/place/StripGeometry.h"
#include "platform/sim/SimMac.h"
#include "platform/sim/panel/SimSearchField.h"
#include "tests/support/LogReader.h"
#include "tests/support/PanelReader.h"
#include "tests/support/StripTools.h"

namespace pellar {

// The user has read the terms.
inline void acceptTerms(AppDelegate& program) {
  program.store().update([](AppState& state) { state.settings.acceptedEulaVersion = "1"; });
}

// A simulated Mac on which the program can be started. An editor without windows is in front.
class StripStory : public testing::Test {
 protected:
  using Labels = std::vector<std::string>;

  StripStory() {
    std::filesystem::create_directories(mac.platform().folders.logFile.parent_path());
    editor.quirks().listsWindowsByCreation = true;
    acceptTerms(pellar);
  }

  void start() {
    pellar.applicationDidFinishLaunching();
    mac.settle();
  }
  SimWindow open(const std::string& title, const AxRect& frame = {100, 200, 1200, 600}) {
    return editor.open(title, frame);
  }
  [[nodiscard]] SimApplication launchWord() {
    auto word = mac.launch({.bundleId = "com.microsoft.Word", .name = "Microsoft Word"});
    word.quirks().listsWindowsByCreation = true;
    return word;
  }
  // It never tells what happens to its windows: only what Pellar asks for itself is seen.
  static void keepSilent(SimApplication& application) {
    application.quirks().refusedNotifications = {
        "AXFocusedWindowChanged", "AXWindowCreated",      "AXUIElementDestroyed",   "AXWindowMoved",
        "AXWindowResized",        "AXWindowMiniaturized", "AXWindowDeminiaturized", "AXTitleChanged",
        "AXApplicationHidden",    "AXApplicationShown"};
  }
  // The strip as it stands once the program has heard of everything that happened.
  [[nodiscard]] StripReader strip() {
    catchUp();
    return mac.strip();
  }
  [[nodiscard]] bool stripShown() { return strip().visible(); }
  // Where the strip has to be over a window.
  [[nodiscard]] static AxRect over(const SimWindow& window) {
    const AxRect frame = window.frame();
    return {frame.x, frame.y - StripGeometry::stripHeight, frame.width, StripGeometry::stripHeight};
  }
  [[nodiscard]] const AppState& state() { return pellar.store().state(); }
  // The file that the program knows behind the focused window, or behind another one of the picture.
  [[nodiscard]] std::optional<std::string> knownFile() { return knownFile(*pellar.tracker().front()); }
  [[nodiscard]] std::optional<std::string> knownFile(const OfficeWindow& window) {
    const auto known = pellar.documentPaths().of(window);
    return known ? std::optional(known->path) : std::nullopt;
  }
  void expectStripOver(const SimWindow& window) {
    ASSERT_TRUE(stripShown());
    EXPECT_EQ(strip().accessibilityFrame(), over(window));
  }
  [[nodiscard]] SimPanel& dropdown() {
    catchUp();
    if (auto* const panel = PanelReader(mac).dropdown()) return *panel;
    throw std::runtime_error("there is no drop-down");
  }

  SimMac mac;
  AppDelegate pellar{mac.platform()};  // depends-on: mac
  LogReader log{mac.platform().folders.logFile};
  SimApplication editor = mac.launch({.bundleId = "org.example.editor", .name = "Editor"});

 private:
  // A look at what a move of the mouse did (SimPointer::moveTo) does not wait for what is reported of it.
  void catchUp() {
    if (!mac.pointer().isLooking()) mac.settle();
  }
};

}  // namespace pellar
