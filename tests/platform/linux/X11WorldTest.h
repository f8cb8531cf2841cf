#pragma once

#include <chrono>

#include "tests/contract/ContractTest.h"
#include "tests/platform/linux/LinuxWorld.h"

namespace pellar::contract {

// A test of what only the X11 adapter does, on a real desktop.
class X11WorldTest : public ContractTest {
 protected:
  LinuxWorld& x11() { return static_cast<LinuxWorld&>(world()); }
  e2e::Desktop& desktop() { return x11().desktop(); }

  // Where the server has a window's visible frame.
  AxRect seenFrame(WorldWindow window) {
    const auto box = desktop().frame(x11().window(window));
    return {static_cast<double>(box.x), static_cast<double>(box.y), static_cast<double>(box.width),
            static_cast<double>(box.height)};
  }

  // What the tracker does to set a frame, once; then what it reads.
  AxRect writeAndRead(const Element& element, const AxRect& frame) {
    accessibility().set(element, "AXPosition", frame.origin());
    accessibility().set(element, "AXSize", frame.size());
    accessibility().set(element, "AXPosition", frame.origin());
    return frameOf(element).value_or(AxRect{});
  }
};

}  // namespace pellar::contract
