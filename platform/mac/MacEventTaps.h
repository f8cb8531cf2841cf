#pragma once

#include "platform/EventTap.h"

namespace pellar {

// Active taps at the head of the login session's events.
class MacEventTaps final : public EventTaps {
 public:
  [[nodiscard]] std::unique_ptr<EventTap> tapKeyDowns(const KeyCombination& wanted, Handler handler) override;
};

}  // namespace pellar
