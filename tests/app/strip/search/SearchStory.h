#pragma once

#include "tests/support/RecentStory.h"

namespace pellar {

// Stories of the search field on the strip and of the drop-down under it.
class SearchStory : public RecentStory {
 protected:
  // One wide window: the strip shows the search field.
  SimWindow startWithField(const AxRect& frame = {100, 200, 1200, 600}) {
    auto plan = open("Plan", frame);
    start();
    return plan;
  }
  // On the screen.
  [[nodiscard]] ScreenRect field() {
    const auto rect = strip().panel().host().toScreen(strip().searchField()->frame());
    return rect.value();
  }
  // The keyboard is no longer the search's either.
  void expectClosed() {
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(mac.eventMonitors().watched());
    EXPECT_FALSE(strip().panel().isKey());
  }
};

}  // namespace pellar
