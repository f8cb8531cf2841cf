#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "tests/contract/ContractTest.h"
#include "tests/platform/mac/MacWorld.h"

namespace pellar::contract {

// A test of what only a Mac's applications do, with the Accessibility permission.
class MacDesktopTest : public ContractTest {
 protected:
  MacWorld& mac() { return static_cast<MacWorld&>(world()); }

  // Whether a process takes a registration now.
  bool canBeObserved(ProcessId pid) {
    return accessibility().observe(pid, [] {}) != nullptr;
  }

  std::vector<Element> childrenOf(const Element& element) {
    return read<std::vector<Element>>(element, "AXChildren").value_or(std::vector<Element>());
  }
  std::optional<Element> childOf(const Element& element, const std::string& title) {
    for (const Element& child : childrenOf(element)) {
      if (read<std::string>(child, "AXTitle") == title) return child;
    }
    return std::nullopt;
  }
};

}  // namespace pellar::contract
