#pragma once

#include "platform/EventTap.h"
#include "platform/MainLoop.h"

namespace pellar {

// Active taps at the head of the login session's events.
class MacEventTaps final : public EventTaps {
 public:
  explicit MacEventTaps(MainLoop& loop) : loop_(loop) {}

  [[nodiscard]] std::unique_ptr<EventTap> tapKeyDowns(const KeyCombination& wanted, Handler handler) override;

 private:
  MainLoop& loop_;
};

}  // namespace pellar
