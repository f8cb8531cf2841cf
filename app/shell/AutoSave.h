#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "app/automation/Automation.h"
#include "app/tracking/WindowTracker.h"
#include "core/StateStore.h"
#include "platform/Platform.h"
#include "platform/Subscription.h"

namespace pellar {

// Saves changed documents every chosen number of minutes. A save that is due while a script is under way
// waits for its end, and is one however often it was due. Main thread only.
class AutoSave {
 public:
  // The intervals offered, in minutes; 0 is off. The settings may hold any other number.
  static constexpr std::array<std::int64_t, 4> choices{0, 1, 5, 10};

  // What `platform` refers to outlives this.
  AutoSave(const Platform& platform, std::shared_ptr<StateStore> store,
           std::shared_ptr<WindowTracker> tracker, std::shared_ptr<Automation> automation);
  AutoSave(const AutoSave&) = delete;
  AutoSave& operator=(const AutoSave&) = delete;

  // Begins the interval of the settings anew: the first save comes one whole interval from now, or never when
  // it is off.
  void restart();

 private:
  struct SavePass;

  MainLoop& loop_;
  std::shared_ptr<SavePass> pass_;
  Subscription timer_;
};

}  // namespace pellar
