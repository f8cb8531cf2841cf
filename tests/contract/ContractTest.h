#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/MainLoop.h"
#include "platform/ScreenList.h"
#include "platform/Workspace.h"
#include "tests/contract/World.h"

namespace pellar::contract {

// A test against a world of its own.
class ContractTest : public ::testing::Test {
 protected:
  World& world() { return *world_; }
  MainLoop& mainLoop() { return world_->platform().mainLoop; }
  Accessibility& accessibility() { return world_->platform().accessibility; }
  Workspace& workspace() { return world_->platform().workspace; }

  bool wait(const std::function<bool()>& condition) { return world_->wait(condition); }

  // Runs the loop for a while of its clock: what has not happened by then does not happen.
  void letPass(std::chrono::milliseconds time) {
    bool over = false;
    const auto fence = mainLoop().after(time, [&over] { over = true; });
    ASSERT_TRUE(wait([&over] { return over; }));
  }

  template <class T>
  std::optional<T> read(const Element& element, std::string_view name) {
    const auto value = accessibility().attribute(element, name);
    if (!value) return std::nullopt;
    const T* const typed = std::get_if<T>(&*value);
    if (typed == nullptr) return std::nullopt;
    return *typed;
  }

  std::vector<Element> windowsOf(ProcessId pid) {
    return read<std::vector<Element>>(accessibility().applicationElement(pid), "AXWindows")
        .value_or(std::vector<Element>());
  }

  std::optional<Element> find(ProcessId pid, const std::string& title) {
    for (const Element& element : windowsOf(pid)) {
      if (read<std::string>(element, "AXTitle") == title) return element;
    }
    return std::nullopt;
  }

  // The element of a window once Accessibility knows it under this title.
  Element elementOf(ProcessId pid, const std::string& title) {
    wait([&] { return find(pid, title).has_value(); });
    const auto element = find(pid, title);
    if (!element) throw std::runtime_error("no window \"" + title + "\" came up");
    return *element;
  }

  std::optional<AxRect> frameOf(const Element& element) {
    const auto origin = read<AxPoint>(element, "AXPosition");
    const auto size = read<Size>(element, "AXSize");
    if (!origin || !size) return std::nullopt;
    return AxRect::of(*origin, *size);
  }

  bool isFocused(ProcessId pid, const Element& element) {
    return read<Element>(accessibility().applicationElement(pid), "AXFocusedWindow") == element;
  }

  bool isInFront(ProcessId pid) {
    const auto front = workspace().frontmostApplication();
    return front && front->pid == pid;
  }

 private:
  std::unique_ptr<World> world_ = makeWorld();
};

inline bool near(double a, double b, double tolerance = 1) {
  return std::abs(a - b) <= tolerance;
}

}  // namespace pellar::contract
