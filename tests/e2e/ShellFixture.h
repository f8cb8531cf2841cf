#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "tests/e2e/DesktopTest.h"
#include "tests/e2e/Keys.h"
#include "tests/e2e/PopUpMenu.h"

namespace pellar::e2e {

// Stories of the program around the strip. Here windows of Pellar do get the focus: those that are not the
// strip.
class Shell : public DesktopTest {
 protected:
  static constexpr const char* termsTitle = "Pellar End User Agreement";
  static constexpr const char* aboutTitle = "About Pellar";

  explicit Shell(WindowManager manager = WindowManager::openbox) : DesktopTest(manager) {}
  void TearDown() override {
    reportFailure();
    stopPellar();
  }

  Window openEditor() { return editor().open("Report", {200, 200, 800, 400}); }
  void startWithStrip();
  // As at the first start of all.
  void startFresh();
  // Starts Pellar, of this or another build, with what of the environment is to be otherwise than on this
  // desktop.
  void startIn(const Environment& changed, const std::string& program = "pellar");

  // Starts the program once more, which opens the menu of the one that runs.
  void openMenuBySecondStart();
  void chooseBySecondStart(int item);

  void strike(std::uint32_t key) { desktop.observer().strike(key); }
  void strikeBackwardTab();
  // Tab, seen to have moved the mark of the focus.
  void moveFocus(Window window, bool backward = false);

  // A window of Pellar's own, once it is drawn and the keyboard is there.
  Window waitForOwnWindow(const std::string& title);
  [[nodiscard]] bool isOnScreen(const std::string& title);
  // Return, until the terms hear it: they rest for a moment where they came up by themselves.
  void agreeToTerms();
  void waitUntilGone(const std::string& title);
  // Pixels of some text's darkness in a band of a window, from its top edge.
  [[nodiscard]] int darkPixels(Window window, int from, int to);
  [[nodiscard]] std::vector<std::uint32_t> pixels(Window window);

  void waitUntilStripIsBack();

  // A program in the place of the one that opens pages and files: it only notes what it is given.
  Environment environmentWithOpener();
  // What it was given, line by line; waits until there is something.
  [[nodiscard]] std::string waitForOpened();

  std::optional<PopUpMenu> menu;

 private:
  [[nodiscard]] std::filesystem::path opened() const { return desktop.folders().root() / "opened"; }
};

}  // namespace pellar::e2e
