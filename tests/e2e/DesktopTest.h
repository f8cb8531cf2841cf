#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/e2e/Desktop.h"
#include "tests/e2e/Strip.h"

namespace pellar::e2e {

// A story on a desktop with Pellar running. Whatever the story, at its end: Pellar never had the focus and
// never was in the list that task bars and window cycles show, it ends by itself when asked, says nothing on
// standard error, and nothing that was started is left.
class DesktopTest : public ::testing::Test {
 protected:
  // Of a screen, in pixels.
  struct ScreenSize {
    int width = 1440;
    int height = 900;
  };

  explicit DesktopTest(WindowManager manager = WindowManager::openbox) : DesktopTest(manager, ScreenSize{}) {}
  DesktopTest(WindowManager manager, ScreenSize screen, Focus focus = Focus::byClick)
      : desktop(manager, screen.width, screen.height, focus), strip(desktop) {}

  void startPellar();
  // The user reads the terms that Pellar shows, and presses Return.
  void acceptTerms();
  // Ends Pellar as a session does at log-out, and checks that it went in order.
  void stopPellar();
  // Returns when Pellar has nothing left to do. What it still has to read of the desktop it is told as it is
  // by then, as if that had come before the next click.
  void waitUntilIdle() const;
  // Returns when windows that were opened together no longer take the front from one another, and the strip
  // is over the one that is there, which is given.
  [[nodiscard]] Window waitUntilSettled();
  [[nodiscard]] Application& editor();
  // The lines of Pellar's log that contain a text.
  [[nodiscard]] int logLines(const std::string& part = "") const;

  // The state file, and whether a text stands in it.
  [[nodiscard]] std::string state() const { return Folders::read(desktop.folders().stateFile()); }
  [[nodiscard]] bool stateHas(const std::string& text) const {
    return state().find(text) != std::string::npos;
  }
  void waitUntilStateHas(const std::string& text);

  // Writes what is on the screen and in Pellar's log when the story has failed.
  void reportFailure();

  void TearDown() override;

  Desktop desktop;
  Strip strip;
  std::unique_ptr<Process> pellar;

 private:
  std::unique_ptr<Application> editor_;
};

// The same under every window manager.
class EveryWindowManager : public DesktopTest, public ::testing::WithParamInterface<WindowManager> {
 protected:
  EveryWindowManager() : DesktopTest(GetParam()) {}
};

}  // namespace pellar::e2e

#define PELLAR_FOR_EVERY_WINDOW_MANAGER(Suite)                                                        \
  INSTANTIATE_TEST_SUITE_P(WindowManagers, Suite, ::testing::ValuesIn(pellar::e2e::windowManagers()), \
                           [](const ::testing::TestParamInfo<pellar::e2e::WindowManager>& manager) {  \
                             return pellar::e2e::nameOf(manager.param);                               \
                           })
