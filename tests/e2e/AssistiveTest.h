#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/e2e/DesktopTest.h"

namespace pellar::e2e {

// What is told of one element.
struct ToldElement {
  std::string role;
  std::string name;
  std::string help;
  std::string states;
  Box box;
};

// A desktop with a session bus, and a screen reader on it.
class Assistive : public EveryWindowManager {
 protected:
  Assistive() { desktop.openSessionBus(); }

  // Two windows and the strip over the second; the reader runs, but is not switched on.
  void openTwo();
  void openWindows();
  void waitForStrip();
  void startReader();
  [[nodiscard]] std::string ask(const std::string& command);
  void tell(const std::string& command) { EXPECT_EQ(ask(command), "done") << command; }
  void switchOn();
  void waitUntilRead();

  // Pellar's own name on the accessibility bus; "-" while it is not connected.
  [[nodiscard]] std::string nameOnBus() { return ask("name " + std::to_string(pellar->pid())); }
  [[nodiscard]] bool isRegistered();
  // One of those that make up the bus: its "launcher", the "bus" itself or its "registry".
  [[nodiscard]] pid_t processOf(const std::string& part);

  [[nodiscard]] std::vector<ToldElement> read();
  // Each as its role and its name.
  [[nodiscard]] std::vector<std::string> lines();
  [[nodiscard]] ToldElement element(const std::string& name);
  void waitUntilSelected(const std::string& name);

  Window report;
  Window plan;
  std::unique_ptr<Process> reader;
};

}  // namespace pellar::e2e
