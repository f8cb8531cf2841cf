#pragma once

#include "platform/ScreenList.h"

namespace pellar {

// The displays as NSScreen lists them: the first is the one with the menu bar, whose corner is the origin of
// both global coordinate spaces.
class MacScreenList final : public ScreenList {
 public:
  [[nodiscard]] std::vector<Screen> screens() const override;
  [[nodiscard]] std::optional<Screen> mainScreen() const override;
  [[nodiscard]] Subscription onChanged(std::function<void()> callback) override;
};

}  // namespace pellar
