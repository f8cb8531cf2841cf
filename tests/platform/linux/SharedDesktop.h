#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/e2e/Desktop.h"

class QApplication;

namespace pellar::contract {

// The desktop of all tests of one program run, with the toolkit's application object on it: a process can
// have but one of those, and it never changes its display. PELLAR_TEST_WM names the window manager (openbox,
// metacity, xfwm4).
class SharedDesktop final : public ::testing::Environment {
 public:
  // Starts it on first use.
  static e2e::Desktop& get();

  // Ends it, for a program that runs no tests.
  static void end();
  void TearDown() override { end(); }

 private:
  struct Parts;
  static std::unique_ptr<Parts> parts_;
};

}  // namespace pellar::contract
